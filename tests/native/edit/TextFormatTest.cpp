#include "edit/TextFormat.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

int FindNonAnsi(const std::string& text)
{
    return FindNonAnsiByte(text.data(), text.size());
}

FileFormat Detect(const std::string& text, size_t& count)
{
    return DetectFormat(text.data(), text.size(), count);
}

// Detects and expands as loading does: into a block of its own when copy
// is set, else within the same block.
std::string Expand(const std::string& text, bool copy)
{
    size_t count = 0;
    FileFormat format = Detect(text, count);
    std::vector<char> block(text.size() + count + 1, '#');
    size_t length = 0;
    if (copy) {
        length = ExpandTerminators(text.data(), text.size(), count, format, block.data());
    } else {
        std::copy(text.begin(), text.end(), block.begin());
        length = ExpandTerminators(block.data(), text.size(), count, format);
    }
    EXPECT_EQ(text.size() + count, length);
    EXPECT_EQ('\0', block[length]);
    return std::string(block.data(), length);
}

std::string Contract(const std::string& text, FileFormat format)
{
    std::string out(text.size(), '#');
    size_t length = ContractTerminators(text.data(), text.size(), &out[0], format);
    out.resize(length);
    return out;
}

std::string ContractInPlace(std::string text, FileFormat format)
{
    text.resize(ContractTerminators(text.data(), text.size(), &text[0], format));
    return text;
}

TEST(NonAnsiCheck, RejectsControlBytesButNotWhiteSpaceOrHighBytes)
{
    EXPECT_EQ(-1, FindNonAnsi("a\tb\nc\vd\fe\rf g\x80\xff!"));
    EXPECT_EQ(3, FindNonAnsi(std::string("abc\0def", 7)));
    EXPECT_EQ(1, FindNonAnsi("a\x08\x1f"
                             "bc"));
    EXPECT_EQ(0, FindNonAnsi("\x1b[0m"));
    EXPECT_EQ(2, FindNonAnsi("ab\x0e\x1f"
                             "c"));
}

TEST(NonAnsiCheck, TestsTheFirst256BytesOnly)
{
    std::string text(1000, 'x');
    text[255] = '\x01';
    EXPECT_EQ(255, FindNonAnsi(text));
    text[255] = 'x';
    text[256] = '\x01';
    EXPECT_EQ(-1, FindNonAnsi(text));

    std::string exact(256, 'x');
    exact[255] = '\0';
    EXPECT_EQ(255, FindNonAnsi(exact));
}

TEST(NonAnsiCheck, ShortTextLeavesOutItsLastByte)
{
    EXPECT_EQ(-1, FindNonAnsi(std::string(1, '\0')));
    EXPECT_EQ(-1, FindNonAnsiByte("", 0));
    std::string ten(10, 'x');
    ten[9] = '\x02';
    EXPECT_EQ(-1, FindNonAnsi(ten));
    ten[8] = '\x02';
    EXPECT_EQ(8, FindNonAnsi(ten));

    std::string short255(255, 'x');
    short255[254] = '\x03';
    EXPECT_EQ(-1, FindNonAnsi(short255));
}

TEST(Detection, EmptyTextIsDos)
{
    size_t count = 5;
    EXPECT_EQ(FF_DOS, DetectFormat("", 0, count));
    EXPECT_EQ(0u, count);
}

TEST(Detection, SingleLineWithoutTerminatorHasNone)
{
    size_t count = 5;
    EXPECT_EQ(FF_NONE, Detect("int main() { return 0; }", count));
    EXPECT_EQ(0u, count);
}

TEST(Detection, CountsUniformTerminators)
{
    size_t count = 0;
    EXPECT_EQ(FF_UNIX, Detect("a\nb\n\nc", count));
    EXPECT_EQ(3u, count);
    EXPECT_EQ(FF_MAC, Detect("a\rb\r\rc\r", count));
    EXPECT_EQ(4u, count);
    EXPECT_EQ(FF_UNIX, Detect("\n", count));
    EXPECT_EQ(1u, count);
    EXPECT_EQ(FF_MAC, Detect("\r", count));
    EXPECT_EQ(1u, count);
}

TEST(Detection, FirstCrLfDecidesAndStops)
{
    size_t count = 9;
    EXPECT_EQ(FF_DOS, Detect("a\r\nb\nc\rd\n", count));
    EXPECT_EQ(0u, count);
    EXPECT_EQ(FF_MIXED, Detect("a\nb\nc\r\nd", count));
    EXPECT_EQ(2u, count);
    EXPECT_EQ(FF_MIXED, Detect("a\rb\r\n", count));
    EXPECT_EQ(1u, count);
}

TEST(Detection, ChangeOfKindIsMixed)
{
    size_t count = 0;
    EXPECT_EQ(FF_MIXED, Detect("a\nb\rc\n", count));
    EXPECT_EQ(1u, count);
    EXPECT_EQ(FF_MIXED, Detect("a\r\r\nb", count));
    EXPECT_EQ(1u, count);
    // LF then CR: a lone CR is no CR LF.
    EXPECT_EQ(FF_MIXED, Detect("a\n\rb", count));
    EXPECT_EQ(1u, count);
}

TEST(Detection, CrAtTheVeryEndIsALoneCr)
{
    const char text[] = "a\r\n";
    size_t count = 0;
    EXPECT_EQ(FF_MAC, DetectFormat(text, 2, count));
    EXPECT_EQ(1u, count);
}

TEST(Expansion, UnixAndMacBecomeCrLf)
{
    for (bool copy : {true, false}) {
        EXPECT_EQ("a\r\nbb\r\n\r\nc", Expand("a\nbb\n\nc", copy));
        EXPECT_EQ("\r\na\r\n", Expand("\na\n", copy));
        EXPECT_EQ("a\r\nb\r\n", Expand("a\rb\r", copy));
        EXPECT_EQ("\r\n\r\n", Expand("\r\r", copy));
    }
}

TEST(Expansion, TextWithoutTerminatorsIsCopied)
{
    for (bool copy : {true, false}) {
        EXPECT_EQ("", Expand("", copy));
        EXPECT_EQ("one line", Expand("one line", copy));
    }
}

TEST(Expansion, LargeTextInPlace)
{
    std::string text;
    std::string expected;
    for (int i = 0; i < 20000; ++i) {
        std::string line = "line " + std::to_string(i);
        text += line + "\n";
        expected += line + "\r\n";
    }
    text += "tail";
    expected += "tail";
    EXPECT_EQ(expected, Expand(text, false));
}

TEST(Contraction, CrLfAndLoneCrBecomeTheFormatsTerminator)
{
    EXPECT_EQ("a\nb\nc\n", Contract("a\r\nb\rc\r\n", FF_UNIX));
    EXPECT_EQ("a\rb\rc\r", Contract("a\r\nb\rc\r\n", FF_MAC));
    EXPECT_EQ("a\rb\rc\r", Contract("a\r\nb\rc\r\n", FF_MIXED));
    EXPECT_EQ("a\r\nb\rc", Contract("a\r\nb\rc", FF_DOS));
}

TEST(Contraction, LoneLfStays)
{
    EXPECT_EQ("a\rb\nc\r", Contract("a\r\nb\nc\r\n", FF_MAC));
    EXPECT_EQ("a\nb\nc", Contract("a\r\nb\nc", FF_UNIX));
    EXPECT_EQ("\n\r", Contract("\n\r\n", FF_MAC));
}

TEST(Contraction, AddsAndRemovesNoTerminatorAtTheEnd)
{
    EXPECT_EQ("a\nlast", Contract("a\r\nlast", FF_UNIX));
    EXPECT_EQ("", Contract("", FF_UNIX));
    EXPECT_EQ("a\n", Contract("a\r", FF_UNIX));
}

TEST(Contraction, CanWorkInPlace)
{
    EXPECT_EQ("x\ny\n\nz", ContractInPlace("x\r\ny\r\n\r\nz", FF_UNIX));
    EXPECT_EQ("x\ry", ContractInPlace("x\r\ny", FF_MAC));
}

TEST(RoundTrip, UnixAndMacFilesComeBackUnchanged)
{
    for (const std::string text : {"a\nb\n", "a\n\nb"})
        EXPECT_EQ(text, Contract(Expand(text, false), FF_UNIX));
    const std::string mac = "a\rb\r\rc";
    EXPECT_EQ(mac, Contract(Expand(mac, true), FF_MAC));
}

} // namespace
