#include "print/PageLayout.h"

#include <gtest/gtest.h>

namespace
{

TEST(PageLayout, HeaderTemplatesAndMargins)
{
    const HeaderFields fields{"a.c", "c:\\src\\a.c", "1/2/99", "Saturday January 2 1999", "9:05 PM",
                              12};
    const struct {
        const char* text;
        std::vector<HeaderPart> parts;
    } rows[] = {
        {"Page &p of &F", {{HA_CENTRE, "Page 12 of c:\\src\\a.c"}}},
        {"&lL &d&cC&rR &t", {{HA_LEFT, "L 1/2/99"}, {HA_CENTRE, "C"}, {HA_RIGHT, "R 9:05 PM"}}},
        {"x&r&l&D", {{HA_CENTRE, "x"}, {HA_LEFT, "Saturday January 2 1999"}}},
        {"&&&q 100%&", {{HA_CENTRE, "&&&q 100%&"}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.parts, ExpandHeader(row.text, fields)) << row.text;

    // Margins shown as text, or read from it (-1: refused).
    const struct {
        int metric, shows;
        const char *decimal, *text;
        int value;
    } margins[] = {
        {0, 1, ".", "0.98", 250},  {1, 1, ".", "2.50", 250}, {0, 1, ",", "1,00", 254},
        {0, 1, ".", "0.79", 200},  {1, 1, ".", "0.05", 5},   {1, 0, ",", "2,5", 250},
        {1, 0, ",", "2.5", -1},    {0, 0, ".", "1", 254},    {0, 0, ".", "1.5", 381},
        {0, 0, ".", "0.98", 248},  {0, 0, ".", "", 0},       {1, 0, ".", "2.", 200},
        {1, 0, ".", "2.505", 251}, {1, 0, ".", "1a", -1},    {1, 0, ".", "1.2.3", -1},
        {1, 0, ".", "-1", -1},
    };
    for (const auto& row : margins)
        if (row.shows)
            EXPECT_EQ(row.text, FormatMargin(row.value, row.metric, row.decimal)) << row.value;
        else
            EXPECT_EQ(row.value, ParseMargin(row.text, row.metric, row.decimal)) << row.text;
}

TEST(PageLayout, PrintAreaAndLinesBroken)
{
    // A4 at 300 dpi with a quarter-inch offset, and a page without either.
    PageMetrics a4{197, 284, 2329, 3358, 75, 75, true, 2479, 3508};
    PageMetrics bare{200, 280, 2000, 2800};
    const struct {
        const PageMetrics& page;
        int margins[MARGIN_COUNT];
        PrintArea area;
    } rows[] = {
        {a4, {250, 200, 250, 200}, {220, 161, 2109, 3197}},
        {a4, {0, 1500, 0, 1000}, {0, 0, 2329, 2251}},
        {a4, {1500, 0, 0, 0}, {0, 0, 2329, 3358}},
        {bare, {0, 0, 680, 940}, {0, 0, 2000, 2800}},
        {bare, {0, 0, 660, 930}, {0, 0, 1340, 1870}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.area, ComputePrintArea(row.page, row.margins)) << row.margins[0];

    const struct {
        const char* text;
        int width, tab;
        const char* lines; // printed lines, each ended by |
    } breaks[] = {
        {"", 10, 4, "|"},
        {"abcdefghijkl", 5, 4, "abcde|fghij|kl|"},
        {"abcde", 5, 4, "abcde|"},
        {"a\tb\tc\td", 10, 4, "a   b   c |d|"},
        {"\t\tabcd\tx", 10, 4, "        ab|cd      x|"},
        {"a\rb", 10, 4, "ab|"},
    };
    for (const auto& row : breaks) {
        std::string lines;
        EXPECT_TRUE(BreakLine(row.text, strlen(row.text), row.width, row.tab,
                              [&](const char* line, int length) {
                                  lines.append(line, length) += '|';
                                  return true;
                              }));
        EXPECT_EQ(row.lines, lines) << row.text;
    }
}

} // namespace
