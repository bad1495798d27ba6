// Compiles any pattern and searches any text with it in both directions,
// and checks the search against a plain position-by-position search.
//
// Input: a flag byte (bit 0 folds case), a pattern length byte, the pattern,
// then the text.
#include "search/Pattern.h"

#include <stdint.h>
#include <stdlib.h>
#include <string.h>

namespace {

// Backtracking time grows with the text length to the power of the number
// of repeats; the text is cut so that every input ends quickly.
size_t TextLimit(const uint8_t* pattern, size_t length)
{
    int repeats = 0;
    for (size_t i = 0; i < length; ++i)
        if (pattern[i] == '*' || pattern[i] == '+' || pattern[i] == '?')
            repeats++;
    if (repeats == 0)
        return 1 << 16;
    if (repeats == 1)
        return 4500; // past the failure stack's ceiling
    static const size_t kLimit[] = {0, 0, 12, 9, 7, 6, 5};
    return repeats < 7 ? kLimit[repeats] : 4;
}

bool Passes(const PatternBuffer& pb, uint8_t c)
{
    return pb.first_char_map[pb.translate ? pb.translate[c] : c] != 0;
}

// The search loop one position at a time, without the accelerations.
int PlainSearch(PatternBuffer* pb, const char* text, int size, int pos, int range,
                MatchRegisters* regs)
{
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(text);
    if (range == 0 || pos < 0 || pos > size)
        return MATCH_NOT_FOUND;
    if (range < -pos)
        range = -pos;
    if (range == 0)
        return MATCH_NOT_FOUND;
    for (;;) {
        bool tryHere = true;
        if (pos < size && pb->can_be_empty != 1) {
            if (range > 0) {
                while (range > 0 && pos < size && !Passes(*pb, bytes[pos])) {
                    pos++;
                    range--;
                }
            } else {
                tryHere = Passes(*pb, bytes[pos]);
            }
        }
        if (range >= 0 && pos == size && pb->can_be_empty == 0)
            return MATCH_NOT_FOUND;
        if (tryHere) {
            int length = MatchPattern(pb, text, size, pos, size, regs);
            if (length >= 0)
                return pos;
            if (length == MATCH_STACK_EXHAUSTED)
                return length;
        }
        if (range > 0) {
            if (pos >= size)
                return MATCH_NOT_FOUND;
            range--;
            pos++;
        } else if (range < 0) {
            range++;
            pos--;
            if (pos == 0 && range == 0)
                range = -1;
        }
        if (range == 0)
            return MATCH_NOT_FOUND;
    }
}

struct Buffer {
    PatternBuffer pb;
    ~Buffer() { free(pb.buffer); }
};

void Check(bool ok)
{
    if (!ok)
        abort();
}

void Compare(const uint8_t* pattern, int length, bool fold, const char* text, int size,
             int start, int range)
{
    Buffer fast, plain;
    fast.pb.fold_case = plain.pb.fold_case = fold ? 1 : 0;
    const char* p = reinterpret_cast<const char*>(pattern);
    int result = CompilePattern(p, length, &fast.pb);
    Check(result >= PATTERN_OK && result <= PATTERN_UNMATCHED_CLOSE);
    Check(CompilePattern(p, length, &plain.pb) == result);
    if (result != PATTERN_OK)
        return;
    Check(fast.pb.used <= PATTERN_MAX_CODE);
    BuildFirstCharMap(&fast.pb);
    BuildFirstCharMap(&plain.pb);
    MatchRegisters a, b;
    memset(&a, 0x55, sizeof a);
    memset(&b, 0x55, sizeof b);
    int got = SearchPattern(&fast.pb, text, size, start, range, &a);
    int want = PlainSearch(&plain.pb, text, size, start, range, &b);
    Check(got == want);
    Check(memcmp(&a, &b, sizeof a) == 0);
    if (got >= 0) {
        Check(a.start[0] == got && a.end[0] >= got && a.end[0] <= size);
        for (int g = 1; g < PATTERN_GROUPS; ++g)
            Check((a.start[g] == -1) == (a.end[g] == -1));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2)
        return 0;
    bool fold = data[0] & 1;
    size_t length = data[1];
    data += 2;
    size -= 2;
    if (length > size)
        length = size;
    const uint8_t* pattern = data;
    size_t textSize = size - length;
    size_t limit = TextLimit(pattern, length);
    if (textSize > limit)
        textSize = limit;
    // Copies, so that reading past either end is caught.
    uint8_t* ownPattern = static_cast<uint8_t*>(malloc(length + 1));
    memcpy(ownPattern, pattern, length);
    char* text = static_cast<char*>(malloc(textSize + 1));
    memcpy(text, data + length, textSize);
    int n = static_cast<int>(textSize);
    int len = static_cast<int>(length);

    Compare(ownPattern, len, fold, text, n, 0, n);         // forward over all
    Compare(ownPattern, len, fold, text, n, n, -n);        // backward from the end
    Compare(ownPattern, len, fold, text, n, n / 3, n / 2); // a part of the text
    Compare(ownPattern, len, fold, text, n, n / 2, -(n / 3) - 1);
    free(text);
    free(ownPattern);
    return 0;
}
