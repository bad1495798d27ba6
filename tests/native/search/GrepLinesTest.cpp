#include "search/GrepLines.h"
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace
{

// A source that gives at most chunk bytes a call.
TextLineReader::Fill Source(const std::string& text, size_t chunk)
{
    return [text, chunk, at = size_t(0)](char* buffer, size_t capacity) mutable {
        const size_t n = std::min({chunk, capacity, text.size() - at});
        memcpy(buffer, text.data() + at, n);
        at += n;
        return n;
    };
}

std::vector<std::string> Lines(const std::string& text, size_t chunk, bool endLastLine = true)
{
    TextLineReader reader(Source(text, chunk), endLastLine);
    std::vector<std::string> lines;
    char buffer[kGrepLineSize];
    while (int length = reader.ReadLine(buffer, sizeof buffer))
        lines.emplace_back(buffer, static_cast<size_t>(length));
    return lines;
}

TEST(GrepLines, TextModeLinesInAnyCutOfTheSource)
{
    const std::string a254(254, 'a'), b255(255, 'b'), c300(300, 'c');
    const struct {
        std::string text;
        std::vector<std::string> lines;
    } rows[] = {
        {"a\r\nb", {"a\n", "b\n"}},
        {"", {}},
        {"\n\r\n", {"\n", "\n"}},
        {"x\x1Ay\n", {"x\n"}},
        {"\032abc", {}},
        {"a\r\r\nb\rc\r", {"a\r\n", "b\rc\r\n"}},
        {"a\r\x1A\n", {"a\r\n"}},
        {a254 + "\n", {a254 + "\n"}},
        {b255 + "\n", {b255, "\n"}},
        {a254 + "\r\n", {a254 + "\n"}},
        {b255 + "\r\n", {b255, "\n"}},
        {std::string(253, 'a') + "\r\r\n", {std::string(253, 'a') + "\r\n"}},
        {c300 + "\r\n", {std::string(255, 'c'), std::string(45, 'c') + "\n"}},
        {"abcdefghij\r\nklmnopqrstu\r\n", {"abcdefghij\n", "klmnopqrstu\n"}}, // ends mid-word
    };
    for (const auto& row : rows)
        for (size_t chunk : {1, 2, 3, 4096})
            EXPECT_EQ(row.lines, Lines(row.text, chunk))
                << testing::PrintToString(row.text) << " chunk " << chunk;
    // As fgets reads: the last line as it stands.
    EXPECT_EQ((std::vector<std::string>{"a\n", "b"}), Lines("a\r\nb", 1, false));
}

TEST(GrepLines, HitsWithTheirLineNumbers)
{
    const std::string x254(254, 'x'), c300(300, 'c');
    const struct {
        std::string text, pattern;
        std::vector<std::string> hits;
    } rows[] = {
        {"int a;\n\nint b", "int", {"1:int a;", "3:int b"}},
        {"\n\nx\n\n", "^$", {}},
        {"ab\r\nb\r\n", "b$", {"1:ab", "2:b"}},
        {c300 + "\nhit\n", "hit", {"3:hit"}},
        {x254 + "QZ\n", "Q", {}},
        {x254 + "\r\nhit\n", "hit", {"2:hit"}}, // CR LF is one byte of the passed line
        {x254 + "QZ\n", "^Z", {"2:Z"}},
        {"a\n\032a\n", "a", {"1:a"}},
    };
    for (const auto& row : rows)
        for (size_t chunk : {7, 4096}) {
            Compiled pattern(row.pattern);
            TextLineReader reader(Source(row.text, chunk));
            std::vector<std::string> hits;
            const int count = GrepLines(reader, &pattern.pb, [&](int number, const char* text) {
                hits.push_back(std::to_string(number) + ":" + text);
            });
            EXPECT_EQ(row.hits, hits) << row.pattern << " chunk " << chunk;
            EXPECT_EQ(static_cast<int>(row.hits.size()), count) << row.pattern;
        }
}

TEST(GrepLines, NeedlesThatEveryMatchHolds)
{
    const struct {
        const char* pattern;
        bool fold;
        std::string needle; // "" for none
        const char* text;   // where FindNeedle finds it first
        int at;
    } rows[] = {
        {"frobnicate", false, "frobnicate", "frobnicat frobnicate", 10},
        {"\\<tally\\>", true, "TALLY", "taLLy", 0},
        {"^\\(\\)ab$", false, "ab", "aab", 1},
        {"ab*", false, "a", "ba", 1},
        {"ab", false, "ab", "aBab", 2},
        {"ab", false, "ab", "a", -1},
        {"a?b", false, "", "", -1},
        {"\\(ab\\)*c", false, "", "", -1},
        {"\\(ab\\)\\1", false, "ab", "xab", 1},
        {".*x", false, "", "", -1},
        {"[a]b", false, "", "", -1},
    };
    for (const auto& row : rows) {
        Compiled pattern(row.pattern, row.fold);
        const PatternNeedle needle = FindPatternNeedle(&pattern.pb);
        const char* bytes = reinterpret_cast<const char*>(needle.bytes);
        EXPECT_EQ(row.needle, std::string(bytes ? bytes : "", static_cast<size_t>(needle.length)))
            << row.pattern;
        EXPECT_EQ(row.at, FindNeedle(needle, row.text, static_cast<int>(strlen(row.text))))
            << row.pattern;
    }
    // The search starts from the least common byte.
    Compiled frobnicate("frobnicate");
    EXPECT_EQ(3, FindPatternNeedle(&frobnicate.pb).rare);
}

// Every line read and searched: the search as it stands with no needle.
std::vector<std::string> EveryLine(const std::string& text, PatternBuffer* pattern)
{
    TextLineReader reader(Source(text, 4096));
    std::vector<std::string> hits;
    char line[kGrepLineSize];
    for (int number = 1, length; (length = reader.ReadLine(line, sizeof line)) != 0; ++number) {
        line[length - 1] = '\0';
        if (length > 1 && SearchPattern(pattern, line, length - 1, 0, length - 1, nullptr) >= 0)
            hits.push_back(std::to_string(number) + ":" + line);
    }
    return hits;
}

// Texts of short, empty, long and overlong lines, CR, a rare Ctrl-Z and
// the needles' bytes in both cases, read in blocks of many sizes, so that
// needles and CR LF pairs cross the blocks' borders.
TEST(GrepLines, PassingLinesWithoutTheNeedleChangesNoHit)
{
    const char* const patterns[] = {"ab",  "\\<ab\\>",   "^ab",  "ab$", "\\(ab\\)b",   "b\\(ab\\)*",
                                    "a?b", "\\(ab\\)+x", "ab*a", "a",   "\\<\\(\\)bab"};
    const char* const pieces[] = {"a", "b", "A", "B", "ab", "AB", " ", "\n", "\r\n", "\r", "x"};
    unsigned seed = 12345;
    auto next = [&seed](unsigned n) { return (seed = seed * 1103515245u + 12345u) / 65536 % n; };
    for (int round = 0; round < 60; ++round) {
        std::string text;
        const size_t size = 50 + next(3000);
        while (text.size() < size) {
            if (next(400) == 0)
                text.append(250 + next(300), 'y'); // around a piece's length
            else
                text += pieces[next(sizeof pieces / sizeof *pieces)];
            if (next(5000) == 0)
                text += '\x1A';
        }
        for (const char* source : patterns)
            for (bool fold : {false, true}) {
                Compiled pattern(source, fold);
                TextLineReader reader(Source(text, 1 + next(round % 2 ? 4000 : 40)));
                std::vector<std::string> hits;
                GrepLines(reader, &pattern.pb, [&](int number, const char* line) {
                    hits.push_back(std::to_string(number) + ":" + line);
                });
                ASSERT_EQ(EveryLine(text, &pattern.pb), hits)
                    << source << " fold " << fold << " round " << round;
            }
    }
}

} // namespace
