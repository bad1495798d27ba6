// The compiler: the code it emits and the results it gives.
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace
{

using Bytes = std::vector<unsigned char>;

// A set op with its map trimmed of trailing zero bytes, then more code.
Bytes SetOp(int op, const std::string& members, Bytes tail = {})
{
    unsigned char map[32] = {};
    for (unsigned char c : members)
        map[c >> 3] |= static_cast<unsigned char>(1 << (c & 7));
    int length = 32;
    while (length > 0 && map[length - 1] == 0)
        length--;
    Bytes code{static_cast<unsigned char>(op), static_cast<unsigned char>(length)};
    code.insert(code.end(), map, map + length);
    code.insert(code.end(), tail.begin(), tail.end());
    return code;
}

TEST(PatternCompile, Code)
{
    const std::string upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::tuple<const char*, bool, Bytes> rows[] = {
        // clang-format off
        {"ab*c", 0, {1, 1, 'a', 5, 6, 0, 1, 1, 'b', 7, 0xF7, 0xFF, 1, 1, 'c'}},
        {"ab+c", 0, {8, 3, 0, 5, 7, 0, 1, 2, 'a', 'b', 7, 0xF6, 0xFF, 1, 1, 'c'}},
        {"ab?c", 0, {5, 4, 0, 1, 2, 'a', 'b', 1, 1, 'c'}},
        {"\\(ab\\)*\\1", 0, {12, 1, 5, 9, 0, 1, 2, 'a', 'b', 13, 1, 7, 0xF4, 0xFF, 14, 1}},
        {"\\(ab\\)+", 0, {12, 1, 8, 3, 0, 5, 9, 0, 1, 2, 'a', 'b', 13, 1, 7, 0xF4, 0xFF}},
        {"^a$", 0, {2, 1, 1, 'a', 3}}, {"\\<if\\>", 0, {0x12, 1, 2, 'i', 'f', 0x13}},
        {"x\\|y", 0, {1, 3, 'x', '|', 'y'}}, {"", 0, {}},
        // A repeat without a previous element is a literal.
        {"*abc", 0, {1, 4, '*', 'a', 'b', 'c'}}, {"+a", 0, {1, 2, '+', 'a'}},
        {"?a", 0, {1, 2, '?', 'a'}}, {"\\(*a\\)", 0, {12, 1, 1, 2, '*', 'a', 13, 1}},
        {"^*a", 0, {2, 1, 2, '*', 'a'}},
        // A repeat after an element without mark wraps the construct.
        {"a*\\<*", 0, {5, 13, 0, 5, 6, 0, 1, 1, 'a', 7, 0xF7, 0xFF, 0x12, 7, 0xF0, 0xFF}},
        // '*' or '^' after a byte starts a literal of its own; '+' and '?'
        // don't look ahead, so they repeat the whole literal.
        {"xa^b", 0, {1, 1, 'x', 1, 3, 'a', '^', 'b'}},
        {"abc^", 0, {1, 2, 'a', 'b', 1, 2, 'c', '^'}}, {"a^$b", 0, {1, 4, 'a', '^', '$', 'b'}},
        // Anchors by context.
        {"\\(^a\\)", 0, {12, 1, 2, 1, 1, 'a', 13, 1}}, {"^^a", 0, {2, 2, 1, 1, 'a'}},
        {"a\n^b", 0, {1, 1, 'a', 1, 1, '\n', 2, 1, 1, 'b'}}, {"a$b", 0, {1, 3, 'a', '$', 'b'}},
        {"a$", 0, {1, 1, 'a', 3}}, {"\\(a$\\)", 0, {12, 1, 1, 1, 'a', 3, 13, 1}},
        {"$$", 0, {1, 1, '$', 3}}, {"$\n", 0, {3, 1, 1, '\n'}},
        {"$*", 0, {5, 6, 0, 1, 1, '$', 7, 0xF7, 0xFF}},
        // Sets: ']' first is a member, '-' first or last is a member, the
        // only escape is \t.
        {"[a-cx]", 0, SetOp(OP_CHAR_SET, "abcx")}, {"[^0-2]", 0, SetOp(OP_CHAR_SET_NOT, "012")},
        {"[z-a]", 0, {10, 0}}, {"[^z-a]", 0, {11, 0}}, {"[]]", 0, SetOp(OP_CHAR_SET, "]")},
        {"[^]a]", 0, SetOp(OP_CHAR_SET_NOT, "]a")}, {"[-a]", 0, SetOp(OP_CHAR_SET, "-a")},
        {"[a-]", 0, SetOp(OP_CHAR_SET, "-a")}, {"[\\tx]", 0, SetOp(OP_CHAR_SET, "\tx")},
        {"[\\]]", 0, SetOp(OP_CHAR_SET, "\\", {1, 1, ']'})},
        {"[a-z]", 1, SetOp(OP_CHAR_SET, upper)}, {"[Z-a]", 1, {10, 0}},
        {"[Z-a]", 0, SetOp(OP_CHAR_SET, "Z[\\]^_`a")},
        // Escapes are literals, folded after their meaning.
        {"\\n", 0, {1, 1, 'n'}}, {"\\n", 1, {1, 1, 'N'}}, {"\\t", 1, {1, 1, '\t'}},
        {"\\{\\0\\.", 0, {1, 3, '{', '0', '.'}}, {"aBc", 1, {1, 3, 'A', 'B', 'C'}},
        // Groups and back references.
        {"\\1", 0, {1, 1, '1'}}, {"\\(a\\1\\)", 0, {12, 1, 1, 2, 'a', '1', 13, 1}},
        {"\\(a\\)\\2", 0, {12, 1, 1, 1, 'a', 13, 1, 1, 1, '2'}},
        // Repeat runs are one repeat.
        {"a**", 0, {5, 6, 0, 1, 1, 'a', 7, 0xF7, 0xFF}},
        {"a+?", 0, {5, 6, 0, 1, 1, 'a', 7, 0xF7, 0xFF}},
        {"a?+", 0, {5, 6, 0, 1, 1, 'a', 7, 0xF7, 0xFF}},
        {"a++", 0, {8, 3, 0, 5, 6, 0, 1, 1, 'a', 7, 0xF7, 0xFF}}, {"a??", 0, {5, 3, 0, 1, 1, 'a'}},
        // clang-format on
    };
    for (const auto& [pattern, fold, code] : rows) {
        SCOPED_TRACE(pattern);
        Compiled c(pattern, fold);
        ASSERT_EQ(PATTERN_OK, c.result);
        EXPECT_EQ(code, c.Code());
    }
    // Bytes from 0x80 up lie beyond a short map and keep a long one.
    EXPECT_EQ(32, Compiled("[\xff]").Code()[1]);
    // 128 bytes are two literals; the tenth group emits nothing, \9 refers to the ninth.
    const Bytes q128 = Compiled(std::string(128, 'q')).Code();
    ASSERT_EQ(132u, q128.size());
    EXPECT_EQ((Bytes{1, 0x7F, 'q', 1, 1, 'q'}),
              Bytes({q128[0], q128[1], q128[2], q128[129], q128[130], q128[131]}));
    const Bytes ten =
        Compiled("\\(a\\)\\(b\\)\\(c\\)\\(d\\)\\(e\\)\\(f\\)\\(g\\)\\(h\\)\\(i\\)\\(j\\)\\9")
            .Code();
    ASSERT_GE(ten.size(), 7u);
    EXPECT_EQ((Bytes{13, 9, 1, 1, 'j', 14, 9}), Bytes(ten.end() - 7, ten.end()));
}

TEST(PatternCompile, Results)
{
    const std::string open = "\\(\\(\\(\\(\\(\\(\\(\\(\\(\\(";
    const std::tuple<std::string, int> rows[] = {
        // clang-format off
        {"a", PATTERN_OK}, {"[]]", PATTERN_OK}, {"[^]]", PATTERN_OK},
        {std::string(16375, '.'), PATTERN_OK}, // an element starts while ten bytes remain
        {std::string(16376, '.'), PATTERN_TOO_COMPLEX},
        {std::string(16360, '.') + "[a]", PATTERN_TOO_COMPLEX}, // a set needs 35
        {std::string(20000, '.'), PATTERN_TOO_COMPLEX}, {"\\(a", PATTERN_UNMATCHED_OPEN},
        {open + "a", PATTERN_UNMATCHED_OPEN}, {open + "\\(a", PATTERN_TOO_COMPLEX},
        {"a\\)", PATTERN_UNMATCHED_CLOSE}, {"\\)", PATTERN_UNMATCHED_CLOSE}, {"[", PATTERN_INVALID},
        {"[a", PATTERN_INVALID}, {"[a-", PATTERN_INVALID}, {"a\\", PATTERN_INVALID},
        {"[]", PATTERN_INVALID}, {"[^]", PATTERN_INVALID}, {"[a-z", PATTERN_INVALID},
        {"[\\", PATTERN_INVALID},
        // clang-format on
    };
    for (const auto& [pattern, result] : rows)
        EXPECT_EQ(result, Compiled(pattern).result) << pattern.substr(0, 30);

    Compiled fits(std::string(16375, '.'));
    EXPECT_EQ(16375u, fits.pb.used);
    EXPECT_EQ(16384u, fits.pb.allocated);
    g_reallocFailsAfter = 0; // the first allocation
    EXPECT_EQ(PATTERN_NO_MEMORY, Compiled("a").result);
    g_reallocFailsAfter = 1; // the first growth
    EXPECT_EQ(PATTERN_NO_MEMORY, Compiled(std::string(100, '.')).result);
    g_reallocFailsAfter = -1;
}

TEST(PatternCompile, BufferIsReusedAndAnchorsAreFlagged)
{
    PatternBuffer pb;
    pb.buffer = static_cast<unsigned char*>(malloc(40));
    pb.allocated = 40;
    ASSERT_EQ(PATTERN_OK, CompilePattern("abc", 3, &pb));
    unsigned char* first = pb.buffer;
    ASSERT_EQ(PATTERN_OK, CompilePattern("xy", 2, &pb));
    EXPECT_EQ(first, pb.buffer);
    EXPECT_EQ(4u, pb.used);
    EXPECT_EQ(PATTERN_INVALID, CompilePattern("[", 1, &pb));
    ASSERT_EQ(PATTERN_OK, CompilePattern("a", 1, &pb));
    EXPECT_EQ(0, pb.map_valid);
    free(pb.buffer);

    Compiled both("^a$"), neither("a^$b");
    EXPECT_EQ(1, both.pb.has_line_start);
    EXPECT_EQ(1, both.pb.has_line_end);
    EXPECT_EQ(0, neither.pb.has_line_start);
    EXPECT_EQ(0, neither.pb.has_line_end);
}

} // namespace
