// A file whose records are runs of a fixed number of bytes; a short last
// run counts as a record. No index. Platform-free.
#pragma once
#include "views/RecordFile.h"

class CFixedRecordFile : public CRecordFile
{
  public:
    // The size must divide half the block (the views use 16), or a record
    // would straddle the block's end and come out short.
    explicit CFixedRecordFile(int recordSize) { m_nRecordSize = recordSize; }

    RecordOpenResult Open(std::unique_ptr<CByteSource> source) override;
    // Copies one record whatever max is: dest has room for m_nRecordSize.
    int ReadRecord(char* dest, int max) override;
    int ReadExpandedRecord(char* dest, int max) override { return ReadRecord(dest, max); }
    int GetRecordLength(int32_t) override { return m_nRecordSize; }
    // Any record whose first byte lies at or before the end: the one just
    // past a file of whole records too.
    int32_t SeekRecord(int32_t record) override;
    void SetTabWidth(int) override {}
};
