#include "views/LineFile.h"

#include <cstdlib>
#include <cstring>

namespace
{

const uint32_t kSmallFile = 0x80000;
const uint32_t kSmallStep = 2048;
const uint32_t kLargeStep = 10240;

bool IsTerminator(int byte)
{
    return byte == '\r' || byte == '\n';
}

// Tab, LF, VT, FF and CR: the control bytes that a text may hold.
bool IsWhiteControl(int byte)
{
    return byte >= '\t' && byte <= '\r';
}

} // namespace

CLineFile::~CLineFile()
{
    Close();
}

void CLineFile::Close()
{
    CRecordFile::Close();
    free(m_pIndex);
    m_pIndex = nullptr;
    m_nIndexCapacity = 0;
    m_nCurRecord = m_nRecordCount = 0;
}

RecordOpenResult CLineFile::Open(std::unique_ptr<CByteSource> source)
{
    RecordOpenResult result = CRecordFile::Open(std::move(source));
    // Two more than the length must fit an index entry: the unterminated
    // last line's sentinel.
    if (result == RECORD_OPEN && m_nFileLength > UINT32_MAX - 2)
        result = RECORD_TOOLARGE;
    if (result == RECORD_OPEN)
        result = Scan();
    if (result != RECORD_OPEN)
        Close();
    return result;
}

// A line ends: its start becomes the next entry, and the longest line with
// its terminator is kept. The index grows while one entry is still free,
// so that the sentinel always has its place.
RecordOpenResult CLineFile::AddLine(uint32_t start, uint32_t end, uint32_t step)
{
    if (m_nRecordCount == INT32_MAX - 1)
        return RECORD_TOOLARGE;
    if (m_nIndexCapacity - static_cast<uint32_t>(m_nRecordCount) <= 1) {
        // Past the first steps the index grows by half its size, so that a
        // file of millions of lines is not copied thousands of times.
        const uint32_t grow = m_nIndexCapacity / 2 > step ? m_nIndexCapacity / 2 : step;
        void* grown = realloc(m_pIndex, (size_t(m_nIndexCapacity) + grow) * sizeof(uint32_t));
        if (!grown)
            return RECORD_NOMEMORY;
        m_pIndex = static_cast<uint32_t*>(grown);
        m_nIndexCapacity += grow;
    }
    m_pIndex[m_nRecordCount++] = start;
    if (end - start > static_cast<uint32_t>(m_nRecordSize))
        m_nRecordSize = static_cast<int32_t>(end - start);
    return RECORD_OPEN;
}

RecordOpenResult CLineFile::Scan()
{
    const uint32_t step = m_nFileLength < kSmallFile ? kSmallStep : kLargeStep;
    m_pIndex = static_cast<uint32_t*>(calloc(step, sizeof(uint32_t)));
    if (!m_pIndex)
        return RECORD_NOMEMORY;
    m_nIndexCapacity = step;
    m_nTerminator = 0;
    m_nRecordSize = 0;
    m_source->Seek(0);
    bool warned = false;
    uint32_t lineStart = 0, consumed = 0;
    int byte = ReadByte();
    while (byte >= 0) {
        if (IsTerminator(byte)) {
            int next = ReadByte();
            ++consumed;
            if (byte == '\r' && next == '\n') {
                next = ReadByte();
                ++consumed;
            } else {
                m_nTerminator = byte == '\n' ? 1 : 2;
            }
            if (RecordOpenResult added = AddLine(lineStart, consumed, step))
                return added;
            lineStart = consumed;
            byte = next;
            continue;
        }
        if (byte < ' ' && !IsWhiteControl(byte) && !warned) {
            warned = true;
            if (m_question && !m_question(static_cast<unsigned>(byte)))
                return RECORD_REFUSED;
            // The byte is looked at again and counted twice: every later
            // line start lies one byte late. Kept as the scan always had it.
            ++consumed;
            continue;
        }
        ++consumed;
        byte = ReadByte();
    }
    m_pIndex[m_nRecordCount] = lineStart;
    if (lineStart < consumed) {
        // The extra bytes stand for the terminator the line lacks, so that
        // its length comes out as for any other line.
        const uint32_t end = m_nFileLength + (m_nTerminator ? 1 : 2);
        if (RecordOpenResult added = AddLine(lineStart, end, step))
            return added;
        m_pIndex[m_nRecordCount] = end;
    }
    if (m_nRecordSize)
        --m_nRecordSize;
    if (m_nRecordSize && !m_nTerminator)
        --m_nRecordSize;
    // A read-only file gives back what its index does not use.
    void* shrunk = realloc(m_pIndex, (size_t(m_nRecordCount) + 1) * sizeof(uint32_t));
    if (!shrunk)
        return RECORD_NOMEMORY;
    m_pIndex = static_cast<uint32_t*>(shrunk);
    m_nIndexCapacity = static_cast<uint32_t>(m_nRecordCount);
    m_source->Seek(0);
    return RECORD_OPEN;
}

int CLineFile::GetRecordLength(int32_t record)
{
    if (record < 0 || record >= m_nRecordCount)
        return 0;
    int length = static_cast<int>(m_pIndex[record + 1] - m_pIndex[record]) - 1;
    if (length > 0 && !m_nTerminator)
        --length;
    return length;
}

int32_t CLineFile::SeekRecord(int32_t record)
{
    if (record < 0)
        return -2;
    if (record >= m_nRecordCount)
        return -1;
    SeekOffset(m_pIndex[record]);
    m_nCurRecord = record;
    return record;
}

int CLineFile::ReadRecord(char* dest, int max)
{
    if (m_nCurRecord < 0 || m_nCurRecord >= m_nRecordCount)
        return -1;
    const uint32_t span = m_pIndex[m_nCurRecord + 1] - m_pIndex[m_nCurRecord];
    int stored = 0;
    for (uint32_t i = 0; i < span; ++i) {
        const int byte = ReadByte();
        if (byte < 0)
            break;
        if (stored < max)
            dest[stored++] = static_cast<char>(byte);
    }
    while (stored > 0 && IsTerminator(static_cast<unsigned char>(dest[stored - 1])))
        --stored;
    ++m_nCurRecord;
    return stored;
}

int CLineFile::ReadExpandedRecord(char* dest, int max)
{
    if (m_nCurRecord < 0 || m_nCurRecord >= m_nRecordCount)
        return -1;
    const int limit = max - 1;
    const int tab = m_nTabWidth > 0 ? m_nTabWidth : 1;
    const uint32_t span = m_pIndex[m_nCurRecord + 1] - m_pIndex[m_nCurRecord];
    int column = 0;
    for (uint32_t i = 0; i < span; ++i) {
        const int byte = ReadByte();
        if (byte < 0)
            break;
        if (byte == '\t') {
            do {
                if (column < limit)
                    dest[column] = ' ';
                ++column;
            } while (column % tab != 0 && column < limit);
        } else {
            if (column < limit)
                dest[column] = static_cast<char>(byte);
            ++column;
        }
    }
    int stored = column < limit ? column : limit;
    while (stored > 0 && IsTerminator(static_cast<unsigned char>(dest[stored - 1])))
        --stored;
    dest[stored] = '\0';
    ++m_nCurRecord;
    return stored;
}
