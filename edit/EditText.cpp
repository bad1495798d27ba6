#include "edit/EditText.h"

#include <cctype>
#include <cstring>

namespace
{

bool IsWhite(const char* text, long offset)
{
    return std::isspace(static_cast<unsigned char>(text[offset])) != 0;
}

bool IsBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

// A brace, a parenthesis for continued calls, a colon for labels.
bool OpensBlock(char byte)
{
    return byte == '{' || byte == '(' || byte == ':';
}

bool IsWordAt(const char* text, long offset, WordByteTest isWord)
{
    return isWord(static_cast<unsigned char>(text[offset]));
}

long SkipWhite(const char* text, long offset)
{
    while (IsWhite(text, offset))
        offset++;
    return offset;
}

} // namespace

bool IsAsciiWordByte(unsigned char byte)
{
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z') || byte == '_';
}

// A byte that is no word byte is a word of its own, but a line end or the
// end of the text is none.
long WordEnd(const char* text, long offset, WordByteTest isWord)
{
    long end = offset;
    while (IsWordAt(text, end, isWord))
        end++;
    if (end != offset)
        return end;
    return text[offset] == '\0' || text[offset] == '\r' ? offset : offset + 1;
}

long WordStart(const char* text, long offset, WordByteTest isWord)
{
    while (offset > 0 && IsWordAt(text, offset, isWord) && IsWordAt(text, offset - 1, isWord))
        offset--;
    return offset;
}

long NextWordPos(const char* text, long selStart, long selEnd, int direction, WordByteTest isWord)
{
    switch (direction) {
    case 1:
        return SkipWhite(text, WordEnd(text, selEnd, isWord));
    case 2: {
        const long end = WordEnd(text, selEnd, isWord);
        if (end != selEnd && !IsWhite(text, WordStart(text, selEnd, isWord)))
            return end;
        return WordEnd(text, SkipWhite(text, end), isWord);
    }
    case -1: {
        long start = WordStart(text, selStart, isWord);
        if (start != selStart) // then it lies before the selection's end too
            return start;
        if (start != 0)
            start--;
        while (start != 0 && IsWhite(text, start))
            start--;
        return WordStart(text, start, isWord);
    }
    case -2: {
        if (selStart == 0)
            return 0;
        long end = selStart - 1;
        while (end > 0 && IsWordAt(text, end, isWord))
            end--;
        while (end > 0 && IsWhite(text, end - 1))
            end--;
        return IsWordAt(text, end, isWord) ? end + 1 : end;
    }
    default:
        return selEnd;
    }
}

int IndentColumn(const char* text, long from, int tabSize, long* firstOther)
{
    int column = 0;
    for (; IsBlank(text[from]); ++from)
        column = text[from] == ' ' ? column + 1 : column + tabSize - (column + tabSize) % tabSize;
    if (firstOther)
        *firstOther = from;
    return column;
}

std::string MakeIndent(int column, int tabSize)
{
    return std::string(column / tabSize, '\t') + std::string(column % tabSize, ' ');
}

EnterIndent ComputeEnterIndent(const char* text, long lineStart, long selEnd, bool blockIndent,
                               int tabSize, int shiftWidth)
{
    EnterIndent indent = {IndentColumn(text, lineStart, tabSize), selEnd};
    if (blockIndent) {
        // Back over blanks, across line starts if need be.
        long last = selEnd - 1;
        while (last >= 0 && IsBlank(text[last]))
            last--;
        if (last >= 0 && OpensBlock(text[last]))
            indent.column += shiftWidth;
    }
    while (IsBlank(text[indent.blanksEnd]))
        indent.blanksEnd++;
    return indent;
}

long MatchBrace(const char* text, long size, long position)
{
    static const char kBraces[] = "([{)]}";
    auto braceAt = [&](long offset) -> const char* {
        return text[offset] != '\0' ? std::strchr(kBraces, text[offset]) : nullptr;
    };
    const char* brace = braceAt(position);
    if (!brace) {
        if (position == 0)
            return -1;
        brace = braceAt(--position);
        if (!brace)
            return -1;
    }
    const long kind = brace - kBraces;
    const bool forward = kind < 3;
    const char partner = kBraces[forward ? kind + 3 : kind - 3];
    const long step = forward ? 1 : -1;
    int depth = 1;
    for (long at = position + step; at >= 0 && at < size; at += step) {
        if (text[at] == partner && --depth == 0)
            return at;
        if (text[at] == *brace)
            depth++;
    }
    return -1;
}

void ChangeCaseBytes(char* bytes, long length, int mode, const CaseMap& cases)
{
    for (long i = 0; i < length; ++i) {
        const unsigned char c = static_cast<unsigned char>(bytes[i]);
        bool upper = mode == 0;
        if (mode == 2)
            upper = !cases.isUpper(c);
        else if (mode == 3)
            upper = i == 0;
        bytes[i] = static_cast<char>(upper ? cases.upper(c) : cases.lower(c));
    }
}
