// A file read as a numbered sequence of records through one block of 4096
// bytes, forward and backward. The bytes come from a CByteSource: the file
// layer in the program, memory in the tests. Platform-free.
#pragma once
#include <cstdint>
#include <functional>
#include <memory>

// Where a record file's bytes come from. Read and Seek throw whatever the
// file layer throws; the views catch it.
class CByteSource
{
  public:
    virtual ~CByteSource() = default;
    virtual uint64_t GetLength() = 0;
    virtual uint32_t GetPosition() = 0;
    virtual void Seek(uint32_t offset) = 0;
    virtual uint32_t Read(void* buffer, uint32_t count) = 0;
    // A second source over the same bytes, with a position of its own, to
    // be read on another thread; null if there can be none.
    virtual std::unique_ptr<CByteSource> Twin() { return nullptr; }
};

enum RecordOpenResult {
    RECORD_OPEN = 0,
    RECORD_REFUSED = 1,  // the user said No
    RECORD_NOMEMORY = 2, // no memory for the block or the index
    RECORD_TOOLARGE = 3, // past what 32-bit offsets and record numbers reach
};

class CRecordFile
{
  public:
    enum { kBufferSize = 4096 };

    CRecordFile() = default;
    virtual ~CRecordFile();
    CRecordFile(const CRecordFile&) = delete;
    CRecordFile& operator=(const CRecordFile&) = delete;

    // Takes the source over; on failure the file is closed again.
    virtual RecordOpenResult Open(std::unique_ptr<CByteSource> source);
    // Safe to call twice.
    virtual void Close();
    bool IsOpen() const { return m_source != nullptr; }

    // Stores record m_nCurRecord and steps to the next; the bytes stored.
    virtual int ReadRecord(char* dest, int max) = 0;
    // The same with tabs expanded, NUL-ended, at most max - 1 columns.
    virtual int ReadExpandedRecord(char* dest, int max) = 0;
    virtual int GetRecordLength(int32_t record) = 0;
    // The record number, -2 for a negative one, -1 for one past the end.
    virtual int32_t SeekRecord(int32_t record) = 0;
    virtual void SetTabWidth(int width) = 0;

    // Raw access past the record buffer, for the views' searches.
    uint32_t ReadAt(uint32_t offset, void* buffer, uint32_t count);

    // Work of the caller's, done once by a successful Open once the file is
    // known to be readable, while the rest of a large file is read on
    // another thread; false stops the open with RECORD_REFUSED.
    std::function<bool()> m_whileOpening;

    uint32_t m_nFileLength = 0;
    int32_t m_nCurRecord = 0;
    int32_t m_nRecordCount = 0;
    int32_t m_nRecordSize = 0;

  protected:
    // Runs m_whileOpening, if there is any, and forgets it.
    bool DoWhileOpening()
    {
        const std::function<bool()> work = std::move(m_whileOpening);
        m_whileOpening = nullptr;
        return !work || work();
    }
    // Fills the buffer from the source's position; the count read.
    uint32_t FillBuffer();
    // The next byte, or -1 at the end; refills invisibly.
    int ReadByte() { return m_pNext < m_pEnd ? *m_pNext++ : RefillByte(); }
    int RefillByte();
    // Steps over count bytes, refilling as needed, and copies the first
    // keep of them to dest; the number stepped over, short only at the end.
    uint32_t TakeBytes(void* dest, uint32_t count, uint32_t keep);
    // Points the reader at a byte offset. Inside the block nothing is read;
    // a step back refills from 2048 bytes before the target, so that going
    // on in either direction stays in the block.
    void SeekOffset(uint32_t offset);

    std::unique_ptr<CByteSource> m_source;
    unsigned char* m_pBuffer = nullptr;
    unsigned char* m_pNext = nullptr;
    unsigned char* m_pEnd = nullptr;
    uint32_t m_nBufferLength = 0;
    uint32_t m_nBufferPos = 0;
};
