#include "tools/ExtractScan.h"
#include "search/Pattern.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

class BytesInput : public ExtractInput
{
  public:
    explicit BytesInput(std::string bytes) : m_bytes(std::move(bytes)) {}
    int Read(char* buffer, int size) override
    {
        const size_t n = std::min(static_cast<size_t>(size), m_bytes.size() - m_pos);
        m_bytes.copy(buffer, n, m_pos);
        m_pos += n;
        return static_cast<int>(n);
    }

  private:
    std::string m_bytes;
    size_t m_pos = 0;
};

class Lines : public ExtractOutput
{
  public:
    void Yield() override { ++yields; }
    void Write(const std::string& line) override { text += line; }
    std::string text;
    int yields = 0;
};

struct Filter {
    explicit Filter(const char* text)
    {
        EXPECT_EQ(PATTERN_OK, CompilePattern(text, static_cast<int>(strlen(text)), &pattern));
        BuildFirstCharMap(&pattern);
    }
    ~Filter() { free(pattern.buffer); }
    PatternBuffer pattern;
};

std::string Extract(const std::string& bytes, const char* filter = "[ -~][ -~][ -~][ -~]+",
                    int* yields = nullptr)
{
    Filter compiled(filter);
    BytesInput input(bytes);
    Lines out;
    EXPECT_TRUE(ExtractFromFile("f.bin", input, &compiled.pattern, out));
    if (yields)
        *yields = out.yields;
    return out.text;
}

TEST(ExtractScan, RunsAndPiecesAndOffsets)
{
    const std::string run300(300, 'r'), bin("\x01\x02\x03", 3);
    const struct {
        std::string bytes;
        const char* filter;
        std::string lines;
    } rows[] = {
        {bin + run300, nullptr,
         "f.bin(0x0003): " + run300.substr(0, 128) + "\r\nf.bin(0x0083): " + run300.substr(0, 128) +
             "\r\nf.bin(0x0103): " + run300.substr(0, 44) + "\r\n"},
        {std::string(26, '\0') + "text\x01" + "abc", nullptr, "f.bin(0x001a): text\r\n"},
        {"abc", nullptr, ""},
        {bin + "ends", nullptr, "f.bin(0x0003): ends\r\n"},
        {"abc", "q*", ""}, // empty matches only
        {"aqqb", "q*", "f.bin(0x0001): qq\r\n"},
        {std::string("ab\0cd", 5) + "x", "[^x]+", "f.bin(0x0000): ab\r\n"},
        {"hello", "^l", "f.bin(0x0002): l\r\nf.bin(0x0003): l\r\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.lines);
        EXPECT_EQ(row.lines, row.filter ? Extract(row.bytes, row.filter) : Extract(row.bytes));
    }
}

// Refills keep the offsets; a run across a refill point is found whole while
// it stays within the margin, and is cut at the end of the loaded bytes
// when it runs beyond.
TEST(ExtractScan, RefillsKeepOffsetsAndCutRunsAtTheLoadedEnd)
{
    std::string bytes(EXTRACT_WINDOW + EXTRACT_MARGIN - 10, '\x01');
    bytes += "across the refill";
    bytes.resize(3 * EXTRACT_WINDOW, '\x02');
    bytes += "last";
    int yields = 0;
    EXPECT_EQ("f.bin(0x83f6): across the refill\r\nf.bin(0x18000): last\r\n",
              Extract(bytes, "[ -~][ -~][ -~][ -~]+", &yields));
    EXPECT_EQ(1 + 2 + 2, yields); // the start, the two hits, the two refills

    // 1500 bytes of z from 0x7f9c: 1124 of them are loaded at first.
    std::string runs(EXTRACT_WINDOW - 100, '\x01');
    runs += std::string(1500, 'z');
    const std::string found = Extract(runs, "z+");
    std::string offsets;
    for (size_t at = 0; (at = found.find("(0x", at)) != std::string::npos; at += 3)
        offsets += found.substr(at + 3, 4) + " ";
    EXPECT_EQ("7f9c 801c 809c 811c 819c 821c 829c 831c 839c 8400 8480 8500 ", offsets);
}

} // namespace
