#include "tools/ExtractScan.h"

#include "search/Pattern.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace
{

// Writes a match in pieces; a NUL ends the text shown, not the piece.
void WriteMatch(const char* name, const char* text, int length, unsigned long& offset,
                ExtractOutput& output)
{
    while (length > 0) {
        const int piece = length < EXTRACT_PIECE ? length : EXTRACT_PIECE;
        char shown[EXTRACT_PIECE + 1];
        memcpy(shown, text, static_cast<size_t>(piece));
        shown[piece] = '\0';
        char place[32];
        snprintf(place, sizeof place, "(0x%.4lx): ", offset);
        output.Write(std::string(name) + place + shown + "\r\n");
        text += piece;
        offset += static_cast<unsigned long>(piece);
        length -= piece;
    }
}

} // namespace

bool ExtractFromFile(const char* displayName, ExtractInput& input, PatternBuffer* pattern,
                     ExtractOutput& output)
{
    const int size = EXTRACT_WINDOW + EXTRACT_MARGIN;
    std::unique_ptr<char[]> block(new (std::nothrow) char[size]);
    if (!block)
        return false;
    char* const buffer = block.get();
    // A byte that no match can begin with is passed over without a try: any
    // match there would be empty, and an empty match is no match.
    const unsigned char* tr = pattern->translate;
    const bool filter = pattern->map_valid && pattern->can_be_empty != 1;
    output.Poll();
    int remaining = input.Read(buffer, size);
    bool eof = remaining < size;
    int pos = 0;
    unsigned long offset = 0;
    while (remaining != 0) {
        const unsigned char byte = static_cast<unsigned char>(buffer[pos]);
        const int length =
            filter && !pattern->first_char_map[tr ? tr[byte] : byte]
                ? 0
                : MatchPattern(pattern, buffer + pos, remaining, 0, remaining, nullptr);
        if (length > 0) {
            output.Poll();
            WriteMatch(displayName, buffer + pos, length, offset, output);
            pos += length;
            remaining -= length;
        } else { // an empty match is no match
            ++pos;
            ++offset;
            --remaining;
        }
        if (!eof && remaining <= EXTRACT_MARGIN) {
            output.Poll();
            memmove(buffer, buffer + EXTRACT_WINDOW, EXTRACT_MARGIN);
            pos -= EXTRACT_WINDOW;
            const int count = input.Read(buffer + EXTRACT_MARGIN, EXTRACT_WINDOW);
            eof = count < EXTRACT_WINDOW;
            remaining += count;
        }
    }
    return true;
}
