#include "search/GrepLines.h"

#include "search/ByteFind.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

const char kEndOfText = 0x1A; // Ctrl-Z
const size_t kBlockSize = 65536;

// Drops each CR that an LF follows; the new length.
size_t DropCrBeforeLf(char* data, size_t length)
{
    char* out = data;
    const char* in = data;
    const char* end = data + length;
    for (;;) {
        const char* cr = FindByte(in, '\r', static_cast<size_t>(end - in));
        const char* stop = cr ? cr : end;
        if (out != in)
            memmove(out, in, static_cast<size_t>(stop - in));
        out += stop - in;
        if (!cr)
            break;
        in = cr + 1;
        if (in == end || *in != '\n')
            *out++ = '\r';
    }
    return static_cast<size_t>(out - data);
}

} // namespace

TextLineReader::TextLineReader(Fill fill, bool endLastLine)
    : m_fill(std::move(fill)), m_block(kBlockSize), m_endLastLine(endLastLine)
{
}

bool TextLineReader::Refill()
{
    while (m_pos == m_end) {
        if (m_atEnd)
            return false;
        char* data = m_block.data();
        size_t length = m_heldCr ? 1 : 0; // the held CR goes in front again
        if (m_heldCr)
            data[0] = '\r';
        m_heldCr = false;
        const size_t read = m_fill(data + length, m_block.size() - length);
        if (read == 0)
            m_atEnd = true;
        length += read;
        if (const char* stop = FindByte(data, kEndOfText, length)) {
            length = static_cast<size_t>(stop - data);
            m_atEnd = true;
        }
        if (!m_atEnd && length && data[length - 1] == '\r') {
            m_heldCr = true;
            --length;
        }
        m_pos = 0;
        m_end = DropCrBeforeLf(data, length);
    }
    return true;
}

int TextLineReader::ReadLine(char* buffer, int size)
{
    const size_t limit = size > 1 ? static_cast<size_t>(size - 1) : 0;
    size_t stored = 0;
    while (stored < limit) {
        if (!Refill()) {
            if (stored && m_endLastLine)
                buffer[stored++] = '\n';
            break;
        }
        const char* from = m_block.data() + m_pos;
        const size_t room = std::min(limit - stored, m_end - m_pos);
        const char* lf = FindByte(from, '\n', room);
        const size_t take = lf ? static_cast<size_t>(lf - from) + 1 : room;
        memcpy(buffer + stored, from, take);
        stored += take;
        m_pos += take;
        if (lf)
            break;
    }
    if (size > 0)
        buffer[stored] = '\0';
    return static_cast<int>(stored);
}

int GrepLines(TextLineReader& reader, PatternBuffer* pattern,
              const std::function<void(int number, const char* text)>& hit)
{
    char line[kGrepLineSize];
    int number = 0;
    int hits = 0;
    for (int length; (length = reader.ReadLine(line, sizeof line)) != 0;) {
        ++number;
        if (length == 1)
            continue;
        // The LF goes, and so does the last byte of a long line's piece.
        line[length - 1] = '\0';
        const int size = length - 1;
        if (SearchPattern(pattern, line, size, 0, size, nullptr) >= 0) {
            ++hits;
            if (hit)
                hit(number, line);
        }
    }
    return hits;
}
