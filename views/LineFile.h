// A text file whose records are its lines, with an index of 32-bit line
// starts built at open, by one scan or, for a large file, by threads that
// share its stretches. Platform-free.
#pragma once
#include "search/Pattern.h"
#include "views/RecordFile.h"

#include <functional>
#include <vector>

class CLineFile : public CRecordFile
{
  public:
    // The question for a control byte met in the scan: go on?
    using ControlByteQuestion = std::function<bool(unsigned value)>;

    explicit CLineFile(int tabWidth) : m_nTabWidth(tabWidth) {}
    ~CLineFile() override;

    void SetQuestion(ControlByteQuestion question) { m_question = std::move(question); }
    RecordOpenResult Open(std::unique_ptr<CByteSource> source) override;
    void Close() override;

    int ReadRecord(char* dest, int max) override;
    int ReadExpandedRecord(char* dest, int max) override;
    int GetRecordLength(int32_t record) override;
    int32_t SeekRecord(int32_t record) override;
    void SetTabWidth(int width) override { m_nTabWidth = width; }

    int m_nTabWidth;
    // 0 while only CR LF (or none) was seen, 1 after a lone LF, 2 after a
    // lone CR; a later CR LF does not reset it.
    int m_nTerminator = 0;
    // Where line n starts; line m_nRecordCount's start closes the last line.
    uint32_t LineStart(int32_t line) const;
    // The line that holds the byte at offset: the last one starting at or
    // before it.
    int32_t LineOf(uint32_t offset) const;
    // The first line from `from` on whose bytes may hold the needle, read
    // in large pieces past the block; m_nRecordCount if none does. A needle
    // with a terminator in it could stand across lines: every line may.
    int32_t NextLineHolding(const PatternNeedle& needle, int32_t from);

    // Files from this size on are cut into stretches of about this many
    // bytes, at least two, each from a line start; threads on twins of the
    // source take them one by one, and the caller's thread joins them once
    // its work while opening is done.
    uint32_t m_nSplitFrom = 16u << 20;
    uint32_t m_nStretchSize = 8u << 20;

  private:
    using Pieces = std::vector<std::unique_ptr<uint32_t[]>>;
    // A stretch of the file and the line starts in it, from line firstLine
    // on, in pieces of their own.
    struct Stretch {
        uint32_t from, firstLine;
        Pieces pieces;
    };

    RecordOpenResult Scan();
    std::vector<uint32_t> FindCuts();
    uint32_t LineStartFrom(uint32_t at);

    ControlByteQuestion m_question;
    std::vector<Stretch> m_stretches;
    mutable size_t m_lastStretch = 0;
    std::vector<char> m_piece; // what NextLineHolding reads at a time
};
