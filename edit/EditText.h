// The editor's scans over the control's text block: the word rule and the
// word motions, indentation, brace matching and case changes. The text is
// NUL-terminated with CR LF line ends; scans stop at the NUL. Platform-free.
#pragma once
#include "search/CaseMap.h"

#include <string>

// Whether a byte belongs to a word (the window code passes the code page's
// alphanumeric test with '_').
using WordByteTest = bool (*)(unsigned char);
bool IsAsciiWordByte(unsigned char byte);

long WordStart(const char* text, long offset, WordByteTest isWord);
long WordEnd(const char* text, long offset, WordByteTest isWord);
// direction 1 next word's start, 2 next word's end, -1 previous word's
// start, -2 previous word's end; selStart and selEnd are the selection.
long NextWordPos(const char* text, long selStart, long selEnd, int direction, WordByteTest isWord);

// Column of the blanks that begin at `from` (a tab goes to the next multiple
// of tabSize); `firstOther` receives the offset of the first other byte.
int IndentColumn(const char* text, long from, int tabSize, long* firstOther = nullptr);
// Tabs as far as they fit, then spaces.
std::string MakeIndent(int column, int tabSize);

// What Enter does with Maintain Indentation: the caret line starts at
// `lineStart`, the selection ends at `selEnd`.
struct EnterIndent {
    int column;     // indent of the new line
    long blanksEnd; // end of the blanks after selEnd (selEnd when none)
};
EnterIndent ComputeEnterIndent(const char* text, long lineStart, long selEnd, bool blockIndent,
                               int tabSize, int shiftWidth);

// The partner of the brace at `position`, or just before it; -1 if there
// is none or no brace.
long MatchBrace(const char* text, long size, long position);

// Case change of `length` bytes in place: mode 0 upper, 1 lower, 2 toggle,
// 3 capitalise (first byte upper, the rest lower).
void ChangeCaseBytes(char* bytes, long length, int mode, const CaseMap& cases);
