// One pass from the pattern text to byte code, emitting while it reads.
#include "search/Pattern.h"

#include <stdlib.h>
#include <string.h>

namespace
{

const int kFirstAllocation = 28;
// Room that any element but a set needs; a repeat adds three jumps.
const int kElementRoom = 10;
// An op, its length byte and a full 32-byte map, plus one.
const int kSetRoom = 35;

struct OpenGroup {
    int codeStart; // just behind the group's OP_GROUP_START
    int number;
};

class Compiler
{
  public:
    Compiler(const unsigned char* pattern, int length, PatternBuffer* pb)
        : m_pat(pattern), m_len(length), m_pb(pb)
    {
    }

    int Run();

  private:
    int Next() { return Fold(m_pat[m_pos++]); }
    int Fold(int c) const { return m_pb->translate ? m_pb->translate[c] : c; }
    // The raw byte k places ahead of the read position; 0 past the end, as
    // the terminating NUL of the caller's text would read.
    int Peek(int k) const { return m_pos + k < m_len ? m_pat[m_pos + k] : 0; }
    unsigned char* Code() const { return m_pb->buffer; }

    int Reserve(int room);
    void Emit(int byte) { Code()[m_b++] = static_cast<unsigned char>(byte); }
    void PutDisplacement(int at, int disp);
    void EmitLiteral(int c);
    void EmitRepeat(int first);
    int EmitSet();
    int EmitEscape();
    bool GroupIsOpen(int number) const;

    const unsigned char* m_pat;
    int m_len;
    PatternBuffer* m_pb;
    int m_pos = 0;
    int m_b = 0;     // code write position
    int m_prev = -1; // start of the previous element
    int m_lit = -1;  // count byte of the literal that may still grow
    OpenGroup m_groups[PATTERN_MAX_DEPTH];
    int m_depth = 0;
    int m_nextGroup = 1;
};

int Compiler::Reserve(int room)
{
    while (static_cast<int>(m_pb->allocated) - room < m_b) {
        if (m_pb->allocated >= PATTERN_MAX_CODE)
            return PATTERN_TOO_COMPLEX;
        uint32_t size = m_pb->allocated * 2;
        if (size > PATTERN_MAX_CODE)
            size = PATTERN_MAX_CODE;
        void* grown = realloc(m_pb->buffer, size);
        if (!grown)
            return PATTERN_NO_MEMORY;
        m_pb->buffer = static_cast<unsigned char*>(grown);
        m_pb->allocated = size;
    }
    return PATTERN_OK;
}

// Displacements are relative to the byte behind them, low byte first.
void Compiler::PutDisplacement(int at, int disp)
{
    Code()[at] = static_cast<unsigned char>(disp & 0xFF);
    Code()[at + 1] = static_cast<unsigned char>((disp >> 8) & 0xFF);
}

// A byte is added to the open literal unless a repeat or a '^' follows: the
// look-ahead sees '*' and '^' only, so in "ab+" and "ab?" the repeat takes
// the whole literal "ab" while in "ab*" it takes the 'b' alone. Users rely
// on that difference.
void Compiler::EmitLiteral(int c)
{
    int next = Peek(0);
    if (m_lit < 0 || m_lit + 1 + Code()[m_lit] != m_b || Code()[m_lit] == 127 || next == '*' ||
        next == '^') {
        m_prev = m_b;
        m_lit = m_b + 1;
        Emit(OP_LITERAL);
        Emit(0);
    }
    Emit(c);
    Code()[m_lit]++;
}

// `first` is the first of a run of '*', '+' and '?', all counted as one repeat
// of the code from the previous element up to the write position.
void Compiler::EmitRepeat(int first)
{
    bool zero = first != '+';
    bool many = first != '?';
    while (m_pos < m_len && (Peek(0) == '*' || Peek(0) == '+' || Peek(0) == '?')) {
        int c = Next();
        zero = zero || c != '+';
        many = many || c != '?';
    }
    unsigned char* code = Code();
    int x = m_prev;
    if (many) {
        // Aimed at x, where the on-failure jump goes, from behind its
        // displacement once shifted up by three.
        code[m_b] = OP_MAYBE_FINALIZE_JUMP;
        PutDisplacement(m_b + 1, x - (m_b + 6));
        m_b += 3;
    }
    memmove(code + x + 3, code + x, m_b - x);
    m_b += 3;
    code[x] = OP_ON_FAILURE_JUMP;
    PutDisplacement(x + 1, m_b - (x + 3));
    m_lit = -1;
    if (!zero) {
        memmove(code + x + 3, code + x, m_b - x);
        m_b += 3;
        code[x] = OP_DUMMY_FAILURE_JUMP;
        PutDisplacement(x + 1, 3);
    }
}

// Reads a set after its '['. Folding happens before the set is built, so
// with folding "[a-z]" holds 'A' to 'Z' and "[Z-a]" is an empty range.
int Compiler::EmitSet()
{
    int result = Reserve(kSetRoom);
    if (result != PATTERN_OK)
        return result;
    m_prev = m_b;
    bool negated = Peek(0) == '^';
    if (negated)
        m_pos++;
    Emit(negated ? OP_CHAR_SET_NOT : OP_CHAR_SET);
    unsigned char* map = Code() + m_b + 1;
    memset(map, 0, 32);
    int first = m_pos;
    for (;;) {
        if (m_pos >= m_len)
            return PATTERN_INVALID;
        int c = Next();
        if (c == ']' && m_pos - 1 != first)
            break;
        if (Peek(0) == '-' && Peek(1) != ']') {
            if (m_pos + 1 >= m_len)
                return PATTERN_INVALID;
            m_pos++;
            for (int hi = Next(); c <= hi; ++c)
                map[c >> 3] |= static_cast<unsigned char>(1 << (c & 7));
            continue;
        }
        if (c == '\\' && Peek(0) == 't') {
            m_pos++;
            c = '\t';
        }
        map[c >> 3] |= static_cast<unsigned char>(1 << (c & 7));
    }
    int length = 32;
    while (length > 0 && map[length - 1] == 0)
        length--;
    Code()[m_b] = static_cast<unsigned char>(length);
    m_b += 1 + length;
    return PATTERN_OK;
}

bool Compiler::GroupIsOpen(int number) const
{
    for (int i = 0; i < m_depth; ++i)
        if (m_groups[i].number == number)
            return true;
    return false;
}

int Compiler::EmitEscape()
{
    if (m_pos >= m_len)
        return PATTERN_INVALID;
    int c = m_pat[m_pos++];
    switch (c) {
    case '<':
        Emit(OP_WORD_START);
        return PATTERN_OK;
    case '>':
        Emit(OP_WORD_END);
        return PATTERN_OK;
    case 't':
        EmitLiteral('\t');
        return PATTERN_OK;
    case '(':
        if (m_depth == PATTERN_MAX_DEPTH)
            return PATTERN_TOO_COMPLEX;
        if (m_nextGroup < PATTERN_GROUPS) {
            Emit(OP_GROUP_START);
            Emit(m_nextGroup);
        } else {
            // Groups past the ninth leave no op behind; closing the literal
            // keeps their contents an element of their own.
            m_lit = -1;
        }
        m_groups[m_depth++] = OpenGroup{m_b, m_nextGroup++};
        m_prev = -1;
        return PATTERN_OK;
    case ')': {
        if (m_depth == 0)
            return PATTERN_UNMATCHED_CLOSE;
        const OpenGroup& group = m_groups[--m_depth];
        if (group.number < PATTERN_GROUPS) {
            Emit(OP_GROUP_END);
            Emit(group.number);
        } else {
            m_lit = -1;
        }
        // A repeat of the group leaves its start outside the loop, so the
        // group spans from its first iteration to the end of its last.
        m_prev = group.codeStart;
        return PATTERN_OK;
    }
    default:
        break;
    }
    if (c >= '1' && c <= '9') {
        int n = c - '0';
        if (n < m_nextGroup && !GroupIsOpen(n)) {
            m_prev = m_b;
            Emit(OP_BACK_REF);
            Emit(n);
            return PATTERN_OK;
        }
    }
    EmitLiteral(Fold(c));
    return PATTERN_OK;
}

int Compiler::Run()
{
    while (m_pos < m_len) {
        int result = Reserve(kElementRoom);
        if (result != PATTERN_OK)
            return result;
        int c = Next();
        switch (c) {
        case '$':
            if (m_pos == m_len || Peek(0) == '\n' || (Peek(0) == '\\' && Peek(1) == ')')) {
                m_pb->has_line_end = 1;
                Emit(OP_LINE_END);
                continue;
            }
            break;
        case '^':
            // The previous element stays, so "^*" is an anchor and a star.
            if (m_prev < 0 || (m_pos >= 2 && m_pat[m_pos - 2] == '\n')) {
                m_pb->has_line_start = 1;
                Emit(OP_LINE_START);
                continue;
            }
            break;
        case '.':
            m_prev = m_b;
            Emit(OP_ANY_CHAR);
            continue;
        case '*':
        case '+':
        case '?':
            if (m_prev >= 0) {
                EmitRepeat(c);
                continue;
            }
            break;
        case '[':
            result = EmitSet();
            if (result != PATTERN_OK)
                return result;
            continue;
        case '\\':
            result = EmitEscape();
            if (result != PATTERN_OK)
                return result;
            continue;
        default:
            break;
        }
        EmitLiteral(c);
    }
    if (m_depth > 0)
        return PATTERN_UNMATCHED_OPEN;
    m_pb->used = static_cast<uint32_t>(m_b);
    return PATTERN_OK;
}

} // namespace

#define KM_ROW16(f, b)                                                                             \
    f(b + 0), f(b + 1), f(b + 2), f(b + 3), f(b + 4), f(b + 5), f(b + 6), f(b + 7), f(b + 8),      \
        f(b + 9), f(b + 10), f(b + 11), f(b + 12), f(b + 13), f(b + 14), f(b + 15)
#define KM_TABLE256(f)                                                                             \
    KM_ROW16(f, 0), KM_ROW16(f, 16), KM_ROW16(f, 32), KM_ROW16(f, 48), KM_ROW16(f, 64),            \
        KM_ROW16(f, 80), KM_ROW16(f, 96), KM_ROW16(f, 112), KM_ROW16(f, 128), KM_ROW16(f, 144),    \
        KM_ROW16(f, 160), KM_ROW16(f, 176), KM_ROW16(f, 192), KM_ROW16(f, 208), KM_ROW16(f, 224),  \
        KM_ROW16(f, 240)
#define KM_FOLD(c) static_cast<unsigned char>((c) >= 'a' && (c) <= 'z' ? (c) - 'a' + 'A' : (c))
#define KM_WORD(c)                                                                                 \
    static_cast<unsigned char>(((c) >= '0' && (c) <= '9') || ((c) >= 'A' && (c) <= 'Z') ||         \
                               ((c) >= 'a' && (c) <= 'z') || (c) == '_')

const unsigned char FoldTable[256] = {KM_TABLE256(KM_FOLD)};
const unsigned char WordCharTable[256] = {KM_TABLE256(KM_WORD)};

int CompilePattern(const char* pattern, int length, PatternBuffer* pb)
{
    pb->translate = pb->fold_case ? FoldTable : nullptr;
    pb->has_line_start = 0;
    pb->has_line_end = 0;
    pb->map_valid = 0;
    if (pb->allocated == 0) {
        void* block = realloc(pb->buffer, kFirstAllocation);
        if (!block)
            return PATTERN_NO_MEMORY;
        pb->buffer = static_cast<unsigned char*>(block);
        pb->allocated = kFirstAllocation;
    }
    if (length < 0)
        length = 0;
    Compiler compiler(reinterpret_cast<const unsigned char*>(pattern), length, pb);
    return compiler.Run();
}
