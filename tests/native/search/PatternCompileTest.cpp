// The compiler: the code it emits and the results it gives.
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace
{

using Bytes = std::vector<unsigned char>;

Bytes CodeOf(const std::string& pattern, bool fold = false)
{
    Compiled c(pattern, fold);
    EXPECT_EQ(PATTERN_OK, c.result) << pattern;
    return c.Code();
}

int ResultOf(const std::string& pattern)
{
    Compiled c(pattern);
    return c.result;
}

// A set op with its map trimmed of trailing zero bytes.
Bytes SetOp(int op, std::initializer_list<int> members)
{
    unsigned char map[32] = {};
    for (int c : members)
        map[c >> 3] |= static_cast<unsigned char>(1 << (c & 7));
    int length = 32;
    while (length > 0 && map[length - 1] == 0)
        length--;
    Bytes code{static_cast<unsigned char>(op), static_cast<unsigned char>(length)};
    code.insert(code.end(), map, map + length);
    return code;
}

Bytes Join(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST(PatternCompile, WorkedCode)
{
    EXPECT_EQ((Bytes{0x01, 0x01, 0x61, 0x05, 0x06, 0x00, 0x01, 0x01, 0x62, 0x07, 0xF7, 0xFF, 0x01,
                     0x01, 0x63}),
              CodeOf("ab*c"));
    EXPECT_EQ((Bytes{0x08, 0x03, 0x00, 0x05, 0x07, 0x00, 0x01, 0x02, 0x61, 0x62, 0x07, 0xF6, 0xFF,
                     0x01, 0x01, 0x63}),
              CodeOf("ab+c"));
    EXPECT_EQ((Bytes{0x05, 0x04, 0x00, 0x01, 0x02, 0x61, 0x62, 0x01, 0x01, 0x63}), CodeOf("ab?c"));
    EXPECT_EQ((Bytes{0x0C, 0x01, 0x05, 0x09, 0x00, 0x01, 0x02, 0x61, 0x62, 0x0D, 0x01, 0x07, 0xF4,
                     0xFF, 0x0E, 0x01}),
              CodeOf("\\(ab\\)*\\1"));
    EXPECT_EQ((Bytes{0x02, 0x01, 0x01, 0x61, 0x03}), CodeOf("^a$"));
    EXPECT_EQ((Bytes{0x12, 0x01, 0x02, 0x69, 0x66, 0x13}), CodeOf("\\<if\\>"));
    EXPECT_EQ((Bytes{0x01, 0x03, 0x78, 0x7C, 0x79}), CodeOf("x\\|y"));
}

TEST(PatternCompile, EveryResult)
{
    EXPECT_EQ(PATTERN_OK, ResultOf("a"));
    EXPECT_EQ(PATTERN_INVALID, ResultOf("a\\"));
    EXPECT_EQ(PATTERN_TOO_COMPLEX, ResultOf(std::string(20000, '.')));
    EXPECT_EQ(PATTERN_UNMATCHED_OPEN, ResultOf("\\(a"));
    EXPECT_EQ(PATTERN_UNMATCHED_CLOSE, ResultOf("a\\)"));

    g_reallocFailsAfter = 0; // the first allocation
    EXPECT_EQ(PATTERN_NO_MEMORY, ResultOf("a"));
    g_reallocFailsAfter = 1; // the first growth
    EXPECT_EQ(PATTERN_NO_MEMORY, ResultOf(std::string(100, '.')));
    g_reallocFailsAfter = -1;
}

TEST(PatternCompile, EmptyPatternHasNoCode)
{
    Compiled c("");
    EXPECT_EQ(PATTERN_OK, c.result);
    EXPECT_EQ(0u, c.pb.used);
    EXPECT_EQ(0, c.Match("abc", 1));
}

TEST(PatternCompile, CodeLimit)
{
    // An element starts only while ten bytes remain below 16384.
    Compiled fits(std::string(16375, '.'));
    EXPECT_EQ(PATTERN_OK, fits.result);
    EXPECT_EQ(16375u, fits.pb.used);
    EXPECT_EQ(16384u, fits.pb.allocated);
    EXPECT_EQ(PATTERN_TOO_COMPLEX, ResultOf(std::string(16376, '.')));
    // A set needs 35 bytes free.
    EXPECT_EQ(PATTERN_TOO_COMPLEX, ResultOf(std::string(16360, '.') + "[a]"));
}

TEST(PatternCompile, BufferIsReused)
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
}

TEST(PatternCompile, RepeatWithoutPreviousElementIsLiteral)
{
    EXPECT_EQ((Bytes{0x01, 0x04, '*', 'a', 'b', 'c'}), CodeOf("*abc"));
    EXPECT_EQ((Bytes{0x01, 0x02, '+', 'a'}), CodeOf("+a"));
    EXPECT_EQ((Bytes{0x01, 0x02, '?', 'a'}), CodeOf("?a"));
    EXPECT_EQ((Bytes{0x0C, 0x01, 0x01, 0x02, '*', 'a', 0x0D, 0x01}), CodeOf("\\(*a\\)"));
    // The anchor sets no previous element, so the star after it is literal.
    EXPECT_EQ((Bytes{0x02, 0x01, 0x02, '*', 'a'}), CodeOf("^*a"));
}

TEST(PatternCompile, RepeatRunsAreOneRepeat)
{
    Bytes star = CodeOf("a*");
    EXPECT_EQ(star, CodeOf("a**"));
    EXPECT_EQ(star, CodeOf("a+?"));
    EXPECT_EQ(star, CodeOf("a?+"));
    EXPECT_EQ(CodeOf("a+"), CodeOf("a++"));
    EXPECT_EQ(CodeOf("a?"), CodeOf("a??"));
}

TEST(PatternCompile, RepeatAfterAnElementWithoutMarkWrapsTheConstruct)
{
    // "a*" then "\<" then a star that takes "a*\<" as a whole.
    EXPECT_EQ((Bytes{0x05, 0x0D, 0x00, 0x05, 0x06, 0x00, 0x01, 0x01, 'a', 0x07, 0xF7, 0xFF, 0x12,
                     0x07, 0xF0, 0xFF}),
              CodeOf("a*\\<*"));
}

TEST(PatternCompile, LiteralLookAhead)
{
    Bytes long128 = CodeOf(std::string(128, 'q'));
    ASSERT_EQ(2u + 127 + 3, long128.size());
    EXPECT_EQ((Bytes{0x01, 0x7F, 'q'}), Bytes(long128.begin(), long128.begin() + 3));
    EXPECT_EQ((Bytes{0x01, 0x01, 'q'}), Bytes(long128.begin() + 129, long128.end()));
    // A byte followed by '*' or '^' starts a literal of its own; '+' and '?'
    // don't look ahead, so they repeat the whole literal.
    EXPECT_EQ((Bytes{0x01, 0x01, 'x', 0x01, 0x03, 'a', '^', 'b'}), CodeOf("xa^b"));
    EXPECT_EQ((Bytes{0x01, 0x02, 'a', 'b', 0x01, 0x02, 'c', '^'}), CodeOf("abc^"));
    EXPECT_EQ((Bytes{0x01, 0x04, 'a', '^', '$', 'b'}), CodeOf("a^$b"));
}

TEST(PatternCompile, AnchorsByContext)
{
    EXPECT_EQ((Bytes{0x0C, 0x01, 0x02, 0x01, 0x01, 'a', 0x0D, 0x01}), CodeOf("\\(^a\\)"));
    EXPECT_EQ((Bytes{0x02, 0x02, 0x01, 0x01, 'a'}), CodeOf("^^a"));
    EXPECT_EQ((Bytes{0x01, 0x01, 'a', 0x01, 0x01, '\n', 0x02, 0x01, 0x01, 'b'}), CodeOf("a\n^b"));
    EXPECT_EQ((Bytes{0x01, 0x03, 'a', '$', 'b'}), CodeOf("a$b"));
    EXPECT_EQ((Bytes{0x01, 0x01, 'a', 0x03}), CodeOf("a$"));
    EXPECT_EQ((Bytes{0x0C, 0x01, 0x01, 0x01, 'a', 0x03, 0x0D, 0x01}), CodeOf("\\(a$\\)"));
    EXPECT_EQ((Bytes{0x01, 0x01, '$', 0x03}), CodeOf("$$"));
    EXPECT_EQ((Bytes{0x03, 0x01, 0x01, '\n'}), CodeOf("$\n"));
    EXPECT_EQ((Bytes{0x05, 0x06, 0x00, 0x01, 0x01, '$', 0x07, 0xF7, 0xFF}), CodeOf("$*"));

    Compiled both("^a$");
    EXPECT_EQ(1, both.pb.has_line_start);
    EXPECT_EQ(1, both.pb.has_line_end);
    Compiled neither("a^$b");
    EXPECT_EQ(0, neither.pb.has_line_start);
    EXPECT_EQ(0, neither.pb.has_line_end);
}

TEST(PatternCompile, Sets)
{
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET, {'a', 'b', 'c', 'x'})}), CodeOf("[a-cx]"));
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET_NOT, {'0', '1', '2'})}), CodeOf("[^0-2]"));
    EXPECT_EQ((Bytes{0x0A, 0x00}), CodeOf("[z-a]"));
    EXPECT_EQ((Bytes{0x0B, 0x00}), CodeOf("[^z-a]"));
    // ']' first is a member, '-' first or last is a member.
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET, {']'})}), CodeOf("[]]"));
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET_NOT, {']', 'a'})}), CodeOf("[^]a]"));
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET, {'-', 'a'})}), CodeOf("[-a]"));
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET, {'-', 'a'})}), CodeOf("[a-]"));
    // The only escape is \t; a backslash otherwise stands for itself.
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET, {'\t', 'x'})}), CodeOf("[\\tx]"));
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET, {'\\'}), {0x01, 0x01, ']'}}), CodeOf("[\\]]"));
    // Bytes from 0x80 up lie beyond a short map and keep a long one.
    EXPECT_EQ(32, CodeOf("[\xff]")[1]);
}

TEST(PatternCompile, SetsFoldBeforeTheyAreBuilt)
{
    Bytes expected =
        SetOp(OP_CHAR_SET, {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 'I', 'J', 'K', 'L', 'M',
                            'N', 'O', 'P', 'Q', 'R', 'S', 'T', 'U', 'V', 'W', 'X', 'Y', 'Z'});
    EXPECT_EQ(expected, CodeOf("[a-z]", true));
    EXPECT_EQ((Bytes{0x0A, 0x00}), CodeOf("[Z-a]", true));
    EXPECT_EQ(Join({SetOp(OP_CHAR_SET, {'Z', '[', '\\', ']', '^', '_', '`', 'a'})}),
              CodeOf("[Z-a]"));
}

TEST(PatternCompile, InvalidSetsAndEscapes)
{
    for (const char* pattern : {"[", "[a", "[a-", "a\\", "[]", "[^]", "[a-z", "[\\"})
        EXPECT_EQ(PATTERN_INVALID, ResultOf(pattern)) << pattern;
    EXPECT_EQ(PATTERN_OK, ResultOf("[]]"));
    EXPECT_EQ(PATTERN_OK, ResultOf("[^]]"));
}

TEST(PatternCompile, EscapesAreLiteralsFoldedAfterTheirMeaning)
{
    EXPECT_EQ((Bytes{0x01, 0x01, 'n'}), CodeOf("\\n"));
    EXPECT_EQ((Bytes{0x01, 0x01, 'N'}), CodeOf("\\n", true));
    EXPECT_EQ((Bytes{0x01, 0x01, '\t'}), CodeOf("\\t", true));
    EXPECT_EQ((Bytes{0x01, 0x03, '{', '0', '.'}), CodeOf("\\{\\0\\."));
    EXPECT_EQ(CodeOf("ABC"), CodeOf("abc", true));
    EXPECT_EQ((Bytes{0x01, 0x03, 'A', 'B', 'C'}), CodeOf("aBc", true));
}

TEST(PatternCompile, GroupsAndBackReferences)
{
    EXPECT_EQ(PATTERN_UNMATCHED_CLOSE, ResultOf("\\)"));
    EXPECT_EQ((Bytes{0x01, 0x01, '1'}), CodeOf("\\1"));
    EXPECT_EQ((Bytes{0x0C, 0x01, 0x01, 0x02, 'a', '1', 0x0D, 0x01}), CodeOf("\\(a\\1\\)"));
    EXPECT_EQ((Bytes{0x0C, 0x01, 0x01, 0x01, 'a', 0x0D, 0x01, 0x01, 0x01, '2'}),
              CodeOf("\\(a\\)\\2"));

    std::string open;
    for (int i = 0; i < 10; ++i)
        open += "\\(";
    EXPECT_EQ(PATTERN_UNMATCHED_OPEN, ResultOf(open + "a"));
    EXPECT_EQ(PATTERN_TOO_COMPLEX, ResultOf(open + "\\(a"));

    // The tenth group emits nothing; \9 refers to the ninth.
    Bytes ten = CodeOf("\\(a\\)\\(b\\)\\(c\\)\\(d\\)\\(e\\)\\(f\\)\\(g\\)\\(h\\)\\(i\\)\\(j\\)\\9");
    Bytes tail{0x0D, 0x09, 0x01, 0x01, 'j', 0x0E, 0x09};
    ASSERT_GE(ten.size(), tail.size());
    EXPECT_EQ(tail, Bytes(ten.end() - tail.size(), ten.end()));
}

TEST(PatternCompile, GroupRepeatLeavesTheStartOutside)
{
    EXPECT_EQ((Bytes{0x0C, 0x01, 0x08, 0x03, 0x00, 0x05, 0x09, 0x00, 0x01, 0x02, 'a', 'b', 0x0D,
                     0x01, 0x07, 0xF4, 0xFF}),
              CodeOf("\\(ab\\)+"));
}

} // namespace
