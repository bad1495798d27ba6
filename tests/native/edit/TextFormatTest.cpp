#include "edit/TextFormat.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace
{

std::string With(size_t size, size_t at, char byte)
{
    std::string text(size, 'x');
    text[at] = byte;
    return text;
}

TEST(NonAnsiCheck, FirstControlByteAmongTheFirst256ButNotTheLastOfAShortText)
{
    const std::tuple<std::string, int, const char*> rows[] = {
        // clang-format off
        {"a\tb\nc\vd\fe\rf g\x80\xff!", -1, "white space, high bytes"},
        {std::string("abc\0def", 7), 3, "NUL"}, {"a\010\037bc", 1, "BS"}, {"\x1b[0m", 0, "ESC"},
        {"ab\016\037c", 2, "SO"}, {With(1000, 255, '\x01'), 255, "last tested"},
        {With(1000, 256, '\x01'), -1, "beyond 256"}, {With(256, 255, '\0'), 255, "exactly 256"},
        {std::string(1, '\0'), -1, "one byte"}, {"", -1, "empty"},
        {With(10, 9, '\x02'), -1, "last of 10"}, {With(10, 8, '\x02'), 8, "last but one of 10"},
        {With(255, 254, '\x03'), -1, "last of 255"},
        // clang-format on
    };
    for (const auto& [text, expected, note] : rows) {
        SCOPED_TRACE(note);
        EXPECT_EQ(expected, FindNonAnsiByte(text.data(), text.size()));
    }
}

TEST(Detection, FirstCrLfDecidesElseTheKindsOfTerminators)
{
    const std::tuple<std::string, size_t, FileFormat, size_t> rows[] = {
        // clang-format off
        {"", 0, FF_DOS, 0}, {"int main() { return 0; }", 24, FF_NONE, 0},
        {"a\nb\n\nc", 6, FF_UNIX, 3}, {"a\rb\r\rc\r", 7, FF_MAC, 4}, {"\n", 1, FF_UNIX, 1},
        {"\r", 1, FF_MAC, 1}, {"a\r\nb\nc\rd\n", 9, FF_DOS, 0}, {"a\nb\nc\r\nd", 8, FF_MIXED, 2},
        {"a\rb\r\n", 5, FF_MIXED, 1}, {"a\nb\rc\n", 6, FF_MIXED, 1}, {"a\r\r\nb", 5, FF_MIXED, 1},
        {"a\n\rb", 4, FF_MIXED, 1}, // a lone CR after LF is no CR LF
        {"a\r\n", 2, FF_MAC, 1},    // a CR at the very end is a lone CR
        // clang-format on
    };
    for (const auto& [text, length, format, expectedCount] : rows) {
        SCOPED_TRACE(::testing::PrintToString(text));
        size_t count = 99;
        EXPECT_EQ(format, DetectFormat(text.data(), length, count));
        EXPECT_EQ(expectedCount, count);
    }
}

// Detects and expands as loading does: into a block of its own when copy
// is set, else within the same block.
std::string Expand(const std::string& text, bool copy)
{
    size_t count = 0;
    FileFormat format = DetectFormat(text.data(), text.size(), count);
    std::vector<char> block(text.size() + count + 1, '#');
    if (!copy)
        std::copy(text.begin(), text.end(), block.begin());
    size_t length = copy ? ExpandTerminators(text.data(), text.size(), count, format, block.data())
                         : ExpandTerminators(block.data(), text.size(), count, format);
    EXPECT_EQ(text.size() + count, length);
    EXPECT_EQ('\0', block[length]);
    return std::string(block.data(), length);
}

TEST(Expansion, UnixAndMacBecomeCrLfOthersAreCopied)
{
    const std::tuple<std::string, std::string> rows[] = {
        // clang-format off
        {"a\nbb\n\nc", "a\r\nbb\r\n\r\nc"}, {"\na\n", "\r\na\r\n"}, {"a\rb\r", "a\r\nb\r\n"},
        {"\r\r", "\r\n\r\n"}, {"", ""}, {"one line", "one line"},
        // clang-format on
    };
    for (const auto& [in, out] : rows) {
        for (bool copy : {true, false}) {
            SCOPED_TRACE(::testing::PrintToString(in.substr(0, 20)) + (copy ? " copy" : ""));
            EXPECT_EQ(out, Expand(in, copy));
        }
    }
}

std::string Contract(std::string text, FileFormat format, bool inPlace)
{
    std::string out = inPlace ? text : std::string(text.size(), '#');
    out.resize(ContractTerminators(inPlace ? &out[0] : text.data(), text.size(), &out[0], format));
    return out;
}

TEST(Contraction, CrLfAndLoneCrBecomeTheTerminatorLoneLfStaysInPlaceOrNot)
{
    const std::tuple<std::string, FileFormat, std::string> rows[] = {
        // clang-format off
        {"a\r\nb\rc\r\n", FF_UNIX, "a\nb\nc\n"}, {"a\r\nb\rc\r\n", FF_MAC, "a\rb\rc\r"},
        {"a\r\nb\rc\r\n", FF_MIXED, "a\rb\rc\r"}, {"a\r\nb\rc", FF_DOS, "a\r\nb\rc"},
        {"a\r\nb\nc\r\n", FF_MAC, "a\rb\nc\r"}, {"a\r\nb\nc", FF_UNIX, "a\nb\nc"},
        {"\n\r\n", FF_MAC, "\n\r"}, {"a\r\nlast", FF_UNIX, "a\nlast"}, {"", FF_UNIX, ""},
        {"a\r", FF_UNIX, "a\n"}, {"x\r\ny\r\n\r\nz", FF_UNIX, "x\ny\n\nz"},
        {"x\r\ny", FF_MAC, "x\ry"},
        // clang-format on
    };
    for (const auto& [in, format, out] : rows) {
        SCOPED_TRACE(::testing::PrintToString(in));
        EXPECT_EQ(out, Contract(in, format, false));
        EXPECT_EQ(out, Contract(in, format, true));
    }
    // Unix and Mac files come back unchanged from a load and a save.
    for (const std::string text : {"a\nb\n", "a\n\nb"})
        EXPECT_EQ(text, Contract(Expand(text, false), FF_UNIX, true));
    EXPECT_EQ("a\rb\r\rc", Contract(Expand("a\rb\r\rc", true), FF_MAC, false));
}

} // namespace
