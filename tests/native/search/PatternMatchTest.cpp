// The matcher and the search: first-character map, ranges in both
// directions, repeats, anchors, groups, word boundaries and the stack.
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

// Position and length of the first match forward over the whole text, or
// the negative search result with length 0.
struct Hit {
    int pos;
    int length;
    bool operator==(const Hit& o) const { return pos == o.pos && length == o.length; }
    bool operator!=(const Hit& o) const { return !(*this == o); }
};

std::ostream& operator<<(std::ostream& os, const Hit& h)
{
    return os << "{" << h.pos << ", " << h.length << "}";
}

Hit FindIn(const std::string& pattern, const std::string& text, bool fold = false)
{
    Compiled c(pattern, fold);
    EXPECT_EQ(PATTERN_OK, c.result) << pattern;
    MatchRegisters regs;
    int pos = c.Find(text, &regs);
    if (pos < 0)
        return Hit{pos, 0};
    return Hit{pos, regs.end[0] - regs.start[0]};
}

const Hit kNone{MATCH_NOT_FOUND, 0};

TEST(PatternMatch, FirstCharMap)
{
    Compiled lit("abc");
    EXPECT_EQ(1, lit.pb.map_valid);
    EXPECT_EQ(0, lit.pb.can_be_empty);
    EXPECT_EQ(1, lit.pb.first_char_map['a']);
    EXPECT_EQ(0, lit.pb.first_char_map['b']);

    Compiled starThen("a*b");
    EXPECT_EQ(0, starThen.pb.can_be_empty);
    EXPECT_EQ(1, starThen.pb.first_char_map['a']);
    EXPECT_EQ(1, starThen.pb.first_char_map['b']);

    Compiled dollar("$");
    EXPECT_EQ(2, dollar.pb.can_be_empty);
    EXPECT_EQ(1, dollar.pb.first_char_map['\r']);
    EXPECT_EQ(0, dollar.pb.first_char_map['\n']);

    // A '+' at the head, a trailing star and a back reference give up.
    EXPECT_EQ(1, Compiled("a+").pb.can_be_empty);
    EXPECT_EQ(1, Compiled("x*").pb.can_be_empty);
    EXPECT_EQ(1, Compiled("\\(a\\)*\\1").pb.can_be_empty);

    Compiled dot(".x");
    EXPECT_EQ(0, dot.pb.can_be_empty);
    EXPECT_EQ(0, dot.pb.first_char_map['\r']);
    EXPECT_EQ(1, dot.pb.first_char_map[0xE9]);

    Compiled notSet("[^a-y]");
    EXPECT_EQ(0, notSet.pb.first_char_map['b']);
    EXPECT_EQ(1, notSet.pb.first_char_map['z']);
    EXPECT_EQ(1, notSet.pb.first_char_map[0xFF]);

    Compiled folded("[a-c]x", true);
    EXPECT_EQ(1, folded.pb.first_char_map['B']);
    EXPECT_EQ(0, folded.pb.first_char_map['b']);

    Compiled anchored("^\\<ab");
    EXPECT_EQ(0, anchored.pb.can_be_empty);
    EXPECT_EQ(1, anchored.pb.first_char_map['a']);
}

TEST(PatternMatch, SearchBuildsAMissingMap)
{
    Compiled c("b");
    c.pb.map_valid = 0;
    memset(c.pb.first_char_map, 0, 256);
    EXPECT_EQ(2, c.Find("aab"));
    EXPECT_EQ(1, c.pb.map_valid);
}

TEST(PatternMatch, RepeatsAreGreedyAndTheLiteralLookAheadDecidesTheirReach)
{
    EXPECT_EQ((Hit{0, 0}), FindIn("a*", "baaa"));
    EXPECT_EQ((Hit{0, 0}), FindIn("x*", "abc"));
    EXPECT_EQ((Hit{0, 3}), FindIn(".*", "abc\r\ndef"));
    EXPECT_EQ((Hit{0, 5}), FindIn("[^x]*y", "a\r\nby"));
    EXPECT_EQ((Hit{0, 6}), FindIn("a.*c", "abcabc"));
    EXPECT_EQ((Hit{0, 1}), FindIn("ab?c", "c"));
    EXPECT_EQ((Hit{0, 3}), FindIn("ab?c", "abc"));
    EXPECT_EQ((Hit{1, 1}), FindIn("ab?c", "bc"));
    EXPECT_EQ((Hit{0, 3}), FindIn("ab+c", "abc"));
    EXPECT_EQ((Hit{0, 5}), FindIn("ab+c", "ababc"));
    EXPECT_EQ(kNone, FindIn("ab+c", "abbc"));
    EXPECT_EQ((Hit{0, 4}), FindIn("ab*c", "abbc"));
    EXPECT_EQ((Hit{2, 3}), FindIn("ab*c", "ababc"));
    EXPECT_EQ((Hit{3, 3}), FindIn("a+b", "xyzaab"));

    // "ab+" and "\(ab\)+" accept the same texts; "ab*" and "\(ab\)*" don't.
    for (const char* text : {"ab", "abab", "aab", "abb", "b", ""}) {
        EXPECT_EQ(FindIn("ab+", text), FindIn("\\(ab\\)+", text)) << text;
    }
    EXPECT_NE(FindIn("ab*", "abab"), FindIn("\\(ab\\)*", "abab"));
}

TEST(PatternMatch, LoopExitIsPatchedIntoTheCode)
{
    Compiled flat("a*b");
    EXPECT_EQ(1, flat.Find("xaaab"));
    EXPECT_EQ(OP_FINALIZE_JUMP, flat.pb.buffer[6]);

    Compiled kept(".*x");
    EXPECT_EQ(0, kept.Find("abxc"));
    EXPECT_EQ(OP_JUMP, kept.pb.buffer[4]);

    // A finalized loop keeps the stack flat however long the run.
    std::string run(100000, 'a');
    EXPECT_EQ(MATCH_NOT_FOUND, flat.Match(run, 0));
    EXPECT_EQ((Hit{0, 100001}), FindIn("a*b", run + "b"));
}

TEST(PatternMatch, LoopClosingGroupOneOrThreeReadsTheGroupNumber)
{
    EXPECT_EQ(kNone, FindIn("\\(a*\\)a", "aaa"));
    EXPECT_EQ((Hit{0, 3}), FindIn("a*a", "aaa"));
    EXPECT_EQ((Hit{0, 4}), FindIn("\\(x\\)\\(a*\\)a", "xaaa"));
    EXPECT_EQ(kNone, FindIn("\\(x\\)\\(y\\)\\(a*\\)a", "xyaaa"));
}

TEST(PatternMatch, EmptyLoopIterationsLeaveTheLoop)
{
    EXPECT_EQ((Hit{0, 0}), FindIn("\\(a*\\)*", "b"));
    EXPECT_EQ((Hit{0, 1}), FindIn("\\(a*\\)*b", "b"));
    EXPECT_EQ((Hit{0, 3}), FindIn("\\(a*\\)*b", "aab"));
    EXPECT_EQ((Hit{0, 1}), FindIn("\\(a*\\)+b", "b"));
    EXPECT_EQ((Hit{1, 2}), FindIn("\\(\\<\\)*ab", "xab"));
    EXPECT_EQ(kNone, FindIn("\\(a*\\)*c", "aaab"));
}

TEST(PatternMatch, AnchorsByContext)
{
    EXPECT_EQ((Hit{0, 1}), FindIn("^a", "ab"));
    EXPECT_EQ((Hit{3, 1}), FindIn("^b", "ab\nb"));
    EXPECT_EQ(kNone, FindIn("^b", "ab\rb"));
    EXPECT_EQ((Hit{4, 1}), FindIn("^b", "ab\r\nb"));
    EXPECT_EQ((Hit{1, 0}), FindIn("$", "x\r\n"));
    EXPECT_EQ((Hit{0, 1}), FindIn("a$", "a\r\nb"));
    EXPECT_EQ(kNone, FindIn("a$", "a\nb"));
    EXPECT_EQ((Hit{1, 3}), FindIn("a^b", "xa^b"));
    EXPECT_EQ((Hit{0, 2}), FindIn("^*a", "*a"));
    EXPECT_EQ(kNone, FindIn("^*a", "b*a"));
    EXPECT_EQ((Hit{0, 1}), FindIn("$$", "$"));
    EXPECT_EQ((Hit{2, 1}), FindIn("\\(^a\\)", "b\na"));
}

TEST(PatternMatch, ForwardRangeAndTheTryBeyondIt)
{
    Compiled dollar("$");
    EXPECT_EQ(3, dollar.Search("abc", 0, 3)); // the end of the text, past the range
    EXPECT_EQ(MATCH_NOT_FOUND, dollar.Search("ab\r\ncd", 0, 1));
    EXPECT_EQ(2, dollar.Search("ab\r\ncd", 0, 6));

    Compiled a("a");
    EXPECT_EQ(1, a.Search("xa", 0, 1)); // filter ran out: one try beyond
    EXPECT_EQ(MATCH_NOT_FOUND, a.Search("xxa", 0, 1));
    EXPECT_EQ(MATCH_NOT_FOUND, a.Search("a", 0, 0)); // a range of 0 tries nothing
    EXPECT_EQ(MATCH_NOT_FOUND, a.Search("a", 1, 5));

    // A literal head: the last position of the range was tried and failed,
    // so there is no try beyond.
    Compiled ab("ab");
    EXPECT_EQ(MATCH_NOT_FOUND, ab.Search("aab", 0, 1));
    EXPECT_EQ(1, ab.Search("xab", 0, 1));
    EXPECT_EQ(1, ab.Search("aab", 0, 2));

    // Without a map, the range is all there is.
    Compiled plus("b+");
    EXPECT_EQ(1, plus.pb.can_be_empty);
    EXPECT_EQ(MATCH_NOT_FOUND, plus.Search("ab", 0, 1));
    EXPECT_EQ(1, plus.Search("ab", 0, 2));
    Compiled wordEnd("\\>");
    EXPECT_EQ(1, wordEnd.pb.can_be_empty);
    EXPECT_EQ(MATCH_NOT_FOUND, wordEnd.Search("ab", 0, 2));
    EXPECT_EQ(2, wordEnd.Search("ab", 0, 3));
    Compiled optionalX("x*$");
    EXPECT_EQ(2, optionalX.pb.can_be_empty);
    EXPECT_EQ(2, optionalX.Search("ab", 0, 2));
    EXPECT_EQ(MATCH_NOT_FOUND, optionalX.Search("ab", 0, 1));
}

TEST(PatternMatch, BackwardSearchDownToZero)
{
    Compiled a("a");
    EXPECT_EQ(0, a.Search("abc", 2, -2));
    EXPECT_EQ(3, a.Search("abca", 3, -3));
    EXPECT_EQ(MATCH_NOT_FOUND, a.Search("abc", 0, 0));
    EXPECT_EQ(MATCH_NOT_FOUND, a.Search("abc", 2, -1)); // tries 2 only
    EXPECT_EQ(0, a.Search("abc", 2, -9));               // clipped at 0
    EXPECT_EQ(2, Compiled("ab").Search("abab", 4, -4));

    // From the end of the text, the end is tried without a map test.
    Compiled dollar("$");
    EXPECT_EQ(2, dollar.Search("ab", 2, -2));
    EXPECT_EQ(1, dollar.Search("a\r\nb", 2, -2));
    Compiled folded("B", true);
    EXPECT_EQ(2, folded.Search("abbc", 3, -3));
}

TEST(PatternMatch, SetsAndRanges)
{
    EXPECT_EQ((Hit{1, 3}), FindIn("[0-9][0-9]*", "x123y"));
    EXPECT_EQ(kNone, FindIn("[z-a]", "az-"));
    EXPECT_EQ((Hit{0, 1}), FindIn("[^z-a]", "\r"));
    EXPECT_EQ((Hit{0, 1}), FindIn("[^z-a]", "\n"));
    EXPECT_EQ((Hit{1, 1}), FindIn("[^a]", "a\n"));
    EXPECT_EQ((Hit{2, 1}), FindIn("[]x]", "ab]"));
    EXPECT_EQ((Hit{1, 2}), FindIn("[\\]]", "a\\]"));
    EXPECT_EQ((Hit{1, 1}), FindIn("[\\t]", "a\tb"));
    EXPECT_EQ((Hit{0, 1}), FindIn("[\xe0-\xef]", "\xe9"));
    EXPECT_EQ(kNone, FindIn("[a-c]", "\xe1\xe2"));
    // Folding: text bytes are folded before the test.
    EXPECT_EQ((Hit{0, 3}), FindIn("[a-z]*", "aBc", true));
    EXPECT_EQ((Hit{0, 1}), FindIn("[^a-z]", "1b", true));
    EXPECT_EQ((Hit{1, 1}), FindIn("[^a-z]", "B1", true));
    EXPECT_EQ(kNone, FindIn("[Z-a]", "Za_", true));
    EXPECT_EQ((Hit{1, 1}), FindIn("[Z-a]", "z_", false));
    EXPECT_EQ(kNone, FindIn("\xe9", "\xc9", true)); // bytes from 0x80 up never fold
}

TEST(PatternMatch, Folding)
{
    EXPECT_EQ((Hit{0, 3}), FindIn("ABC", "aBc", true));
    EXPECT_EQ((Hit{0, 3}), FindIn("abc", "aBc", true));
    EXPECT_EQ(kNone, FindIn("abc", "aBc", false));
    EXPECT_EQ((Hit{0, 2}), FindIn("\\(a\\)\\1", "aA", true));
    EXPECT_EQ(kNone, FindIn("\\(a\\)\\1", "aA", false));
    EXPECT_EQ((Hit{4, 6}), FindIn("return", "  x RETURN", true));
}

TEST(PatternMatch, GroupsAndRegisters)
{
    Compiled c("\\(ab\\)*");
    MatchRegisters regs;
    EXPECT_EQ(0, c.Find("xab", &regs));
    EXPECT_EQ(0, regs.end[0]);
    EXPECT_EQ(-1, regs.start[1]);
    EXPECT_EQ(-1, regs.end[1]);
    EXPECT_EQ(0, c.Find("ababx", &regs));
    EXPECT_EQ(0, regs.start[1]); // from the first iteration to the end of the last
    EXPECT_EQ(4, regs.end[1]);
    EXPECT_EQ(-1, regs.start[2]);

    Compiled two("\\(a\\)x\\(b*\\)");
    EXPECT_EQ(1, two.Find("zaxbb", &regs));
    EXPECT_EQ(1, regs.start[0]);
    EXPECT_EQ(5, regs.end[0]);
    EXPECT_EQ(1, regs.start[1]);
    EXPECT_EQ(2, regs.end[1]);
    EXPECT_EQ(3, regs.start[2]);
    EXPECT_EQ(5, regs.end[2]);

    // A failed search leaves the registers as they were.
    MatchRegisters kept = regs;
    EXPECT_EQ(MATCH_NOT_FOUND, two.Find("zzz", &regs));
    EXPECT_EQ(0, memcmp(&kept, &regs, sizeof regs));

    // Ten groups: the tenth matches but is not recorded, and \9 works.
    Compiled ten("\\(a\\)\\(b\\)\\(c\\)\\(d\\)\\(e\\)\\(f\\)\\(g\\)\\(h\\)\\(i\\)\\(j\\)\\9");
    EXPECT_EQ(1, ten.Find("-abcdefghiji", &regs));
    EXPECT_EQ(9, regs.start[9]);
    EXPECT_EQ(10, regs.end[9]);
    EXPECT_EQ(12, regs.end[0]);
    EXPECT_EQ(MATCH_NOT_FOUND, ten.Find("abcdefghijj"));
    // The contents of a group past the ninth repeat as a whole.
    std::string nine = "\\(1\\)\\(2\\)\\(3\\)\\(4\\)\\(5\\)\\(6\\)\\(7\\)\\(8\\)\\(9\\)";
    EXPECT_EQ((Hit{0, 15}), FindIn(nine + "a\\(bc\\)*d", "123456789abcbcd"));
    EXPECT_EQ((Hit{0, 11}), FindIn(nine + "a\\(bc\\)*d", "123456789ad"));
    EXPECT_EQ(kNone, FindIn(nine + "a\\(bc\\)*d", "123456789abd"));

    // A value recorded on an abandoned path stays.
    Compiled abandoned("\\(a\\)*ab");
    EXPECT_EQ(0, abandoned.Find("aab", &regs));
    EXPECT_EQ(3, regs.end[0]);
    EXPECT_EQ(0, regs.start[1]);
    EXPECT_EQ(2, regs.end[1]);
}

TEST(PatternMatch, BackReferences)
{
    EXPECT_EQ((Hit{0, 4}), FindIn("\\(ab\\)\\1", "abab"));
    EXPECT_EQ(kNone, FindIn("\\(ab\\)\\1", "abac"));
    EXPECT_EQ(kNone, FindIn("\\(ab\\)\\1", "aba")); // the text ends inside the copy
    EXPECT_EQ((Hit{1, 5}), FindIn("\\(a*\\)b\\1", "xaabaa"));
    // A group skipped on the path taken matches the empty string.
    EXPECT_EQ((Hit{0, 1}), FindIn("\\(a\\)?\\1x", "x"));
    EXPECT_EQ((Hit{0, 3}), FindIn("\\(a\\)?\\1x", "aax"));
    EXPECT_EQ((Hit{0, 2}), FindIn("\\(\\)\\1ab", "ab"));
}

TEST(PatternMatch, WordBoundariesAtBothEnds)
{
    EXPECT_EQ((Hit{0, 2}), FindIn("\\<ab", "ab"));
    EXPECT_EQ((Hit{0, 2}), FindIn("ab\\>", "ab"));
    EXPECT_EQ((Hit{0, 2}), FindIn("\\<ab\\>", "ab"));
    EXPECT_EQ(kNone, FindIn("\\<b", "ab"));
    EXPECT_EQ(kNone, FindIn("a\\>", "ab"));
    EXPECT_EQ((Hit{8, 2}), FindIn("\\<if\\>", "xif if_ if"));
    EXPECT_EQ(kNone, FindIn("\\<\xe9", "a \xe9")); // not a word byte

    Compiled start("\\<");
    EXPECT_EQ(MATCH_NOT_FOUND, start.Match("ab", 2)); // at the end of the text
    EXPECT_EQ(0, start.Match("ab", 0));               // before position 0 is no word byte
    Compiled end("\\>");
    EXPECT_EQ(MATCH_NOT_FOUND, end.Match("ab", 0));
    EXPECT_EQ(0, end.Match("ab", 2));
    EXPECT_EQ(2, end.Search("ab", 2, -2)); // backward from the end
    EXPECT_EQ(0, start.Search("ab", 2, -2));
}

TEST(PatternMatch, StopEndsConsumingButNotTheTextsEnd)
{
    Compiled ab("ab");
    EXPECT_EQ(MATCH_NOT_FOUND, MatchPattern(&ab.pb, "abc", 3, 0, 1, nullptr));
    EXPECT_EQ(2, MatchPattern(&ab.pb, "abc", 3, 0, 2, nullptr));
    Compiled aEnd("a\\>");
    EXPECT_EQ(MATCH_NOT_FOUND, MatchPattern(&aEnd.pb, "ab", 2, 0, 1, nullptr));
    Compiled aDollar("a$");
    EXPECT_EQ(MATCH_NOT_FOUND, MatchPattern(&aDollar.pb, "ab", 2, 0, 1, nullptr));
    EXPECT_EQ(1, MatchPattern(&aDollar.pb, "a\r", 2, 0, 1, nullptr));
}

TEST(PatternMatch, BytesPastTheCodeDifferFromEverything)
{
    // The loop closes group 1 at the very end: the byte two behind the group
    // number lies past the code.
    EXPECT_EQ((Hit{0, 3}), FindIn("\\(a*\\)", "aaa"));
    EXPECT_EQ((Hit{0, 3}), FindIn("\\([a-c]*\\)", "abcd"));
    EXPECT_EQ((Hit{0, 3}), FindIn("\\([^x]*\\)", "abc"));
}

TEST(PatternMatch, StackExhaustionOnALongRunThatKeepsItsPoints)
{
    EXPECT_EQ(MATCH_NOT_FOUND, Compiled(".*x").Find(std::string(4000, 'a')));
    EXPECT_EQ(MATCH_STACK_EXHAUSTED, Compiled(".*x").Find(std::string(5000, 'a')));
    EXPECT_EQ(0, Compiled(".*x").Find(std::string(4000, 'a') + "x"));
    std::string line(5000, 'a');
    EXPECT_EQ(MATCH_STACK_EXHAUSTED,
              Compiled(".*x").Search(line + "\r\nx", 0, static_cast<int>(line.size()) + 3));
}

TEST(PatternMatch, OutOfMemoryForTheStackIsExhaustion)
{
    Compiled c(".*x");
    g_reallocFailsAfter = 0;
    int result = c.Find(std::string(300, 'a'));
    g_reallocFailsAfter = -1;
    EXPECT_EQ(MATCH_STACK_EXHAUSTED, result);
}

TEST(PatternMatch, ASimpleMatchAllocatesNothing)
{
    Compiled c("\\<[a-z_]*_t\\>");
    g_reallocFailsAfter = 0;
    int result = c.Find(std::string(2000, ' ') + "size_t");
    g_reallocFailsAfter = -1;
    EXPECT_EQ(2000, result);
}

TEST(PatternMatch, PositionsInsideAFailedLeadingRunAreSkippedCorrectly)
{
    std::string text = "abc\r\nxyz\nq\r\nfoo";
    EXPECT_EQ((Hit{5, 3}), FindIn(".*z", text));
    EXPECT_EQ((Hit{12, 3}), FindIn(".*o", text));
    Compiled c(".*q$");
    EXPECT_EQ(9, c.Find(text));
    EXPECT_EQ(MATCH_NOT_FOUND, c.Search(text, 0, 8)); // 'z' at 7 tried last
    EXPECT_EQ(9, c.Search(text, 0, 9));               // LF at 8 unflagged: one try beyond

    EXPECT_EQ((Hit{8, 8}), FindIn("[A-Z][A-Z_]*(", "NULL && FOO_BAR(x)"));
    EXPECT_EQ((Hit{3, 3}), FindIn("[a-z][0-9]*x", "a12b3x")); // the byte ending the run
    EXPECT_EQ((Hit{0, 5}), FindIn("a[a-c]*d", "aaabd"));
    EXPECT_EQ((Hit{4, 3}), FindIn("b[a-c]*d", "bbcxbcd"));
    // The run from 0 ends at 3, just beyond a range of 2 from 1.
    Compiled setRun("[a-z][0-9]*x");
    EXPECT_EQ(3, setRun.Search("a12bx", 0, 3));               // '2' unflagged: one try beyond
    EXPECT_EQ(MATCH_NOT_FOUND, setRun.Search("a1cbx", 0, 3)); // 'c' tried last
}

} // namespace
