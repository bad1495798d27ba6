#include "search/Replacement.h"
#include "PatternTestUtil.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

// A code page where 0xE9 and 0xC9 are a pair of letters.
unsigned char Upper(unsigned char c)
{
    return c == 0xe9 ? 0xc9 : AsciiCaseMap.upper(c);
}
unsigned char Lower(unsigned char c)
{
    return c == 0xc9 ? 0xe9 : AsciiCaseMap.lower(c);
}
const CaseMap kLatin = {Upper, Lower, nullptr};

// Appends the expansion for the first match of the pattern to "<".
std::string Expand(const char* pattern, const std::string& text, const char* replace,
                   const ClipboardText& clipboard = nullptr, const CaseMap& cases = AsciiCaseMap)
{
    Compiled compiled(pattern);
    MatchRegisters regs;
    EXPECT_LE(0, compiled.Find(text, &regs)) << pattern;
    std::string out = "<";
    ExpandReplacementText(replace, text.data(), regs, clipboard, cases, out);
    return out;
}

TEST(Replacement, MatchGroupsEscapesAndCaseSwitches)
{
    const char* const rows[][4] = {
        // clang-format off
        {"bcd", "abcde", "[&]", "<[bcd]"}, {"bcd", "abcde", "\\0\\0", "<bcdbcd"},
        {"b\\(c\\)\\(d\\)", "abcde", "\\2\\1-\\3\\9", "<dc-"}, {"a\\(x\\)*b", "ab", "[\\1]", "<[]"},
        {"bcd", "abcde", "\\U&\\E!", "<BCD!"}, {"hello", "hello", "\\u&", "<Hello"},
        {"ABC", "ABC", "\\l&", "<aBC"}, {"ABC", "ABC", "\\L&\\e&", "<abcABC"},
        {"abc", "abc", "\\Ux\\uy&", "<XYabc"}, {"ABC", "ABC", "\\U\\l&", "<aBC"},
        {"abc", "abc", "\\Uaz@[`{1_-&", "<AZ@[`{1_-ABC"}, {"AZ", "AZ", "\\L@[`{&", "<@[`{az"},
        {"a", "a", "\\u\\n&", "<\r\na"}, {"a", "a", "x\\ty\\nz", "<x\ty\r\nz"},
        {"a", "a", "x\\", "<x\\"}, {"a", "a", "\\&\\\\\\q", "<&\\q"}, {"a", "a", "", "<"},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(row[3], Expand(row[0], row[1], row[2])) << row[0] << " / " << row[2];
}

TEST(Replacement, ClipboardOnlyForBackslashPAndHighBytesThroughTheCaseMap)
{
    int asked = 0;
    const ClipboardText clipboard = [&asked](std::string& out) {
        out += "c" + std::to_string(++asked);
    };
    EXPECT_EQ("<[c1]a", Expand("a", "a", "[\\p]&", clipboard));
    EXPECT_EQ("<C2a", Expand("a", "a", "\\U\\p\\E&", clipboard));
    EXPECT_EQ("<p", Expand("a", "a", "p", clipboard));
    EXPECT_EQ("<a", Expand("a", "a", "\\p&"));
    EXPECT_EQ("<\xc9T\xc9", Expand("\xe9t\xe9", "\xe9t\xe9", "\\U&", nullptr, kLatin));
    EXPECT_EQ("<\xe9T\xe9", Expand("\xe9t\xe9", "\xe9t\xe9", "\\U&"));
    EXPECT_EQ("<\xe9", Expand("x", "x", "\\l\xc9", nullptr, kLatin));
}

TEST(Replacement, AsciiCaseMapKnowsUpperCaseLetters)
{
    for (const char* p = "AMZ"; *p; ++p)
        EXPECT_TRUE(AsciiCaseMap.isUpper(*p)) << *p;
    for (const char* p = "@[amz`{0\xc9"; *p; ++p)
        EXPECT_FALSE(AsciiCaseMap.isUpper(static_cast<unsigned char>(*p))) << *p;
}

} // namespace
