#include "search/GrepLines.h"

#include "search/ByteFind.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

const char kEndOfText = 0x1A; // Ctrl-Z
const size_t kBlockSize = 65536;

// The whole lines of text up to the last LF before limit: their bytes, and
// the pieces the reader would cut them into, the CR of a CR LF not counted,
// added to lines.
size_t CountWholeLines(const char* text, size_t limit, int& lines)
{
    const size_t piece = kGrepLineSize - 1;
    size_t start = 0;
    auto line = [&](size_t lf) {
        const size_t length = lf + 1 - start - (lf > start && text[lf - 1] == '\r' ? 1 : 0);
        lines += static_cast<int>((length + piece - 1) / piece);
        start = lf + 1;
    };
    size_t i = 0;
    for (; i + 32 <= limit; i += 32) {
        uint32_t bits = ByteMask32(text + i, '\n', '\n');
        for (; bits; bits &= bits - 1)
            line(i + __builtin_ctz(bits));
    }
    for (; i < limit; ++i)
        if (text[i] == '\n')
            line(i);
    return start;
}

// Counts the lines ahead of the reader up to the first that may hold the
// needle, and reads past them; the number counted. The reader stands at a
// line's start or at a piece's, which are cut alike. Dropping a CR before
// an LF makes no needle, so the text as it stands may be searched for it.
int PassLinesWithout(TextLineReader& reader, const PatternNeedle& needle)
{
    int lines = 0;
    for (;;) {
        size_t size;
        const char* text = reader.Ahead(size);
        if (size == 0)
            return lines;
        const int at = FindNeedle(needle, text, static_cast<int>(size));
        // A needle across the block's end stands in a line that ends beyond
        // it, which is not passed.
        const size_t passed =
            CountWholeLines(text, at >= 0 ? static_cast<size_t>(at) : size, lines);
        reader.Pass(passed);
        if (at >= 0 || passed < size)
            return lines;
    }
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
        m_end = length;
    }
    return true;
}

const char* TextLineReader::Ahead(size_t& size)
{
    size = Refill() ? m_end - m_pos : 0;
    return m_block.data() + m_pos;
}

void TextLineReader::Pass(size_t count)
{
    m_pos += count;
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
        const size_t left = m_end - m_pos;
        size_t take = std::min(limit - stored, left);
        const char* lf = FindByte(from, '\n', take);
        // A CR that fills the piece goes when its LF follows: the LF takes
        // its place. The block never ends in a CR but at the text's end.
        if (!lf && take < left && from[take - 1] == '\r' && from[take] == '\n')
            lf = from + take;
        if (lf)
            take = static_cast<size_t>(lf - from) + 1;
        memcpy(buffer + stored, from, take);
        stored += take;
        m_pos += take;
        if (lf) {
            if (take >= 2 && buffer[stored - 2] == '\r') {
                buffer[stored - 2] = '\n';
                --stored;
            }
            break;
        }
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
    const PatternNeedle needle = FindPatternNeedle(pattern);
    for (;;) {
        if (needle.length)
            number += PassLinesWithout(reader, needle);
        const int length = reader.ReadLine(line, sizeof line);
        if (length == 0)
            break;
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
