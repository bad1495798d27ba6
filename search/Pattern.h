// The regular-expression engine: a one-pass compiler from the pattern text
// to byte code, and a backtracking matcher over that code. Platform-free.
#pragma once

#include <stdint.h>

// Op numbers of the compiled code. The matcher patches ops in place and the
// first-character walk reads them, so the numbers are fixed.
enum PatternOp : unsigned char {
    OP_LITERAL = 1,             // count (1 to 127), then the bytes
    OP_LINE_START = 2,          //
    OP_LINE_END = 3,            //
    OP_JUMP = 4,                // displacement
    OP_ON_FAILURE_JUMP = 5,     // displacement
    OP_FINALIZE_JUMP = 6,       // displacement
    OP_MAYBE_FINALIZE_JUMP = 7, // displacement
    OP_DUMMY_FAILURE_JUMP = 8,  // displacement
    OP_ANY_CHAR = 9,            //
    OP_CHAR_SET = 10,           // map length (0 to 32), then the map
    OP_CHAR_SET_NOT = 11,       // map length, then the map
    OP_GROUP_START = 12,        // group number (1 to 9)
    OP_GROUP_END = 13,          // group number
    OP_BACK_REF = 14,           // group number
    OP_WORD_START = 18,         //
    OP_WORD_END = 19,           //
};

enum PatternResult {
    PATTERN_OK = 0,
    PATTERN_NO_MEMORY = 1,
    PATTERN_INVALID = 2,
    PATTERN_TOO_COMPLEX = 3,
    PATTERN_UNMATCHED_OPEN = 4,
    PATTERN_UNMATCHED_CLOSE = 5,
};

enum {
    MATCH_NOT_FOUND = -1,
    MATCH_STACK_EXHAUSTED = -2,
};

enum {
    PATTERN_MAX_CODE = 16384, // bytes of compiled code
    PATTERN_MAX_DEPTH = 10,   // groups open at once
    PATTERN_GROUPS = 10,      // register entries: the whole match and groups 1 to 9
};

// Upper-case folding of ASCII letters; every other byte maps to itself.
extern const unsigned char FoldTable[256];
// 1 for digits, letters and '_'.
extern const unsigned char WordCharTable[256];

// The one-byte ops and loops over one-byte bodies that the code starts
// with, behind a line start, and the literal that follows them (".*x",
// "^[ \t]*}"). Derived with the map for the forward search.
struct PatternLead {
    int16_t needed = -1;          // the literal's first byte; -1 for other code
    uint8_t loops = 0;            // how many of the ops are loops, at most 8
    uint8_t breaks = 0;           // how many bytes no op takes; 3 for more than 2
    uint8_t alone = 0;            // 1 when the code is one loop and one literal byte
    unsigned char broken[2] = {}; // those bytes
    int16_t jumps[8] = {};        // where the loops' back jumps stand
    uint64_t takes[4] = {};       // the text bytes that an op takes, a bit each
};

// One compiled pattern, owned by its caller. `buffer` is a malloc block that
// the compiler grows with realloc and keeps between compilations; the caller
// frees it. A zeroed record is ready to compile into.
struct PatternBuffer {
    unsigned char* buffer = nullptr;
    uint32_t allocated = 0;
    uint32_t used = 0;
    unsigned char fold_case = 0;
    unsigned char has_line_start = 0;
    unsigned char has_line_end = 0;
    const unsigned char* translate = nullptr;
    unsigned char first_char_map[256] = {};
    unsigned char map_valid = 0;
    unsigned char can_be_empty = 0;
    // Derived with the map: the one text byte that passes the map, or -1.
    int16_t first_byte = -1;
    PatternLead lead;
};

struct MatchRegisters {
    int32_t start[PATTERN_GROUPS];
    int32_t end[PATTERN_GROUPS];
};

// The literal that every match holds, behind nothing but ops that take no
// text (a line start or end, a word edge, a group's edge) and that no jump
// leads back to: text without it holds no match, so a caller may pass over
// such text unsearched.
struct PatternNeedle {
    const unsigned char* bytes = nullptr; // as the code holds them, folded when folding
    int length = 0;                       // 0 when the code has no such literal
    int rare = 0;                         // the index of its least common byte
    const unsigned char* translate = nullptr;
};

// Compiles `length` bytes of `pattern` into `pb` (set `fold_case` first).
// The byte after the pattern need not be readable.
int CompilePattern(const char* pattern, int length, PatternBuffer* pb);

// Fills `first_char_map` and `can_be_empty` and sets `map_valid`.
void BuildFirstCharMap(PatternBuffer* pb);

// The pattern's needle; its length is 0 if it has none. Valid while the
// compiled code is.
PatternNeedle FindPatternNeedle(const PatternBuffer* pb);

// The first place in [text, text + size) where the whole needle stands, or -1.
int FindNeedle(const PatternNeedle& needle, const char* text, int size);

// Tries positions start, start+1, ... (range > 0) or start, start-1, ...
// (range < 0). Returns the position of the first match, MATCH_NOT_FOUND or
// MATCH_STACK_EXHAUSTED.
int SearchPattern(PatternBuffer* pb, const char* text, int size, int start, int range,
                  MatchRegisters* regs);

// Matches at `pos`, consuming no text at or beyond `stop`. Returns the length
// of the match, MATCH_NOT_FOUND or MATCH_STACK_EXHAUSTED.
int MatchPattern(PatternBuffer* pb, const char* text, int size, int pos, int stop,
                 MatchRegisters* regs);
