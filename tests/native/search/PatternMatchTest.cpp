// The matcher and the search: first-character map, ranges in both
// directions, repeats, anchors, groups, word boundaries and the stack.
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>

namespace
{

const int N = MATCH_NOT_FOUND;
const std::string kNine = "\\(1\\)\\(2\\)\\(3\\)\\(4\\)\\(5\\)\\(6\\)\\(7\\)\\(8\\)\\(9\\)";
const std::string kTen =
    "\\(a\\)\\(b\\)\\(c\\)\\(d\\)\\(e\\)\\(f\\)\\(g\\)\\(h\\)\\(i\\)\\(j\\)\\9";

TEST(PatternMatch, FirstMatchAndItsLength)
{
    const std::string run(100000, 'a'), mixed = "abc\r\nxyz\nq\r\nfoo";
    const std::tuple<std::string, std::string, int, int, bool> rows[] = {
        // clang-format off
        // Repeats are greedy; the literal look-ahead decides their reach.
        {"a*", "baaa", 0, 0, 0}, {"x*", "abc", 0, 0, 0}, {".*", "abc\r\ndef", 0, 3, 0},
        {"[^x]*y", "a\r\nby", 0, 5, 0}, {"a.*c", "abcabc", 0, 6, 0}, {"ab?c", "c", 0, 1, 0},
        {"ab?c", "abc", 0, 3, 0}, {"ab?c", "bc", 1, 1, 0}, {"ab+c", "abc", 0, 3, 0},
        {"ab+c", "ababc", 0, 5, 0}, {"ab+c", "abbc", N, 0, 0}, {"ab*c", "abbc", 0, 4, 0},
        {"ab*c", "ababc", 2, 3, 0}, {"a+b", "xyzaab", 3, 3, 0}, {"ab*", "abab", 0, 2, 0},
        {"\\(ab\\)*", "abab", 0, 4, 0}, {"a*b", run + "b", 0, 100001, 0},
        // '.' takes neither CR nor LF.
        {".", "\r\nx", 2, 1, 0}, {"a.b", "a\rb a\nb a-b", 8, 3, 0},
        // "ab+" and "\(ab\)+" accept the same texts.
        {"\\(ab\\)+", "ab", 0, 2, 0}, {"\\(ab\\)+", "abab", 0, 4, 0}, {"\\(ab\\)+", "aab", 1, 2, 0},
        {"\\(ab\\)+", "abb", 0, 2, 0}, {"\\(ab\\)+", "b", N, 0, 0}, {"\\(ab\\)+", "", N, 0, 0},
        // A loop closing group one or three reads the group number.
        {"\\(a*\\)a", "aaa", N, 0, 0}, {"a*a", "aaa", 0, 3, 0},
        {"\\(x\\)\\(a*\\)a", "xaaa", 0, 4, 0}, {"\\(x\\)\\(y\\)\\(a*\\)a", "xyaaa", N, 0, 0},
        // The bytes past the code differ from everything.
        {"\\(a*\\)", "aaa", 0, 3, 0}, {"\\([a-c]*\\)", "abcd", 0, 3, 0},
        {"\\([^x]*\\)", "abc", 0, 3, 0},
        // Empty loop iterations leave the loop.
        {"\\(a*\\)*", "b", 0, 0, 0}, {"\\(a*\\)*b", "b", 0, 1, 0}, {"\\(a*\\)*b", "aab", 0, 3, 0},
        {"\\(a*\\)+b", "b", 0, 1, 0}, {"\\(\\<\\)*ab", "xab", 1, 2, 0},
        {"\\(a*\\)*c", "aaab", N, 0, 0},
        // Anchors by context.
        {"^a", "ab", 0, 1, 0}, {"^b", "ab\nb", 3, 1, 0}, {"^b", "ab\rb", N, 0, 0},
        {"^b", "ab\r\nb", 4, 1, 0}, {"$", "x\r\n", 1, 0, 0}, {"a$", "a\r\nb", 0, 1, 0},
        {"a$", "a\nb", N, 0, 0}, {"a^b", "xa^b", 1, 3, 0}, {"^*a", "*a", 0, 2, 0},
        {"^*a", "b*a", N, 0, 0}, {"$$", "$", 0, 1, 0}, {"\\(^a\\)", "b\na", 2, 1, 0},
        // Sets and ranges; with folding the text bytes are folded first.
        {"[0-9][0-9]*", "x123y", 1, 3, 0}, {"[z-a]", "az-", N, 0, 0}, {"[^z-a]", "\r", 0, 1, 0},
        {"[^z-a]", "\n", 0, 1, 0}, {"[^a]", "a\n", 1, 1, 0}, {"[]x]", "ab]", 2, 1, 0},
        {"[\\]]", "a\\]", 1, 2, 0}, {"[\\t]", "a\tb", 1, 1, 0}, {"[\xe0-\xef]", "\xe9", 0, 1, 0},
        {"[a-c]", "\xe1\xe2", N, 0, 0}, {"[a-c]", "xc", 1, 1, 0}, {"[^a-c]", "cd", 1, 1, 0},
        {"[a-z]*", "aBc", 0, 3, 1}, {"[^a-z]", "1b", 0, 1, 1}, {"[^a-z]", "B1", 1, 1, 1},
        {"[Z-a]", "Za_", N, 0, 1}, {"[Z-a]", "z_", 1, 1, 0}, {"\xe9", "\xc9", N, 0, 1},
        {"ABC", "aBc", 0, 3, 1}, {"abc", "aBc", 0, 3, 1}, {"abc", "aBc", N, 0, 0},
        {"return", "  x RETURN", 4, 6, 1},
        // Back references; a group skipped on the path taken matches empty.
        {"\\(a\\)\\1", "aA", 0, 2, 1}, {"\\(a\\)\\1", "aA", N, 0, 0},
        {"\\(ab\\)\\1", "abab", 0, 4, 0}, {"\\(ab\\)\\1", "abac", N, 0, 0},
        {"\\(ab\\)\\1", "aba", N, 0, 0}, {"\\(a*\\)b\\1", "xaabaa", 1, 5, 0},
        {"\\(a\\)?\\1x", "x", 0, 1, 0}, {"\\(a\\)?\\1x", "aax", 0, 3, 0},
        {"\\(\\)\\1ab", "ab", 0, 2, 0},
        // The contents of a group past the ninth repeat as a whole.
        {kNine + "a\\(bc\\)*d", "123456789abcbcd", 0, 15, 0},
        {kNine + "a\\(bc\\)*d", "123456789ad", 0, 11, 0},
        {kNine + "a\\(bc\\)*d", "123456789abd", N, 0, 0}, {kTen, "abcdefghijj", N, 0, 0},
        // Word boundaries at both ends.
        {"\\<ab", "ab", 0, 2, 0}, {"ab\\>", "ab", 0, 2, 0}, {"\\<ab\\>", "ab", 0, 2, 0},
        {"\\<b", "ab", N, 0, 0}, {"a\\>", "ab", N, 0, 0}, {"\\<if\\>", "xif if_ if", 8, 2, 0},
        {"\\<\xe9", "a \xe9", N, 0, 0},
        // Positions inside a failed leading run are skipped correctly.
        {".*z", mixed, 5, 3, 0}, {".*o", mixed, 12, 3, 0}, {".*q$", mixed, 9, 1, 0},
        {"[A-Z][A-Z_]*(", "NULL && FOO_BAR(x)", 8, 8, 0}, {"[a-z][0-9]*x", "a12b3x", 3, 3, 0},
        {"a[a-c]*d", "aaabd", 0, 5, 0}, {"b[a-c]*d", "bbcxbcd", 4, 3, 0},
        {".*x", std::string(4000, 'a'), N, 0, 0}, {".*x", std::string(4000, 'a') + "x", 0, 4001, 0},
        {".*x", std::string(5000, 'a'), MATCH_STACK_EXHAUSTED, 0, 0},
        // The byte behind leading loops, reached before a try, in either
        // case; the last line has no line end.
        {".*x", "x", 0, 1, 0}, {".*x", "axbxc", 0, 4, 0}, {".*X", "ab\r\ncxdx", 4, 4, 1},
        {".*x", "ab\r\nx", 4, 1, 0}, {"^[ \t]*}", "}", 0, 1, 0}, {"^[ \t]*}", "a }\r\n\t }", 5, 3, 0},
        {"^[ \t]*}", "  a}\n", N, 0, 0}, {"[a-z]*(", "xY(", 2, 1, 0}, {"[a-z]*(", "ab-xY(", 3, 3, 1},
        {"[^ ]*:", "a b:", 2, 2, 0},
        // A folded literal by its least common byte, first or last.
        {"error", "ERROR", 0, 5, 1}, {"error", "an eRrOr", 3, 5, 1}, {"error", "errorERRO", 0, 5, 1},
        {"oops", std::string(40, 'o') + "OpS", 39, 4, 1},
        // A repeat without a previous element is a literal; one after an
        // element without mark repeats the construct.
        {"*abc", "x*abc", 1, 4, 0}, {"+a", "a+a", 1, 2, 0}, {"?a", "a?a", 1, 2, 0},
        {"\\(*a\\)", "x*a", 1, 2, 0}, {"a*\\<*b", "aab", 2, 1, 0}, {"$*", "$$x", 0, 2, 0},
        // '^' and '$' inside a pattern are bytes, '\|' is none either.
        {"abc^", "abc^", 0, 4, 0}, {"a^$b", "a^$b", 0, 4, 0}, {"a$b", "a$b", 0, 3, 0},
        {"x\\|y", "x|y", 0, 3, 0}, {"^^a", "b\na", 2, 1, 0}, {"a\n^b", "a\nb", 0, 3, 0},
        {"^a$", "b\na\r\n", 2, 1, 0}, {"\\(a$\\)", "ab a\r\n", 3, 1, 0},
        // Set members: ']' first, '-' first or last, high bytes.
        {"[a-cx]*", "xbad", 0, 3, 0}, {"[^0-2]", "012a", 3, 1, 0}, {"[^]a]", "]ab", 2, 1, 0},
        {"[-a]*", "-a-b", 0, 3, 0}, {"[a-]*", "a-b", 0, 2, 0}, {"[\xff]", "a\xff", 1, 1, 0},
        {".x", "\xe9x", 0, 2, 0}, {"[^a-y]", "b\xff", 1, 1, 0}, {"[a-c]x", "Bx", 0, 2, 1},
        // Escapes are literals, folded after their meaning; a reference to
        // a group not yet closed is its digit.
        {"\\n", "\nn", 1, 1, 0}, {"\\n", "xN", 1, 1, 1}, {"\\t", "T\t", 1, 1, 1},
        {"\\{\\0\\.", "{0.", 0, 3, 0}, {"\\1", "a1", 1, 1, 0}, {"\\(a\\1\\)", "a1", 0, 2, 0},
        {"\\(a\\)\\2", "aa a2", 3, 2, 0}, {"\\(ab\\)*\\1", "ababab", 0, 6, 0},
        // Runs of repeats are one repeat, of the whole literal before them;
        // 128 bytes are two literals.
        {"a**", "aaab", 0, 3, 0}, {"ba+?", "baba", 0, 4, 0}, {"ba?+", "bab", 0, 2, 0},
        {"ba++", "b", N, 0, 0}, {"ba++", "baba", 0, 4, 0}, {"ba??", "baa", 0, 2, 0},
        {std::string(128, 'q'), std::string(130, 'q'), 0, 128, 0},
        // clang-format on
    };
    for (const auto& [pattern, text, pos, length, fold] : rows) {
        SCOPED_TRACE(::testing::PrintToString(pattern) + " in " +
                     ::testing::PrintToString(text.substr(0, 20)));
        Compiled c(pattern, fold);
        ASSERT_EQ(PATTERN_OK, c.result);
        MatchRegisters regs;
        EXPECT_EQ(pos, c.Find(text, &regs));
        if (pos >= 0) {
            EXPECT_EQ(length, regs.end[0] - regs.start[0]);
        }
    }
}

TEST(PatternMatch, SearchOverARangeInEitherDirection)
{
    const std::string mixed = "abc\r\nxyz\nq\r\nfoo", line(5000, 'a'), blanks(200, ' ');
    const std::tuple<const char*, std::string, int, int, int, bool> rows[] = {
        // clang-format off
        // Forward: past the range only the try beyond it.
        {"$", "abc", 0, 3, 3, 0}, {"$", "ab\r\ncd", 0, 1, N, 0}, {"$", "ab\r\ncd", 0, 6, 2, 0},
        {"a", "xa", 0, 1, 1, 0}, {"a", "xxa", 0, 1, N, 0}, {"a", "a", 0, 0, N, 0},
        {"a", "a", 1, 5, N, 0}, {"ab", "aab", 0, 1, N, 0}, {"ab", "xab", 0, 1, 1, 0},
        {"ab", "aab", 0, 2, 1, 0},
        // Without a map, the range is all there is.
        {"b+", "ab", 0, 1, N, 0}, {"b+", "ab", 0, 2, 1, 0}, {"\\>", "ab", 0, 2, N, 0},
        {"\\>", "ab", 0, 3, 2, 0}, {"x*$", "ab", 0, 2, 2, 0}, {"x*$", "ab", 0, 1, N, 0},
        {".*q$", mixed, 0, 8, N, 0}, {".*q$", mixed, 0, 9, 9, 0},
        {"[a-z][0-9]*x", "a12bx", 0, 3, 3, 0}, {"[a-z][0-9]*x", "a1cbx", 0, 3, N, 0},
        {".*x", line + "\r\nx", 0, 5003, MATCH_STACK_EXHAUSTED, 0},
        {".*x", "ab\ncdx", 0, 2, N, 0}, {".*x", "ab\ncdx", 0, 3, 3, 0}, {".*x", "abx\nx", 1, 4, 1, 0}, {"^ *}", " }\n }", 1, 4, 3, 0},
        {"^ *}", "  }", 1, 2, N, 0}, {"[ ]*}", " a" + blanks + "b}", 0, 4, N, 0}, {"error", "xxERROR", 0, 2, 2, 1}, {"error", "xxERROR", 0, 1, N, 1},
        // Backward down to zero; from the end of the text, the end is tried
        // without a map test.
        {"a", "abc", 2, -2, 0, 0}, {"a", "abca", 3, -3, 3, 0}, {"a", "abc", 0, 0, N, 0},
        {"a", "abc", 2, -1, N, 0}, {"a", "abc", 2, -9, 0, 0}, {"ab", "abab", 4, -4, 2, 0},
        {"$", "ab", 2, -2, 2, 0}, {"$", "a\r\nb", 2, -2, 1, 0}, {"B", "abbc", 3, -3, 2, 1},
        {"\\>", "ab", 2, -2, 2, 0}, {"\\<", "ab", 2, -2, 0, 0},
        // clang-format on
    };
    for (const auto& [pattern, text, start, range, result, fold] : rows) {
        SCOPED_TRACE(std::string(pattern) + " in " + text.substr(0, 10) + " from " +
                     std::to_string(start) + " by " + std::to_string(range));
        EXPECT_EQ(result, Compiled(pattern, fold).Search(text, start, range));
    }
}

TEST(PatternMatch, MatchAtAPositionStopsConsumingAtTheStop)
{
    const std::tuple<const char*, const char*, int, int, int> rows[] = {
        {"", "abc", 1, 3, 0},   {"\\<", "ab", 2, 2, N},   {"\\<", "ab", 0, 2, 0},
        {"\\>", "ab", 0, 2, N}, {"\\>", "ab", 2, 2, 0},   {"ab", "abc", 0, 1, N},
        {"ab", "abc", 0, 2, 2}, {"a\\>", "ab", 0, 1, N},  {"a$", "ab", 0, 1, N},
        {"a$", "a\r", 0, 1, 1}, {"a*b", "aaaa", 0, 4, N},
    };
    for (const auto& [pattern, text, pos, stop, result] : rows) {
        Compiled c(pattern);
        const int size = static_cast<int>(strlen(text));
        EXPECT_EQ(result, MatchPattern(&c.pb, text, size, pos, stop, nullptr))
            << pattern << " in " << text;
    }
}

TEST(PatternMatch, GroupsAndRegisters)
{
    const struct {
        std::string pattern, text;
        std::vector<int> regs; // start and end of groups 0, 1, ...
    } rows[] = {
        {"\\(ab\\)*", "xab", {0, 0, -1, -1}},
        {"\\(ab\\)*", "ababx", {0, 4, 0, 4, -1, -1}}, // first iteration to end of last
        {"\\(a\\)x\\(b*\\)", "zaxbb", {1, 5, 1, 2, 3, 5}},
        {"\\(a\\)*ab", "aab", {0, 3, 0, 2}}, // a value recorded on an abandoned path stays
        {kTen, "-abcdefghiji", {1, 12, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9, 10}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pattern + " in " + row.text);
        MatchRegisters regs;
        ASSERT_EQ(row.regs[0], Compiled(row.pattern).Find(row.text, &regs));
        for (size_t i = 0; i < row.regs.size(); ++i)
            EXPECT_EQ(row.regs[i], i % 2 ? regs.end[i / 2] : regs.start[i / 2]) << i;
    }
    // A failed search leaves the registers as they were.
    MatchRegisters regs, kept;
    Compiled two("\\(a\\)x\\(b*\\)");
    two.Find("zaxbb", &regs);
    kept = regs;
    EXPECT_EQ(N, two.Find("zzz", &regs));
    EXPECT_EQ(0, memcmp(&kept, &regs, sizeof regs));
}

TEST(PatternMatch, AllocationFailure)
{
    // Out of memory for the stack is exhaustion; a simple match allocates
    // nothing. A loop that keeps its points needs more than the 128 local
    // ones past 127 bytes, also where they need not be tried one by one.
    const std::string a126(126, 'a'), a127(127, 'a');
    const std::tuple<const char*, std::string, int> rows[] = {
        {".*x", std::string(300, 'a'), MATCH_STACK_EXHAUSTED},
        {"\\<[a-z_]*_t\\>", std::string(2000, ' ') + "size_t", 2000},
        {".*x", a127 + "\nx", 128},
        {".*x", a127 + "a\nx", MATCH_STACK_EXHAUSTED},
        {".*x", "ab\n" + a126 + "x", 3},
        {".*x", "ab\n" + a127 + "x", MATCH_STACK_EXHAUSTED},
    };
    for (const auto& [pattern, text, result] : rows) {
        Compiled c(pattern);
        g_reallocFailsAfter = 0;
        const int found = c.Find(text);
        g_reallocFailsAfter = -1;
        EXPECT_EQ(result, found) << pattern << " in " << text.size() << " bytes";
    }
}

} // namespace
