// Compiles any pattern and searches any text with it in both directions,
// and checks every result against a build of the engine without its
// shortcuts, whose functions carry the prefix Plain.
//
// Input: a flag byte (bit 0 folds case), a pattern length byte, the pattern,
// then the text.
#include "search/Pattern.h"

#include <stdint.h>
#include <stdlib.h>
#include <string.h>

int PlainCompilePattern(const char* pattern, int length, PatternBuffer* pb);
void PlainBuildFirstCharMap(PatternBuffer* pb);
int PlainSearchPattern(PatternBuffer* pb, const char* text, int size, int start, int range,
                       MatchRegisters* regs);

namespace
{

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

struct Buffer {
    PatternBuffer pb;
    ~Buffer() { free(pb.buffer); }
};

void Check(bool ok)
{
    if (!ok)
        abort();
}

void Compare(const uint8_t* pattern, int length, bool fold, const char* text, int size, int start,
             int range)
{
    Buffer fast, plain;
    fast.pb.fold_case = plain.pb.fold_case = fold ? 1 : 0;
    const char* p = reinterpret_cast<const char*>(pattern);
    int result = CompilePattern(p, length, &fast.pb);
    Check(result >= PATTERN_OK && result <= PATTERN_UNMATCHED_CLOSE);
    Check(PlainCompilePattern(p, length, &plain.pb) == result);
    if (result != PATTERN_OK)
        return;
    Check(fast.pb.used <= PATTERN_MAX_CODE);
    BuildFirstCharMap(&fast.pb);
    PlainBuildFirstCharMap(&plain.pb);
    MatchRegisters a, b;
    memset(&a, 0x55, sizeof a);
    memset(&b, 0x55, sizeof b);
    // Without registers first, while loops may still be unpatched.
    int where = SearchPattern(&fast.pb, text, size, start, range, nullptr);
    int got = SearchPattern(&fast.pb, text, size, start, range, &a);
    int want = PlainSearchPattern(&plain.pb, text, size, start, range, &b);
    Check(got == want && where == want);
    Check(memcmp(&a, &b, sizeof a) == 0);
    Check(fast.pb.used == plain.pb.used &&
          memcmp(fast.pb.buffer, plain.pb.buffer, fast.pb.used) == 0); // the same patches
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
