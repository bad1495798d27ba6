#include "views/RecordFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace
{
// How far before a target behind the block the refill starts.
const uint32_t kBackStep = CRecordFile::kBufferSize / 2;
} // namespace

CRecordFile::~CRecordFile()
{
    free(m_pBuffer);
}

RecordOpenResult CRecordFile::Open(std::unique_ptr<CByteSource> source)
{
    Close();
    m_source = std::move(source);
    const uint64_t length = m_source->GetLength();
    if (length > UINT32_MAX) {
        Close();
        return RECORD_TOOLARGE;
    }
    m_pBuffer = static_cast<unsigned char*>(malloc(kBufferSize));
    if (!m_pBuffer) {
        Close();
        return RECORD_NOMEMORY;
    }
    m_nFileLength = static_cast<uint32_t>(length);
    m_pNext = m_pEnd = m_pBuffer;
    m_nBufferLength = m_nBufferPos = 0;
    return RECORD_OPEN;
}

void CRecordFile::Close()
{
    m_source.reset();
    free(m_pBuffer);
    m_pBuffer = m_pNext = m_pEnd = nullptr;
    m_nBufferLength = m_nBufferPos = 0;
}

uint32_t CRecordFile::FillBuffer()
{
    m_nBufferPos = m_source->GetPosition();
    const uint32_t count = m_source->Read(m_pBuffer, kBufferSize);
    m_nBufferLength = count;
    m_pNext = m_pBuffer;
    m_pEnd = m_pBuffer + count;
    return count;
}

int CRecordFile::RefillByte()
{
    return FillBuffer() ? *m_pNext++ : -1;
}

uint32_t CRecordFile::TakeBytes(void* dest, uint32_t count, uint32_t keep)
{
    uint32_t taken = 0;
    while (taken < count && (m_pNext < m_pEnd || FillBuffer())) {
        const uint32_t run = std::min(count - taken, static_cast<uint32_t>(m_pEnd - m_pNext));
        if (taken < keep)
            memcpy(static_cast<unsigned char*>(dest) + taken, m_pNext, std::min(run, keep - taken));
        m_pNext += run;
        taken += run;
    }
    return taken;
}

void CRecordFile::SeekOffset(uint32_t offset)
{
    if (offset >= m_nBufferPos && offset - m_nBufferPos < m_nBufferLength) {
        m_pNext = m_pBuffer + (offset - m_nBufferPos);
    } else if (offset < m_nBufferPos) {
        m_source->Seek(offset > kBackStep ? offset - kBackStep : 0);
        FillBuffer();
        m_pNext = m_pBuffer + (offset - m_nBufferPos);
    } else {
        m_source->Seek(offset);
        m_nBufferLength = 0;
        m_pNext = m_pEnd;
    }
}

uint32_t CRecordFile::ReadAt(uint32_t offset, void* buffer, uint32_t count)
{
    const uint32_t position = m_source->GetPosition();
    m_source->Seek(offset);
    const uint32_t read = m_source->Read(buffer, count);
    m_source->Seek(position);
    return read;
}
