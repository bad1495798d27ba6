#include "views/FixedRecordFile.h"

#include <cstring>

RecordOpenResult CFixedRecordFile::Open(std::unique_ptr<CByteSource> source)
{
    RecordOpenResult result = CRecordFile::Open(std::move(source));
    if (result == RECORD_OPEN && !DoWhileOpening()) {
        Close();
        result = RECORD_REFUSED;
    }
    if (result == RECORD_OPEN) {
        const uint64_t size = static_cast<uint64_t>(m_nRecordSize);
        m_nRecordCount = static_cast<int32_t>((m_nFileLength + size - 1) / size);
        m_nCurRecord = 0;
        m_source->Seek(0);
    }
    return result;
}

int CFixedRecordFile::ReadRecord(char* dest, int)
{
    uint32_t amount = static_cast<uint32_t>(m_pEnd - m_pNext);
    if (amount == 0) {
        FillBuffer();
        amount = m_nBufferLength;
    }
    if (amount > static_cast<uint32_t>(m_nRecordSize))
        amount = static_cast<uint32_t>(m_nRecordSize);
    if (amount == 0)
        return 0;
    memcpy(dest, m_pNext, amount);
    m_pNext += amount;
    ++m_nCurRecord;
    return static_cast<int>(amount);
}

int32_t CFixedRecordFile::SeekRecord(int32_t record)
{
    if (record < 0)
        return -2;
    const uint64_t offset = static_cast<uint64_t>(record) * static_cast<uint64_t>(m_nRecordSize);
    if (offset > m_nFileLength)
        return -1;
    SeekOffset(static_cast<uint32_t>(offset));
    m_nCurRecord = record;
    return record;
}
