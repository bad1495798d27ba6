// The texts of kelmar.ini as the program reads and writes them: numbers in
// a radix, fields behind commas, a session window's value and the frame's
// remembered place. No windows here.
#pragma once
#include <string>

// The value as _itoa writes it: base 10 with a sign, base 2 as the bits of
// the 32-bit word.
std::string FormatSetting(long value, int radix);
// strtoul of text in 32 bits: leading blanks and a sign are taken, reading
// stops at the first character that is no digit, and a value past 32 bits
// gives all bits set.
unsigned long ParseSetting(const char* text, int radix);

// Reads up to count decimal fields, each behind the comma of the one
// before, so "1,,3" is 1, 0, 3 and "1" is one field; how many were read.
int ParseFields(const char* text, long* fields, int count);

// The frame's place as the key Window gives it. Fields that the text
// holds replace those of the default: left and top are raised to 0,
// right and bottom capped at the screen; so a frame off the left edge
// moves in but does not keep its size.
struct Placement {
    long left, top, right, bottom;
    int maximised;
};
void ParsePlacement(const char* text, long screenWidth, long screenHeight, Placement& placement);

// A session window's value: a path, a comma and the window's flags. The
// last comma separates, so a path may hold commas; false, with the whole
// value as path, when there is none or it stands first. Nothing but
// blanks behind it gives flags 0.
bool SplitSessionValue(const std::string& value, std::string& path, unsigned long& flags);
