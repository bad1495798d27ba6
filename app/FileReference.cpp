#include "app/FileReference.h"

#include <cstring>

namespace
{

bool IsBlank(char ch)
{
    return ch == ' ' || (ch >= '\t' && ch <= '\r');
}
bool IsDigit(char ch)
{
    return ch >= '0' && ch <= '9';
}

// Lower case as the ANSI code page of Windows has it: A to Z and the
// Latin-1 capitals 0xC0 to 0xDE, but for the multiplication sign 0xD7.
char FoldAnsi(char ch)
{
    unsigned char byte = static_cast<unsigned char>(ch);
    if ((byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7))
        return static_cast<char>(byte + 0x20);
    return ch;
}

int HexValue(char ch)
{
    if (IsDigit(ch))
        return ch - '0';
    if (ch >= 'a' && ch <= 'f')
        return ch - 'a' + 10;
    if (ch >= 'A' && ch <= 'F')
        return ch - 'A' + 10;
    return -1;
}

// Reads decimal digits from text[at]; the value, with at behind them.
uint32_t ReadDecimal(const char* text, int& at)
{
    uint32_t value = 0;
    while (IsDigit(text[at]))
        value = value * 10 + static_cast<uint32_t>(text[at++] - '0');
    return value;
}

uint32_t ReadHex(const char* text, int& at)
{
    uint32_t value = 0;
    for (int digit; (digit = HexValue(text[at])) >= 0; ++at)
        value = value * 16 + static_cast<uint32_t>(digit);
    return value;
}

// Copies the name that ends before open (and its white space) into
// request.name; false when there is none.
bool TakeName(const char* text, int open, OpenRequest& request)
{
    int end = open;
    while (end > 0 && IsBlank(text[end - 1]))
        --end;
    int start = end;
    while (start > 0 && !IsBlank(text[start - 1]))
        --start;
    if (start == end)
        return false;
    int length = end - start;
    if (length > static_cast<int>(sizeof request.name) - 1)
        length = sizeof request.name - 1;
    for (int i = 0; i < length; ++i)
        request.name[i] = FoldAnsi(text[start + i]);
    request.name[length] = '\0';
    return true;
}

} // namespace

int ParseFileReference(const char* text, int length, OpenRequest& request)
{
    if (length <= 0)
        return 0;
    const char* open = static_cast<const char*>(memchr(text, '(', static_cast<size_t>(length)));
    if (!open)
        return 0;
    const int at = static_cast<int>(open - text);
    const char* close =
        static_cast<const char*>(memchr(open, ')', static_cast<size_t>(length - at)));
    if (!close || !TakeName(text, at, request))
        return 0;

    int pos = at + 1;
    while (IsBlank(text[pos]))
        ++pos;
    if (text[pos] == ')')
        return 0;
    request.line = 0;
    request.column = 0;
    const int result = static_cast<int>(close - text) + 1;

    if (text[pos] == '0' && (text[pos + 1] == 'x' || text[pos + 1] == 'X')) {
        pos += 2;
        request.address = 1;
        request.line = ReadHex(text, pos);
        return result;
    }
    request.address = 0;
    request.line = ReadDecimal(text, pos);
    if (request.line == 0)
        return 0;
    while (text[pos] != ')' && !IsDigit(text[pos]))
        ++pos;
    request.column = ReadDecimal(text, pos);
    return result;
}
