#include "views/ViewLayout.h"

#include <cstdio>
#include <cstring>

namespace
{

int32_t NextColumn(int32_t column, char byte, int tabWidth)
{
    return byte == '\t' ? column - column % tabWidth + tabWidth : column + 1;
}

} // namespace

int32_t TextColumnOf(const char* line, int length, int32_t col, int tabWidth)
{
    int32_t column = 0;
    for (int32_t i = 0; i < col; ++i)
        column = NextColumn(column, i < length ? line[i] : ' ', tabWidth);
    return column;
}

int32_t TextByteAt(const char* line, int length, int32_t& dispCol, int tabWidth)
{
    int32_t col = 0, column = 0;
    while (column < dispCol && col < length)
        column = NextColumn(column, line[col++], tabWidth);
    dispCol = column;
    return col;
}

int32_t HexColumnOf(int32_t byte)
{
    const int32_t column = byte / 4 + byte * 2 + HEX_FIRST_COL;
    return column < HEX_END_COL ? column : HEX_END_COL;
}

// A group of four bytes takes nine columns, but the divisor is 8: clicks
// near the row's end round a little differently from those near its start,
// as they always have.
int32_t HexByteAt(int32_t dispCol)
{
    if (dispCol >= HEX_END_COL)
        return HEX_ROW_BYTES;
    const int32_t d = (dispCol > HEX_FIRST_COL ? dispCol : HEX_FIRST_COL) - HEX_FIRST_COL;
    return (d - d / 8 + 1) / 2;
}

// Bytes whose low seven bits make a control character show as a dot:
// 0x7F and 0xA0 up show as they are, 0x80 to 0x9F as dots.
int FormatHexRow(uint32_t offset, const unsigned char* bytes, int count, char row[HEX_ROW_SIZE])
{
    static const char digits[] = "0123456789ABCDEF";
    memset(row, ' ', HEX_ROW_SIZE);
    snprintf(row, HEX_ROW_SIZE, "%8lX:", static_cast<unsigned long>(offset));
    row[9] = ' ';
    for (int k = 0; k < count; ++k) {
        char* hex = row + HEX_FIRST_COL + 2 * k + k / 4;
        hex[0] = digits[bytes[k] >> 4];
        hex[1] = digits[bytes[k] & 15];
        row[HEX_CHAR_COL + k] = (bytes[k] & 0x7F) >= ' ' ? static_cast<char>(bytes[k]) : '.';
    }
    const int length = HEX_CHAR_COL + count;
    row[length] = '\0';
    return length;
}
