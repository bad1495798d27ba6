#include "views/FixedRecordFile.h"
#include "views/LineFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

// A file in memory; a length of its own stands for files too large to make.
class MemorySource : public CByteSource
{
  public:
    explicit MemorySource(std::string bytes, uint64_t length = 0)
        : m_bytes(std::move(bytes)), m_length(length ? length : m_bytes.size())
    {
    }
    uint64_t GetLength() override { return m_length; }
    uint32_t GetPosition() override { return m_pos; }
    void Seek(uint32_t offset) override { m_pos = offset; }
    std::unique_ptr<CByteSource> Twin() override
    {
        auto twin = std::make_unique<MemorySource>(m_bytes, m_length);
        twin->m_failing = m_twinsFail;
        return twin;
    }
    uint32_t Read(void* buffer, uint32_t count) override
    {
        if (m_failing) {
            ++failedReads;
            throw std::runtime_error("read failed");
        }
        const uint32_t left = m_pos < m_bytes.size() ? uint32_t(m_bytes.size() - m_pos) : 0;
        count = count < left ? count : left;
        memcpy(buffer, m_bytes.data() + m_pos, count);
        m_pos += count;
        return count;
    }

    bool m_twinsFail = false; // reads on another thread throw
    static std::atomic<int> failedReads;

  private:
    std::string m_bytes;
    uint64_t m_length;
    uint32_t m_pos = 0;
    bool m_failing = false;
};

std::atomic<int> MemorySource::failedReads{0};

std::unique_ptr<CByteSource> Source(const std::string& bytes, uint64_t length = 0)
{
    return std::make_unique<MemorySource>(bytes, length);
}

std::string ReadLine(CRecordFile& file, int32_t line, int max = 8192)
{
    std::vector<char> buffer(max + 1);
    if (file.SeekRecord(line) != line)
        return "<no seek>";
    const int length = file.ReadRecord(buffer.data(), max);
    return length < 0 ? "<end>" : std::string(buffer.data(), length);
}

// Every line start, the closing one of the last line included.
std::vector<uint32_t> Index(const CLineFile& file)
{
    std::vector<uint32_t> index;
    for (int32_t line = 0; line <= file.m_nRecordCount; ++line)
        index.push_back(file.LineStart(line));
    return index;
}

struct ScanCase {
    const char* note;
    std::string bytes;
    std::vector<uint32_t> index;
    int recordSize, terminator;
    std::vector<int> lengths;
};

TEST(LineFile, ScanBuildsTheIndexTerminatorModeAndLongestLine)
{
    // Its CR ends the scan's first piece and a record block, the LF starts the next.
    const std::string longLine(0x3FFFF, 'x');
    const ScanCase rows[] = {
        // clang-format off
        {"empty", "", {0}, 0, 0, {}},
        {"CR LF", "ab\r\n", {0, 4}, 2, 0, {2}},
        {"unterminated", "ab", {0, 4}, 2, 0, {2}},
        {"LF, unterminated last", "ab\ncd", {0, 3, 6}, 2, 1, {2, 2}},
        {"no empty last line", "a\nbcd\n", {0, 2, 6}, 3, 1, {1, 3}},
        {"LF CR is two ends", "a\n\rb", {0, 2, 3, 5}, 1, 2, {1, 0, 1}},
        {"CR, then CR LF", "a\r\r\nb", {0, 2, 4, 6}, 1, 2, {1, 1, 1}},
        {"lone CR, LF later", "a\rbc\n", {0, 2, 5}, 2, 1, {1, 2}},
        {"mixed: CR LF keeps its CR", "ab\r\ncd\n", {0, 4, 7}, 3, 1, {3, 2}},
        {"CR LF across blocks", longLine + "\r\ny", {0, 0x40001, 0x40004}, 0x3FFFF, 0, {0x3FFFF, 1}},
        {"control byte counted twice", "abcdefghij\x01klmno\nb\n", {0, 18, 20}, 17, 1, {17, 1}},
        {"tab, VT and FF are text", "\tint a;\tint b;\t\v\f\n", {0, 18}, 17, 1, {17}},
        // clang-format on
    };
    for (const ScanCase& row : rows) {
        SCOPED_TRACE(row.note);
        CLineFile file(8);
        std::vector<unsigned> asked;
        file.SetQuestion([&](unsigned value) { return asked.push_back(value), true; });
        ASSERT_EQ(RECORD_OPEN, file.Open(Source(row.bytes)));
        EXPECT_EQ(row.index, Index(file));
        EXPECT_EQ(row.recordSize, file.m_nRecordSize);
        EXPECT_EQ(row.terminator, file.m_nTerminator);
        EXPECT_EQ(row.bytes.size(), file.m_nFileLength);
        std::vector<int> lengths;
        for (int32_t i = 0; i <= file.m_nRecordCount; ++i)
            lengths.push_back(file.GetRecordLength(i));
        lengths.pop_back();
        EXPECT_EQ(row.lengths, lengths);
        EXPECT_EQ(0, file.GetRecordLength(file.m_nRecordCount)); // the phantom line
        EXPECT_EQ(row.bytes.find('\x01') != std::string::npos ? 1u : 0u, asked.size());
    }
}

// The index as a byte-by-byte walk builds it, with the count and the
// longest line behind it.
struct WalkedIndex {
    std::vector<uint32_t> starts{0};
    int terminator = 0, recordSize = 0;

    explicit WalkedIndex(const std::string& text)
    {
        const size_t n = text.size();
        uint32_t shift = 0, longest = 0;
        auto end = [&](size_t at) {
            const uint32_t start = starts.back(), stop = static_cast<uint32_t>(at) + shift;
            longest = std::max(longest, stop - start);
            starts.push_back(stop);
        };
        for (size_t i = 0; i < n; ++i) {
            const unsigned char c = static_cast<unsigned char>(text[i]);
            if (c < ' ' && (c < '\t' || c > '\r'))
                shift = 1;
            if (c == '\n') {
                terminator = 1;
                end(i + 1);
            } else if (c == '\r' && i + 1 < n && text[i + 1] == '\n') {
                end(++i + 1);
            } else if (c == '\r') {
                // Settled by the byte behind it: a first control byte
                // there has moved the end already.
                const unsigned char behind =
                    i + 1 < n ? static_cast<unsigned char>(text[i + 1]) : 'x';
                if (behind < ' ' && (behind < '\t' || behind > '\r'))
                    shift = 1;
                terminator = 2;
                end(i + 1);
            }
        }
        if (starts.back() < n + shift) {
            const uint32_t start = starts.back(),
                           sentinel = static_cast<uint32_t>(n) + (terminator ? 1 : 2);
            longest = std::max(longest, sentinel - start);
            starts.push_back(sentinel);
        }
        recordSize = longest ? static_cast<int>(longest) - 1 : 0;
        if (recordSize && !terminator)
            --recordSize;
    }
};

// Texts of LFs, lone CRs and CR LF pairs, in runs long and short, with
// control bytes here and there, and big enough to cross the scan's pieces.
TEST(LineFile, IndexAsAByteWalkGivesIt)
{
    const char* const pieces[] = {"\n", "\r\n", "\r", "ab", "x", "\t"};
    unsigned seed = 7;
    auto next = [&seed](unsigned n) { return (seed = seed * 1103515245u + 12345u) / 65536 % n; };
    for (int round = 0; round < 40; ++round) {
        std::string text;
        const size_t size = round % 8 == 0 || round % 8 == 5 ? 300000 : 20 + next(2000);
        // Terminators: LFs only, pairs only, both, or lone CRs too.
        const unsigned mix = round % 4;
        while (text.size() < size) {
            const unsigned pick = next(40);
            if (pick < 3)
                text += pieces[mix < 2 ? mix : pick % mix];
            else if (pick < 6)
                text.append(next(70), 'y');
            else
                text += pieces[3 + pick % 3];
        }
        // Control bytes: none, one in the second half (behind a lone CR, or
        // in the unfinished last line, now and then), or one in each half.
        const size_t half = text.size() / 2;
        if (round % 8 == 7)
            text += "\x01z";
        else if (round % 4 == 1 || round % 4 == 3)
            text.insert(half + next(static_cast<unsigned>(half)),
                        round % 8 == 3 ? "\r\x01" : "\x01");
        if (round % 4 == 3)
            text.insert(next(static_cast<unsigned>(half)), "\x02");
        const WalkedIndex walked(text);
        const size_t control = text.find_first_of("\x01\x02");
        const std::vector<unsigned> question(
            control == std::string::npos ? 0 : 1,
            control == std::string::npos ? 0 : static_cast<unsigned>(text[control]));
        // One scan, two halves, and seven stretches.
        const uint32_t stretches[] = {0, UINT32_MAX, static_cast<uint32_t>(text.size() / 7 + 1)};
        for (uint32_t stretch : stretches) {
            SCOPED_TRACE(testing::Message() << "round " << round << " stretch " << stretch);
            CLineFile file(8);
            file.m_nSplitFrom = stretch ? 0 : UINT32_MAX;
            file.m_nStretchSize = stretch;
            std::vector<unsigned> asked;
            file.SetQuestion([&](unsigned value) { return asked.push_back(value), true; });
            ASSERT_EQ(RECORD_OPEN, file.Open(Source(text)));
            ASSERT_EQ(walked.starts, Index(file));
            EXPECT_EQ(walked.terminator, file.m_nTerminator);
            EXPECT_EQ(walked.recordSize, file.m_nRecordSize);
            EXPECT_EQ(question, asked); // once, for the first
            file.SetQuestion([](unsigned) { return false; });
            EXPECT_EQ(control == std::string::npos ? RECORD_OPEN : RECORD_REFUSED,
                      file.Open(Source(text)));
        }
    }
}

// A CR at the end of one read, and the control byte behind it at the start
// of the next: the byte moves the CR's line end too.
TEST(LineFile, ControlByteBehindACrAcrossTheScansReads)
{
    for (size_t at : {0x3FFFEu, 0x3FFFFu, 0x40000u}) {
        const std::string text = std::string(at, 'a') + "\r\x01z\n";
        CLineFile file(8);
        ASSERT_EQ(RECORD_OPEN, file.Open(Source(text)));
        EXPECT_EQ(WalkedIndex(text).starts, Index(file)) << at;
    }
}

TEST(LineFile, ControlByteRefusedOrTooLargeLeavesItClosed)
{
    CLineFile file(8);
    file.SetQuestion([](unsigned value) { return value != 2; });
    EXPECT_EQ(RECORD_REFUSED, file.Open(Source("ok\n\x02\n")));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(RECORD_OPEN, file.Open(Source("a\x03\x02\n"))); // asked once, for 3
    EXPECT_EQ(RECORD_TOOLARGE, file.Open(Source("a\n", 0xFFFFFFFEull)));
    EXPECT_EQ(RECORD_TOOLARGE, file.Open(Source("a\n", 0x100000000ull)));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(0, file.m_nRecordCount);
    CFixedRecordFile hex(16);
    EXPECT_EQ(RECORD_OPEN, hex.Open(Source("a", 0xFFFFFFFFull)));
    EXPECT_EQ(RECORD_TOOLARGE, hex.Open(Source("a", 0x100000000ull)));
}

// The caller's work while a file opens (the view makes its window then):
// once for an open file, never for one refused before, and a No stops it.
TEST(RecordFiles, WorkWhileOpeningRunsOnceAndMayStopTheOpen)
{
    CLineFile lines(8), halves(8);
    halves.m_nSplitFrom = 0;
    CFixedRecordFile hex(16);
    for (CRecordFile* file : {static_cast<CRecordFile*>(&lines), static_cast<CRecordFile*>(&halves),
                              static_cast<CRecordFile*>(&hex)}) {
        int calls = 0;
        for (bool go : {true, false}) {
            file->m_whileOpening = [&calls, go] { return ++calls, go; };
            EXPECT_EQ(go ? RECORD_OPEN : RECORD_REFUSED, file->Open(Source("ab\ncd\nef\n")));
            EXPECT_EQ(go, file->IsOpen());
            EXPECT_FALSE(file->m_whileOpening); // forgotten once done
        }
        file->m_whileOpening = [&calls] { return ++calls, true; };
        EXPECT_EQ(RECORD_TOOLARGE, file->Open(Source("a\n", 0x100000000ull)));
        EXPECT_EQ(2, calls);
    }
}

TEST(LineFile, ReadFailingOnAnotherThreadReachesTheCaller)
{
    auto source = std::make_unique<MemorySource>(std::string(100000, 'x') + "\n" +
                                                 std::string(100000, 'y') + "\n");
    source->m_twinsFail = true;
    CLineFile file(8);
    file.m_nSplitFrom = 0;
    file.m_nStretchSize = 1000;
    // The caller's thread waits until the other one has failed.
    file.m_whileOpening = [] {
        while (!MemorySource::failedReads)
            std::this_thread::yield();
        return true;
    };
    EXPECT_THROW(file.Open(std::move(source)), std::runtime_error);
}

// The lines passed over unread by a find never hold its needle: needles
// across the pieces read, at a line's first byte behind a control byte,
// which moves the line starts a byte on, and nowhere at all.
TEST(LineFile, NextLineHoldingPassesOnlyLinesWithoutTheNeedle)
{
    std::string text;
    for (int i = 0; text.size() < 200000; ++i)
        text += std::string(size_t(i * 7 % 90), 'a' + i % 20) + (i % 5 ? "\n" : "\r\n");
    // The pieces are read from the line start that the find comes from:
    // from the one at 0x2000 on, the first needle lies across two pieces.
    const size_t lineStart = text.find('\n', 0x2000) + 1;
    for (size_t at : {text.find('\n', 0x1000) + 1, lineStart + 0x10000 - 2, size_t(0x20000 - 5),
                      text.size() - 3})
        text.replace(at, 4, "zqxw");
    text.replace(0x18000, 1, "\x01");
    text.insert(text.find('\n', 0x18000) + 1, "zqxw");
    CLineFile file(8);
    file.SetQuestion([](unsigned) { return true; });
    ASSERT_EQ(RECORD_OPEN, file.Open(Source(text)));
    const std::vector<uint32_t> starts = Index(file);
    const int32_t count = file.m_nRecordCount;
    auto holds = [&](int32_t line, const std::string& needle) {
        const uint32_t from = starts[size_t(line)], to = starts[size_t(line) + 1];
        return text.substr(from, to - from).find(needle) != std::string::npos;
    };
    for (const char* sought : {"zqxw", "ZQXW", "nowhere", "a\nb"}) {
        PatternBuffer pattern;
        pattern.fold_case = sought[0] == 'Z';
        ASSERT_EQ(0, CompilePattern(sought, int(strlen(sought)), &pattern));
        const PatternNeedle needle = FindPatternNeedle(&pattern);
        const std::string plain = pattern.fold_case ? "zqxw" : sought;
        std::vector<int32_t> froms;
        for (int32_t from = 0; from <= count; from += from < 3 || count - from < 3 ? 1 : 97)
            froms.push_back(from);
        froms.push_back(int32_t(std::find(starts.begin(), starts.end(), lineStart) - starts.begin()));
        for (int32_t from : froms) {
            const int32_t next = file.NextLineHolding(needle, from);
            ASSERT_GE(next, from) << sought << " from " << from;
            for (int32_t line = from; line < next; ++line)
                ASSERT_FALSE(holds(line, plain)) << sought << " from " << from << " passes " << line;
            // Where it stops the needle starts.
            if (next < count && plain != "a\nb") {
                EXPECT_LT(text.find(plain, starts[size_t(next)]), starts[size_t(next) + 1])
                    << sought << " from " << from << " stops at " << next;
            }
        }
        free(pattern.buffer);
    }
}

// Lines of all lengths around the block size, read forward, backward and
// with short buffers, each read leaving the next line to follow.
TEST(LineFile, ReadsForwardAndBackwardAcrossBlocks)
{
    std::string bytes;
    std::vector<std::string> lines;
    for (int i = 0; i < 400; ++i) {
        lines.push_back(std::to_string(i) + std::string(size_t(i * 37 % 300), 'a' + i % 26));
        bytes += lines.back() + (i % 3 ? "\n" : "\r\n");
    }
    CLineFile file(8);
    ASSERT_EQ(RECORD_OPEN, file.Open(Source(bytes)));
    ASSERT_EQ(400, file.m_nRecordCount);
    for (int i = 399; i >= 0; --i)
        ASSERT_EQ(lines[size_t(i)], ReadLine(file, i)) << i;
    ASSERT_EQ(0, file.SeekRecord(0));
    char buffer[4];
    for (int i = 0; i < 400; ++i) {
        const int length = file.ReadRecord(buffer, 4);
        ASSERT_EQ(lines[size_t(i)].substr(0, 4), std::string(buffer, size_t(length))) << i;
    }
    EXPECT_EQ(-1, file.ReadRecord(buffer, 4));
    EXPECT_EQ(-1, file.SeekRecord(400));
    EXPECT_EQ(-2, file.SeekRecord(-1));
}

TEST(LineFile, ExpandedReadStopsAtTheColumnLimitAndStepsToTheNextLine)
{
    CLineFile file(4);
    ASSERT_EQ(RECORD_OPEN, file.Open(Source("\tab\tc\r\n" + std::string(300, 'x') + "\nz\n")));
    char row[256];
    const struct {
        int max, length;
        const char* text;
    } rows[] = {{256, 9, "    ab  c"}, {256, 255, nullptr}, {256, 1, "z"}, {256, -1, nullptr}};
    file.SeekRecord(0);
    for (const auto& expected : rows) {
        EXPECT_EQ(expected.length, file.ReadExpandedRecord(row, expected.max));
        if (expected.text) {
            EXPECT_STREQ(expected.text, row);
        }
    }
    file.SetTabWidth(8);
    file.SeekRecord(0);
    EXPECT_EQ(3, file.ReadExpandedRecord(row, 4)); // the tab stops at the limit
    EXPECT_STREQ("   ", row);
}

TEST(FixedRecordFile, CountsShortLastRecordAndSeeksUpToTheEnd)
{
    const struct {
        size_t size;
        int32_t count, lastRead, seekPastLast;
    } rows[] = {{33, 3, 1, -1}, {32, 2, 16, 2}, {1, 1, 1, -1}, {0, 0, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.size);
        CFixedRecordFile file(16);
        ASSERT_EQ(RECORD_OPEN, file.Open(Source(std::string(row.size, 'q'))));
        EXPECT_EQ(row.count, file.m_nRecordCount);
        char record[16];
        if (row.count) {
            EXPECT_EQ(row.count - 1, file.SeekRecord(row.count - 1));
            EXPECT_EQ(row.lastRead, file.ReadRecord(record, 0));
        }
        EXPECT_EQ(0, file.ReadRecord(record, 0));
        EXPECT_EQ(row.seekPastLast, file.SeekRecord(row.count));
    }
}

TEST(FixedRecordFile, RecordsAcrossTheBlockBorderBackwardAndForward)
{
    std::string bytes;
    for (int i = 0; i < 10000; ++i)
        bytes += char(i * 7);
    CFixedRecordFile file(16);
    ASSERT_EQ(RECORD_OPEN, file.Open(Source(bytes)));
    char record[16];
    for (int32_t n : {400, 255, 256, 128, 127, 0, 624}) {
        ASSERT_EQ(n, file.SeekRecord(n));
        const int length = file.ReadRecord(record, 0);
        ASSERT_EQ(bytes.substr(size_t(n) * 16, 16), std::string(record, size_t(length))) << n;
        EXPECT_EQ(n + 1, file.m_nCurRecord);
    }
    EXPECT_EQ(-1, file.SeekRecord(626));
    char raw[3];
    EXPECT_EQ(3u, file.ReadAt(4095, raw, 3));
    EXPECT_EQ(bytes.substr(4095, 3), std::string(raw, 3));
}

} // namespace
