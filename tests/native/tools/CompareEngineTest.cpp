// The compare's listing and script, and the extraction's scan, over texts
// read through the C runtime as the tools read their files.
#include "tools/CompareEngine.h"
#include "search/Pattern.h"
#include "tools/ExtractScan.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <sstream>
#include <vector>

namespace
{

class TextInput : public CompareInput, public ExtractInput
{
  public:
    explicit TextInput(std::string text)
        : m_text(std::move(text)), m_file(fmemopen(&m_text[0], m_text.size(), "r"))
    {
    }
    ~TextInput() override { m_file&& fclose(m_file); }
    bool ReadPiece(char* buffer, int size) override
    {
        return m_file && fgets(buffer, size, m_file);
    }
    int Read(char* buffer, int size) override
    {
        return m_file ? static_cast<int>(fread(buffer, 1, static_cast<size_t>(size), m_file)) : 0;
    }

  private:
    std::string m_text;
    FILE* m_file;
};

// Keeps what is written; a yield may answer "stop" at its nth call.
class Listing : public CompareOutput
{
  public:
    bool Poll() override { return ++yields != stopAt; }
    void Write(const std::string& line) override { text += line; }
    std::string text;
    int yields = 0, stopAt = -1;
};

std::string Compare(const std::string& a, const std::string& b, int mode = CCompare::MODE_LISTING)
{
    TextInput first(a), second(b);
    Listing out;
    CCompare(out, mode).Run(first, second);
    return out.text;
}

TEST(CompareEngine, ListingsOfTheEdgeCases)
{
    const std::string eight = "1\n2\n3\n4\n5\n6\n7\n8\n", x127(127, 'x'), y127(127, 'y');
    const struct {
        std::string first, second, listing;
    } rows[] = {
        {"a\nb\nc\n", "a\nb\nc\n", ""},
        {"a\nb\n", "a\nb\n", "1,2c1,2\r\n< a\r\n< b\r\n---\r\n> a\r\n> b\r\n"},
        {eight, "1\n2\n3\n4\nX\n6\n7\n8\n", "5c5\r\n< 5\r\n---\r\n> X\r\n"},
        {eight, "1\n2\n3\n6\n7\n8\n", "4,5d4\r\n< 4\r\n< 5\r\n"},
        {"1\n2\n3\n4\n", "1\n2\n3\n4\n5\n6\n", "4a5,6\r\n> 5\r\n> 6\r\n"},
        {eight, "1\n2\n3\n4\nA\nB\n5\n6\n7\n8\n", "5a5,6\r\n> A\r\n> B\r\n"},
        {eight, "1\n2\n3\nA\nB\nC\n6\n7\n8\n",
         "4,5c4,6\r\n< 4\r\n< 5\r\n---\r\n> A\r\n> B\r\n> C\r\n"},
        {"", "a\nb\n", "0a1,2\r\n> a\r\n> b\r\n"},
        // the equal lines at the very end belong to the difference
        {"1\n2\n3\n4\n5\n", "1\n2\n3\nX\n5\n", "4,5c4,5\r\n< 4\r\n< 5\r\n---\r\n> X\r\n> 5\r\n"},
        // one equal line does not part two changes
        {eight + "9\n", "1\n2\n3\nX\n5\nY\n7\n8\n9\n",
         "4,6c4,6\r\n< 4\r\n< 5\r\n< 6\r\n---\r\n> X\r\n> 5\r\n> Y\r\n"},
        // a last line without its end differs from one with it
        {"1\n2\n3\n4", "1\n2\n3\n4\n", "4c4\r\n< 4\r\n---\r\n> 4\r\n"},
        // pieces of 127 bytes count as lines; 79 and 200 bytes share a class
        {"1\n2\n3\n" + std::string(300, 'x') + "\n", "1\n2\n3\n",
         "4,6d4\r\n< " + x127 + "\r\n< " + x127 + "\r\n< " + std::string(46, 'x') + "\r\n"},
        {"1\n2\n3\n" + std::string(79, 'y') + "\n", "1\n2\n3\n" + std::string(200, 'y') + "\n",
         "4c4,5\r\n< " + std::string(79, 'y') + "\r\n---\r\n> " + y127 + "\r\n> " +
             std::string(73, 'y') + "\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.listing, Compare(row.first, row.second)) << row.first << "|" << row.second;
    // The script inserts before the first file's line and deletes from it.
    EXPECT_EQ("4a2\r\nA\r\nB\r\n",
              Compare(eight + "9\n", "1\n2\n3\nA\nB\n4\n5\n6\n7\n8\n9\n", CCompare::MODE_SCRIPT));
    EXPECT_EQ("4a1\r\nX\r\n4d2\r\n",
              Compare(eight, "1\n2\n3\nX\n6\n7\n8\n", CCompare::MODE_SCRIPT));
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line.substr(0, line.find('\r')));
    return lines;
}

// Applies a listing to the first file. The second file's numbers tell how
// many equal lines come before each difference; the first file's numbers
// and the removed lines are checked against what they name.
std::vector<std::string> ApplyListing(const std::string& listing, std::vector<std::string> first)
{
    std::vector<std::string> result, lines = Lines(listing);
    size_t used = 0, at = 0;
    while (at < lines.size()) {
        const std::string& header = lines[at++];
        const size_t letter = header.find_first_of("acd");
        const unsigned a1 = std::stoul(header), b1 = std::stoul(header.substr(letter + 1));
        while (result.size() + 1 < b1)
            result.push_back(first.at(used++));
        EXPECT_TRUE(a1 == used + 1 || (header[letter] == 'a' && a1 == used)) << header;
        for (; at < lines.size() && lines[at][0] == '<'; ++at)
            EXPECT_EQ(first.at(used++), lines[at].substr(2)) << header;
        at += at < lines.size() && lines[at] == "---";
        for (; at < lines.size() && lines[at][0] == '>'; ++at)
            result.push_back(lines[at].substr(2));
    }
    result.insert(result.end(), first.begin() + static_cast<long>(used), first.end());
    return result;
}

// A heap with room for twelve lines.
class ShortHeapCompare : public CCompare
{
  public:
    using CCompare::CCompare;

  protected:
    void* AllocateLine(size_t bytes) override
    {
        return m_live < 12 ? (++m_live, CCompare::AllocateLine(bytes)) : nullptr;
    }
    void FreeLine(void* line) override { --m_live, CCompare::FreeLine(line); }
    int m_live = 0;
};

// Random files, random edits: the listing leads from the first file to the
// second, on a short heap too.
TEST(CompareEngine, TheListingTurnsTheFirstFileIntoTheSecond)
{
    std::mt19937 random(1234);
    for (int round = 0; round < 300; ++round) {
        std::vector<std::string> first, second;
        for (int i = static_cast<int>(random() % 60); i > 0; --i)
            first.push_back("line " + std::to_string(random() % 40));
        for (const std::string& line : first) {
            const unsigned roll = random() % 10;
            for (unsigned n = roll == 2 ? random() % 4 + 1 : 0; n; --n) // added before it
                second.push_back("added " + std::to_string(random() % 1000));
            if (roll == 1)
                second.push_back("new " + std::to_string(random() % 1000));
            else if (roll != 0)
                second.push_back(line);
        }
        std::string a, b;
        for (const std::string& line : first)
            a += line + "\n";
        for (const std::string& line : second)
            b += line + "\n";
        EXPECT_EQ(second, ApplyListing(Compare(a, b), first)) << round;
        TextInput in0(a), in1(b);
        Listing out;
        ShortHeapCompare(out, CCompare::MODE_LISTING).Run(in0, in1);
        EXPECT_EQ(second, ApplyListing(out.text, first)) << round;
    }
}

// A refused yield drops the rest of that difference and the compare goes
// on; a cancel leaves as the exception; no heap with nothing pending fails.
TEST(CompareEngine, YieldsCancelsAndAnEmptyHeap)
{
    std::string a, b;
    for (int i = 0; i < 40; ++i) {
        a += "same " + std::to_string(i) + "\n";
        b += (i == 10 ? "other\n" : "") + ("same " + std::to_string(i)) + "\n";
    }
    a += "a\nb\nc\nd\ne\nf\ng\nh\n";
    TextInput in0(a), in1(b);
    Listing out;
    out.stopAt = 5; // the second difference's header, first and seventh lines
    CCompare(out, CCompare::MODE_LISTING).Run(in0, in1);
    EXPECT_EQ("11a11\r\n> other\r\n41,48d42\r\n< a\r\n< b\r\n< c\r\n< d\r\n< e\r\n< f\r\n",
              out.text);

    struct Cancelling : Listing { // at the second difference's header
        bool Poll() override { return ++yields < 3 ? true : throw 7; }
    } cancelling;
    struct NoHeap : CCompare {
        using CCompare::CCompare;
        void* AllocateLine(size_t) override { return nullptr; }
    };
    TextInput again0(a), again1(b), one0("a\n"), one1("a\n");
    EXPECT_THROW(CCompare(cancelling, CCompare::MODE_LISTING).Run(again0, again1), int);
    EXPECT_EQ("11a11\r\n> other\r\n", cancelling.text);
    EXPECT_THROW(NoHeap(out, CCompare::MODE_LISTING).Run(one0, one1), std::bad_alloc);
}

class Extracted : public ExtractOutput
{
  public:
    void Poll() override { ++yields; }
    void Write(const std::string& line) override { text += line; }
    std::string text;
    int yields = 0;
};

std::string Extract(const std::string& bytes, const char* filter = "[ -~][ -~][ -~][ -~]+",
                    int* yields = nullptr)
{
    PatternBuffer pattern;
    EXPECT_EQ(PATTERN_OK, CompilePattern(filter, static_cast<int>(strlen(filter)), &pattern));
    BuildFirstCharMap(&pattern);
    TextInput input(bytes);
    Extracted out;
    EXPECT_TRUE(ExtractFromFile("f.bin", input, &pattern, out));
    free(pattern.buffer);
    if (yields)
        *yields = out.yields;
    return out.text;
}

TEST(ExtractScan, RunsPiecesAndOffsets)
{
    const std::string run(300, 'r'), bin("\x01\x02\x03", 3);
    const struct {
        std::string bytes;
        const char* filter;
        std::string lines;
    } rows[] = {
        {bin + run, "[ -~][ -~][ -~][ -~]+",
         "f.bin(0x0003): " + run.substr(0, 128) + "\r\nf.bin(0x0083): " + run.substr(0, 128) +
             "\r\nf.bin(0x0103): " + run.substr(0, 44) + "\r\n"},
        {std::string(26, '\0') + "text\x01" + "abc", "[ -~][ -~][ -~][ -~]+",
         "f.bin(0x001a): text\r\n"},
        {bin + "ends", "[ -~][ -~][ -~][ -~]+", "f.bin(0x0003): ends\r\n"},
        {"abc", "[ -~][ -~][ -~][ -~]+", ""},
        {"abc", "q*", ""}, // empty matches only
        {"aqqb", "q*", "f.bin(0x0001): qq\r\n"},
        {std::string("ab\0cd", 5) + "x", "[^x]+", "f.bin(0x0000): ab\r\n"},
        {"hello", "^l", "f.bin(0x0002): l\r\nf.bin(0x0003): l\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.lines, Extract(row.bytes, row.filter)) << row.lines;
}

// Refills keep the offsets; a run across a refill point is found whole
// within the margin and is cut at the end of the loaded bytes beyond it.
TEST(ExtractScan, RefillsKeepOffsetsAndCutRunsAtTheLoadedEnd)
{
    std::string bytes(EXTRACT_WINDOW + EXTRACT_MARGIN - 10, '\x01');
    bytes += "across the refill";
    bytes.resize(3 * EXTRACT_WINDOW, '\x02');
    int yields = 0;
    EXPECT_EQ("f.bin(0x83f6): across the refill\r\nf.bin(0x18000): last\r\n",
              Extract(bytes + "last", "[ -~][ -~][ -~][ -~]+", &yields));
    EXPECT_EQ(1 + 2 + 2, yields); // the start, the two hits, the two refills

    // 1500 bytes of z from 0x7f9c: 1124 of them are loaded at first.
    const std::string found =
        Extract(std::string(EXTRACT_WINDOW - 100, '\x01') + std::string(1500, 'z'), "z+");
    std::string offsets;
    for (size_t at = 0; (at = found.find("(0x", at)) != std::string::npos; at += 3)
        offsets += found.substr(at + 3, 4) + " ";
    EXPECT_EQ("7f9c 801c 809c 811c 819c 821c 829c 831c 839c 8400 8480 8500 ", offsets);
}

} // namespace
