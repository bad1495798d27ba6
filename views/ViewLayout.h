// How the views lay out a record in display columns: tab stops in a text
// line, and the fixed row of the hex view. Platform-free.
#pragma once
#include <cstdint>

// The display column in front of byte col of a line of length bytes.
int32_t TextColumnOf(const char* line, int length, int32_t col, int tabWidth);
// The byte whose front is at or, on a tab's blank area, just behind
// display column dispCol; dispCol gets the column reached.
int32_t TextByteAt(const char* line, int length, int32_t& dispCol, int tabWidth);

enum {
    HEX_ROW_BYTES = 16,
    HEX_FIRST_COL = 10, // the first byte's hex digits
    HEX_END_COL = 45,   // behind the last byte's digits
    HEX_CHAR_COL = 47,  // the bytes as characters
    HEX_ROW_SIZE = 64,  // a formatted row, its NUL included
};

// The display column of byte index byte (0 to 16) in a hex row.
int32_t HexColumnOf(int32_t byte);
// The byte index (0 to 16) that a click at display column dispCol means.
int32_t HexByteAt(int32_t dispCol);
// The row at offset with its count bytes (0 to 16): address, hex digits in
// groups of four and the characters. The length of the text in row.
int FormatHexRow(uint32_t offset, const unsigned char* bytes, int count, char row[HEX_ROW_SIZE]);
