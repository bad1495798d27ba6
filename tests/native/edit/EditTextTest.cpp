#include "edit/EditText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace
{

TEST(WordRule, WordsOfWordBytesAndOfOneOtherByteButNoneAtALineEnd)
{
    const char* text = "foo bar\r\na_1+";
    // offset, start, end: a blank is a word of one, a CR none, an LF one
    const long rows[][3] = {{0, 0, 3},   {2, 0, 3},    {3, 3, 4},   {4, 4, 7},
                            {6, 4, 7},   {7, 7, 7},    {8, 8, 9},   {9, 9, 12},
                            {11, 9, 12}, {12, 12, 13}, {13, 13, 13}};
    for (const auto& row : rows) {
        EXPECT_EQ(row[1], WordStart(text, row[0], IsAsciiWordByte)) << row[0];
        EXPECT_EQ(row[2], WordEnd(text, row[0], IsAsciiWordByte)) << row[0];
    }
    for (const unsigned char c : std::string("09AZaz_/:@[`{- \r\x80"))
        EXPECT_EQ(strchr("09AZaz_", c) != nullptr, IsAsciiWordByte(c)) << c;
}

TEST(WordMotions, NextAndPreviousStartsAndEnds)
{
    const char* text = "int  foo_bar(x);\r\n  next"; // "(" at 12, CR at 16, "next" at 20
    // direction, selection start and end, result
    const long rows[][4] = {
        // clang-format off
        {1, 0, 0, 5}, {1, 5, 5, 12}, {1, 15, 15, 20}, {1, 16, 16, 20}, {1, 24, 24, 24},
        {1, 0, 9, 12}, {2, 0, 0, 3}, {2, 3, 3, 12}, {2, 16, 16, 24}, {2, 12, 12, 13},
        {2, 14, 14, 15}, {-1, 9, 9, 5}, {-1, 5, 5, 0}, {-1, 20, 20, 15}, {-1, 0, 0, 0},
        {-1, 7, 9, 5}, {-1, 5, 12, 0}, {-1, 3, 3, 0}, {-2, 0, 0, 0}, {-2, 9, 9, 3},
        {-2, 20, 20, 16}, {-2, 3, 3, 1}, {-2, 13, 20, 12},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(row[3],
                  NextWordPos(text, row[1], row[2], static_cast<int>(row[0]), IsAsciiWordByte))
            << row[0] << " from " << row[1] << "," << row[2];
}

TEST(Indent, ColumnsAndTabsFirst)
{
    long firstOther = -1;
    EXPECT_EQ(8, IndentColumn("\t  \tx", 0, 4, &firstOther));
    EXPECT_EQ(4, firstOther);
    EXPECT_EQ(4, IndentColumn("   \ty", 0, 4));
    EXPECT_EQ(8, IndentColumn(" \t", 0, 8));
    EXPECT_EQ(3, IndentColumn("ab\n   c", 3, 4, &firstOther));
    EXPECT_EQ(6, firstOther);
    EXPECT_EQ("\t\t  ", MakeIndent(10, 4));
    EXPECT_EQ("   ", MakeIndent(3, 4));
    EXPECT_EQ("", MakeIndent(0, 4));
}

TEST(Indent, EnterKeepsTheLinesIndentAndOpensBlocks)
{
    struct Row {
        const char* text;
        long lineStart, selEnd;
        bool block;
        int column;
        long blanksEnd;
    } const rows[] = {
        // clang-format off
        {"    ", 0, 4, false, 4, 4}, {"        foo", 0, 3, false, 8, 8},
        {"x\r\n  \tfoo", 3, 9, false, 4, 9}, {"  a\t \tb", 0, 3, false, 2, 6},
        {"  if (x) {", 0, 10, true, 6, 10}, {"  if (x) {", 0, 10, false, 2, 10},
        {"    if (x) {   ", 0, 15, true, 8, 15}, {"    if (x) {   ", 0, 12, true, 8, 15},
        {"  f() { // c", 0, 12, true, 2, 12}, {"  case 1:", 0, 9, true, 6, 9},
        {"  call(", 0, 7, true, 6, 7}, {"  call(a,", 0, 9, true, 2, 9},
        {"a {\r\n    ", 5, 9, true, 4, 9}, {"a {  \t  ", 0, 8, true, 4, 8}, {"{", 0, 0, true, 0, 0},
        {"  x {  y", 0, 6, true, 6, 7},
        // clang-format on
    };
    for (const Row& row : rows) {
        const EnterIndent indent =
            ComputeEnterIndent(row.text, row.lineStart, row.selEnd, row.block, 4, 4);
        EXPECT_EQ(row.column, indent.column) << row.text << " at " << row.selEnd;
        EXPECT_EQ(row.blanksEnd, indent.blanksEnd) << row.text << " at " << row.selEnd;
    }
    EXPECT_EQ(5, ComputeEnterIndent("  x {", 0, 5, true, 4, 3).column);
}

TEST(Braces, PartnerForwardOrBackwardAtOrJustBeforeThePosition)
{
    struct Row {
        const char* text;
        long position, expected;
    } const rows[] = {
        // clang-format off
        {"a { b } c", 2, 6}, {"a { b } c", 3, 6}, {"a { b } c", 7, 2}, {"a { b } c", 6, 2},
        {"a { b } c", 1, -1}, {"a { b } c", 0, -1}, {"a { b } c", 9, -1}, {"(a(b)c)", 0, 6},
        {"(a(b)c)", 2, 4}, {"(a(b)c)", 7, 0}, {"(a(b)c)", 5, 2}, {"[(])", 0, 2}, {"[(])", 1, 3},
        {"((a)", 0, -1}, {"{x}", 3, 0}, {"x\"}\"{", 5, -1}, {"{\"}\"}", 0, 2}, {"]", 0, -1},
        // clang-format on
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.expected,
                  MatchBrace(row.text, static_cast<long>(strlen(row.text)), row.position))
            << row.text << " at " << row.position;
    EXPECT_EQ(-1, MatchBrace("{x}", 2, 0)); // not beyond the size
}

TEST(CaseChange, UpperLowerToggleAndCapitalise)
{
    const char* const rows[][2] = {{"Hello World_1", "HELLO WORLD_1"},
                                   {"Hello World_1", "hello world_1"},
                                   {"Hello World_1", "hELLO wORLD_1"},
                                   {"two wORDS", "Two words"}};
    for (int mode = 0; mode < 4; ++mode) {
        std::string bytes = rows[mode][0];
        ChangeCaseBytes(&bytes[0], static_cast<long>(bytes.size()), mode, AsciiCaseMap);
        EXPECT_EQ(rows[mode][1], bytes) << mode;
    }
    char cr[] = "\r";
    ChangeCaseBytes(cr, 1, 2, AsciiCaseMap);
    EXPECT_STREQ("\r", cr);
}

} // namespace
