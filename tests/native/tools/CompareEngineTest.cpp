#include "tools/CompareEngine.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <sstream>
#include <vector>

namespace
{

// A text read as fgets reads it.
class TextInput : public CompareInput
{
  public:
    explicit TextInput(std::string text) : m_text(std::move(text)) {}
    bool ReadPiece(char* buffer, int size) override
    {
        if (m_pos >= m_text.size())
            return false;
        size_t n = 0;
        while (n + 1 < static_cast<size_t>(size) && m_pos < m_text.size()) {
            buffer[n] = m_text[m_pos++];
            if (buffer[n++] == '\n')
                break;
        }
        buffer[n] = '\0';
        return true;
    }

  private:
    std::string m_text;
    size_t m_pos = 0;
};

// Keeps the listing; a yield may answer "stop" after a number of calls.
class Listing : public CompareOutput
{
  public:
    bool Yield() override { return ++yields != stopAt; }
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

// The listing's forms, and where being back in step takes three lines.
TEST(CompareEngine, ListingsOfTheEdgeCases)
{
    const std::string eight = "1\n2\n3\n4\n5\n6\n7\n8\n";
    const struct {
        std::string first, second, listing;
    } rows[] = {
        {"a\nb\nc\n", "a\nb\nc\n", ""},
        {"a\nb\n", "a\nb\n", "1,2c1,2\r\n< a\r\n< b\r\n---\r\n> a\r\n> b\r\n"},
        {eight, "1\n2\n3\n4\nX\n6\n7\n8\n", "5c5\r\n< 5\r\n---\r\n> X\r\n"},
        {eight, "1\n2\n3\n6\n7\n8\n", "4,5d4\r\n< 4\r\n< 5\r\n"},
        {"1\n2\n3\n4\n", "1\n2\n3\n4\n5\n6\n", "4a5,6\r\n> 5\r\n> 6\r\n"},
        {eight, "1\n2\n3\n4\nA\nB\nC\n5\n6\n7\n8\n", "5a5,7\r\n> A\r\n> B\r\n> C\r\n"},
        {eight, "1\n2\n3\nA\nB\nC\n6\n7\n8\n",
         "4,5c4,6\r\n< 4\r\n< 5\r\n---\r\n> A\r\n> B\r\n> C\r\n"},
        {"", "a\nb\n", "0a1,2\r\n> a\r\n> b\r\n"},
        {"a\nb\nc\n", "", "1,3d1\r\n< a\r\n< b\r\n< c\r\n"},
        // the equal lines at the very end belong to the difference
        {"1\n2\n3\n4\n5\n", "1\n2\n3\nX\n5\n", "4,5c4,5\r\n< 4\r\n< 5\r\n---\r\n> X\r\n> 5\r\n"},
        // one equal line does not part two changes
        {eight + "9\n", "1\n2\n3\nX\n5\nY\n7\n8\n9\n",
         "4,6c4,6\r\n< 4\r\n< 5\r\n< 6\r\n---\r\n> X\r\n> 5\r\n> Y\r\n"},
        // a last line without its end differs from one with it
        {"1\n2\n3\n4", "1\n2\n3\n4\n", "4c4\r\n< 4\r\n---\r\n> 4\r\n"},
        // pieces of 127 bytes count as lines; 79 and 200 bytes share a class
        {"1\n2\n3\n" + std::string(300, 'x') + "\n", "1\n2\n3\n",
         "4,6d4\r\n< " + std::string(127, 'x') + "\r\n< " + std::string(127, 'x') + "\r\n< " +
             std::string(46, 'x') + "\r\n"},
        {"1\n2\n3\n" + std::string(79, 'y') + "\n", "1\n2\n3\n" + std::string(200, 'y') + "\n",
         "4c4,5\r\n< " + std::string(79, 'y') + "\r\n---\r\n> " + std::string(127, 'y') + "\r\n> " +
             std::string(73, 'y') + "\r\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first + "|" + row.second);
        EXPECT_EQ(row.listing, Compare(row.first, row.second));
    }
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// Applies a listing to the first file's lines. The second file's numbers
// tell how many equal lines stand before each difference; the first file's
// numbers and the removed lines are checked against what they name.
std::vector<std::string> ApplyListing(const std::string& listing, std::vector<std::string> first)
{
    std::vector<std::string> result, lines = Lines(listing);
    size_t used = 0, made = 0, at = 0;
    while (at < lines.size()) {
        unsigned a1 = 0, a2 = 0, b1 = 0, b2 = 0;
        char kind = 0;
        const std::string& header = lines[at++];
        EXPECT_GE(sscanf(header.c_str(), "%u%c", &a1, &kind), 2) << header;
        if (kind == ',')
            sscanf(header.c_str(), "%u,%u%c%u", &a1, &a2, &kind, &b1);
        else
            sscanf(header.c_str(), "%u%c%u", &a1, &kind, &b1);
        const char* comma = strchr(strpbrk(header.c_str(), "acd"), ',');
        b2 = comma ? static_cast<unsigned>(atoi(comma + 1)) : b1;
        for (; made + 1 < b1; ++made)
            result.push_back(first.at(used++));
        if (kind == 'a')
            EXPECT_TRUE(a1 == used || a1 == used + 1) << header;
        else
            EXPECT_EQ(used + 1, a1) << header;
        for (; at < lines.size() && lines[at].compare(0, 2, "< ") == 0; ++at)
            EXPECT_EQ(first.at(used++) + "\r", lines[at].substr(2)) << header;
        if (at < lines.size() && lines[at] == "---\r")
            ++at;
        for (; at < lines.size() && lines[at].compare(0, 2, "> ") == 0; ++at, ++made)
            result.push_back(lines[at].substr(2, lines[at].size() - 3));
        if (kind != 'd') {
            EXPECT_EQ(b2 - b1 + 1, made - b1 + 1) << header;
        }
    }
    result.insert(result.end(), first.begin() + static_cast<long>(used), first.end());
    return result;
}

// The edit script inserts before and deletes from the first file's numbers.
std::vector<std::string> ApplyScript(const std::string& script, std::vector<std::string> first)
{
    std::vector<std::string> result, lines = Lines(script);
    size_t used = 0, at = 0;
    while (at < lines.size()) {
        unsigned place = 0, count = 0;
        char kind = 0;
        EXPECT_EQ(3, sscanf(lines[at++].c_str(), "%u%c%u", &place, &kind, &count));
        for (; used + 1 < place; ++used)
            result.push_back(first.at(used));
        for (unsigned i = 0; i < count; ++i, ++at)
            if (kind == 'a')
                result.push_back(lines.at(at).substr(0, lines[at].size() - 1));
            else
                ++used, --at;
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

// Random files, random edits: the listing and the script both lead from the
// first file to the second, a short heap too.
TEST(CompareEngine, ListingAndScriptTurnTheFirstFileIntoTheSecond)
{
    std::mt19937 random(1234);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        std::vector<std::string> first, second;
        const int count = static_cast<int>(random() % 60);
        for (int i = 0; i < count; ++i)
            first.push_back("line " + std::to_string(random() % 40));
        for (size_t i = 0; i < first.size(); ++i) {
            switch (random() % 10) {
            case 0: // deleted
                break;
            case 1: // changed
                second.push_back("new " + std::to_string(random() % 1000));
                break;
            case 2: // lines added before it
                for (unsigned n = random() % 4 + 1; n; --n)
                    second.push_back("added " + std::to_string(random() % 1000));
                second.push_back(first[i]);
                break;
            default:
                second.push_back(first[i]);
            }
        }
        std::string a, b;
        for (const std::string& line : first)
            a += line + "\n";
        for (const std::string& line : second)
            b += line + "\n";
        EXPECT_EQ(second, ApplyListing(Compare(a, b), first));
        EXPECT_EQ(second, ApplyScript(Compare(a, b, CCompare::MODE_SCRIPT), first));
        TextInput in0(a), in1(b);
        Listing out;
        ShortHeapCompare(out, CCompare::MODE_LISTING).Run(in0, in1);
        EXPECT_EQ(second, ApplyListing(out.text, first));
    }
}

// A refused yield drops the rest of that difference's lines, and the
// compare goes on; a cancel leaves as the exception, with what was written.
TEST(CompareEngine, YieldsStopTheWritingAndCancelsLeaveWithTheListingSoFar)
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

    class Cancelling : public Listing
    {
        bool Yield() override { throw 7; }
    } cancelling;
    TextInput again0(a), again1(b);
    EXPECT_THROW(CCompare(cancelling, CCompare::MODE_LISTING).Run(again0, again1), int);
    EXPECT_EQ("", cancelling.text);
}

TEST(CompareEngine, AShortHeapWithNothingPendingFails)
{
    class NoHeap : public CCompare
    {
      public:
        using CCompare::CCompare;
        void* AllocateLine(size_t) override { return nullptr; }
    };
    TextInput in0("a\n"), in1("a\n");
    Listing out;
    EXPECT_THROW(NoHeap(out, CCompare::MODE_LISTING).Run(in0, in1), std::bad_alloc);
}

} // namespace
