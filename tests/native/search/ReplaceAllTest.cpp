#include "search/ReplaceAll.h"
#include "PatternTestUtil.h"
#include "search/Replacement.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace
{

// The changed text and the count.
using Outcome = std::pair<std::string, int>;

Outcome OnePass(PatternBuffer* pb, const std::string& text, int position, int range,
                const std::string& replace)
{
    ReplaceAllResult result;
    const ExpandMatch expand = [&replace](const char* t, const MatchRegisters& regs,
                                          std::string& out) {
        ExpandReplacementText(replace, t, regs, nullptr, AsciiCaseMap, out);
    };
    ReplaceAllInText(pb, text.data(), static_cast<int>(text.size()), position, range, expand,
                     result);
    return {text.substr(0, result.from) + result.text + text.substr(result.to), result.count};
}

// The editor's loop of one replacement at a time, each search in the text as
// it stands after the replacements before it. A search that would repeat the
// one before, seeing the same byte before the same rest of the text, ends it.
Outcome HitByHit(PatternBuffer* pb, std::string text, int position, int range,
                 const std::string& replace)
{
    int count = 0;
    std::string lastSearch;
    while (range > 0) {
        const std::string search =
            (position == 0 ? "^" : text.substr(position - 1)) + '/' + std::to_string(range);
        if (count > 0 && search == lastSearch)
            break;
        lastSearch = search;
        MatchRegisters regs;
        const int size = static_cast<int>(text.size());
        if (SearchPattern(pb, text.data(), size, position, range, &regs) < 0)
            break;
        std::string inserted;
        ExpandReplacementText(replace, text.data(), regs, nullptr, AsciiCaseMap, inserted);
        count++;
        const int matchLength = regs.end[0] - regs.start[0];
        const int newLength = static_cast<int>(inserted.size());
        text.replace(regs.start[0], matchLength, inserted);
        const int newPosition = regs.start[0] + newLength;
        range = range - (newPosition - position) + newLength - matchLength;
        position = newPosition;
        if (pb->has_line_start && inserted.empty()) {
            position++, range--;
        } else {
            if (text[position] == '\r')
                position++, range--;
            if (text[position] == '\n')
                position++, range--;
        }
    }
    return {text, count};
}

TEST(ReplaceAll, OneHitAtATimeWithoutRescanningTheInsertedText)
{
    struct Row {
        const char *pattern, *text, *replace;
        int position, range; // -1: the whole text
        Outcome expected;
    } const rows[] = {
        // clang-format off
        {"^", "a\r\nb\r\n\r\nc", "> ", 0, -1, {"> a\r\n> b\r\n> \r\n> c", 4}},
        {"ab", "abab", "xaby", 0, -1, {"xabyxaby", 2}},
        {"\\<a+\\>", "a aa ba a_ aa", "X", 0, -1, {"X X ba a_ X", 3}},
        {"\\<", "ab cd", "x", 0, -1, {"xab xcd", 2}}, {"$", "a\r\nb", ";", 0, -1, {"a;\r\nb;", 2}},
        {"^", "ab\ncd", "", 0, -1, {"ab\ncd", 2}},
        {"b+", "abbcbdbb", "<&>", 0, -1, {"a<bb>c<b>d<bb>", 3}},
        {"a", "aaaa", "b", 1, 2, {"abba", 2}}, {"q", "aaaa", "b", 0, -1, {"aaaa", 0}},
        {"x*", "ab", "-", 0, -1, {"--ab", 2}}, {"x*", "ab", "", 0, -1, {"ab", 1}},
        {"a*", "aab", "\\n", 0, -1, {"\r\n\r\nb", 2}}, {"a", "aaa", "b", 1, 0, {"aaa", 0}},
        // clang-format on
    };
    for (const Row& row : rows) {
        Compiled compiled(row.pattern);
        const int range = row.range < 0 ? static_cast<int>(strlen(row.text)) : row.range;
        const Outcome one = OnePass(&compiled.pb, row.text, row.position, range, row.replace);
        EXPECT_EQ(row.expected, one) << row.pattern << " / " << row.replace << " in " << row.text;
        EXPECT_EQ(HitByHit(&compiled.pb, row.text, row.position, range, row.replace), one);
    }
}

TEST(ReplaceAll, RandomTextsPatternsAndReplacementsAsHitByHit)
{
    const char* const patterns[] = {
        "^",     "$",     "\\<",  "\\>",         "a",           "a*",         "x.",
        "^a",    "a$",    "^$",   "\\<a",        "b\\>",        "\\<[a-z_]*", "\\(a\\)\\(b*\\)",
        "[ab]+", "[^ ]*", ".*",   "\\<.",        "\\(x\\)*",    "^[ \t]*",    " *$",
        "\r\n",  "\n",    "_\\>", "\\(ab\\)\\1", "\\<[ab]*\\>", "b*$",        "\\(^a\\|b\\)",
    };
    const char* const replacements[] = {"",   "a",     "&",     "&&", "\\1",  "[\\1\\2]", "\\n",
                                        "x",  " ",     "\\Ua&", "ab", "_",    "\\t&",     "a\\",
                                        "&x", "\\u&b", "\n",    "b",  "\\n&", "a&a"};
    const char* const pieces[] = {"\r\n", "a", "b", "x", " ", "\t", "_", "ab", "a"};
    std::mt19937 rng(20261123);
    auto below = [&rng](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
    int replaced = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int i = below(14); i > 0; --i)
            text += pieces[below(9)];
        const int size = static_cast<int>(text.size());
        Compiled compiled(patterns[below(28)], below(4) == 0);
        ASSERT_EQ(PATTERN_OK, compiled.result);
        const std::string replace = replacements[below(20)];
        const int position = below(3) == 0 ? below(size + 1) : 0;
        const int range = position > 0 ? below(size - position + 2) - 1 : size;
        const Outcome each = HitByHit(&compiled.pb, text, position, range, replace);
        ASSERT_EQ(each, OnePass(&compiled.pb, text, position, range, replace))
            << "'" << text << "' by '" << replace << "' at " << position << "+" << range;
        replaced += each.second > 0;
    }
    EXPECT_GT(replaced, 10000);
}

} // namespace
