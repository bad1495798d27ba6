// A text file whose records are its lines, with an index of 32-bit line
// starts built at open, by one scan or, for a large file, by two at once
// over its halves. Platform-free.
#pragma once
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

    // Files from this size on are scanned in two halves at once, where the
    // source has a twin.
    uint32_t m_nSplitFrom = 16u << 20;

  private:
    RecordOpenResult Scan();
    uint32_t FindSplit();

    ControlByteQuestion m_question;
    // The index of line starts: those of the second half, from line
    // m_nTailFrom on, in pieces of their own.
    std::vector<std::unique_ptr<uint32_t[]>> m_pieces, m_tailPieces;
    uint32_t m_nTailFrom = UINT32_MAX;
};
