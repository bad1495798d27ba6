#include "search/CaseMap.h"

namespace
{

bool IsAsciiUpper(unsigned char byte)
{
    return byte >= 'A' && byte <= 'Z';
}

bool IsAsciiLower(unsigned char byte)
{
    return byte >= 'a' && byte <= 'z';
}

unsigned char AsciiUpper(unsigned char byte)
{
    return IsAsciiLower(byte) ? static_cast<unsigned char>(byte - 'a' + 'A') : byte;
}

unsigned char AsciiLower(unsigned char byte)
{
    return IsAsciiUpper(byte) ? static_cast<unsigned char>(byte - 'A' + 'a') : byte;
}

} // namespace

const CaseMap AsciiCaseMap = {AsciiUpper, AsciiLower, IsAsciiUpper};
