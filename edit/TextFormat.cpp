#include "edit/TextFormat.h"

#include <cstring>

namespace
{

const char CR = '\r';
const char LF = '\n';

bool IsControlByte(unsigned char byte)
{
    return byte < 32 && (byte < 9 || byte > 13);
}

// The state after a lone terminator of kind seen: it sets the state once,
// repeats keep it, any other kind makes the text mixed.
FileFormat AfterTerminator(FileFormat state, FileFormat seen)
{
    return state == FF_NONE || state == seen ? seen : FF_MIXED;
}

} // namespace

int FindNonAnsiByte(const char* text, size_t length)
{
    // The last byte of a short file is left out, as it always was.
    const size_t tested = length >= 256 ? 256 : (length == 0 ? 0 : length - 1);
    for (size_t i = 0; i < tested; ++i)
        if (IsControlByte(static_cast<unsigned char>(text[i])))
            return static_cast<int>(i);
    return -1;
}

FileFormat DetectFormat(const char* text, size_t length, size_t& count)
{
    count = 0;
    if (length == 0)
        return FF_DOS;
    FileFormat state = FF_NONE;
    const char* end = text + length;
    for (const char* p = text; p < end; ++p) {
        if (*p != CR && *p != LF)
            continue;
        if (*p == CR && p + 1 < end && p[1] == LF)
            return state == FF_NONE ? FF_DOS : FF_MIXED;
        state = AfterTerminator(state, *p == LF ? FF_UNIX : FF_MAC);
        if (state == FF_MIXED)
            return state;
        ++count;
    }
    return state;
}

size_t ExpandTerminators(const char* text, size_t length, size_t count, FileFormat format,
                         char* dst)
{
    const char terminator = format == FF_UNIX ? LF : CR;
    // From the end backwards, so that dst may be text: every byte lands at
    // or behind the place it is read from. Once the two places meet, all
    // terminators are done and the rest is a plain copy.
    size_t in = length;
    size_t out = length + count;
    dst[out] = '\0';
    while (in > 0 && out > in) {
        char ch = text[--in];
        if (ch == terminator) {
            dst[--out] = LF;
            dst[--out] = CR;
        } else {
            dst[--out] = ch;
        }
    }
    if (dst != text)
        memcpy(dst, text, in);
    return length + count;
}

size_t ContractTerminators(const char* text, size_t length, char* dst, FileFormat format)
{
    if (format == FF_DOS) {
        memmove(dst, text, length);
        return length;
    }
    const char terminator = format == FF_UNIX ? LF : CR;
    size_t out = 0;
    for (size_t in = 0; in < length; ++in) {
        char ch = text[in];
        if (ch == CR) {
            if (in + 1 < length && text[in + 1] == LF)
                ++in;
            ch = terminator;
        }
        dst[out++] = ch;
    }
    return out;
}
