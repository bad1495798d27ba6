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
        {x254 + "QZ\n", "^Z", {"2:Z"}},
        {"a\n\032a\n", "a", {"1:a"}},
    };
    for (const auto& row : rows) {
        Compiled pattern(row.pattern);
        TextLineReader reader(Source(row.text, 7));
        std::vector<std::string> hits;
        const int count = GrepLines(reader, &pattern.pb, [&](int number, const char* text) {
            hits.push_back(std::to_string(number) + ":" + text);
        });
        EXPECT_EQ(row.hits, hits) << row.pattern;
        EXPECT_EQ(static_cast<int>(row.hits.size()), count) << row.pattern;
    }
}

} // namespace
