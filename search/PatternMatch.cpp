// Runs compiled patterns: the first-character map, matching at one position
// by depth-first backtracking, and searching a range in either direction.
#include "search/ByteFind.h"
#include "search/Pattern.h"

#include <stdlib.h>
#include <string.h>

namespace
{

// The shortcuts below change no result; a build without them serves as the
// reference that they are checked against.
#ifdef KM_PATTERN_PLAIN
constexpr bool kShortcuts = false;
#else
constexpr bool kShortcuts = true;
#endif

const int kLocalPoints = 128;
// A full stack of more than 16384 bytes of 8-byte pairs doesn't grow for an
// on-failure jump, so 4096 points is the ceiling.
const int kLargestGrowing = 16384 / 8;
const int kWalkDepth = 128;
// A byte past the end of the code, which equals no byte.
const int kNoByte = 256;

int Displacement(const unsigned char* at)
{
    return static_cast<int16_t>(static_cast<uint16_t>(at[0] | (at[1] << 8)));
}

bool InSet(const unsigned char* op, int c)
{
    int length = op[1];
    bool member = c < length * 8 && (op[2 + (c >> 3)] & (1 << (c & 7))) != 0;
    return op[0] == OP_CHAR_SET ? member : !member;
}

// The length of an op that consumes exactly one byte, or 0 for any other.
int OneByteOpLength(const unsigned char* op)
{
    switch (op[0]) {
    case OP_ANY_CHAR:
        return 1;
    case OP_CHAR_SET:
    case OP_CHAR_SET_NOT:
        return 2 + op[1];
    case OP_LITERAL:
        return op[1] == 1 ? 3 : 0;
    default:
        return 0;
    }
}

// The text bytes that fold to the code byte c: c and, when folding an upper
// case letter, its lower case.
unsigned char Unfolded(unsigned char c, const unsigned char* tr)
{
    return tr && c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

// The first of the bytes a and b in [s, end), or end; a and b may be the
// same byte. A block of bytes at a time, rather than the C library's
// search, which is a byte loop on some platforms.
const unsigned char* FindEither(const unsigned char* s, const unsigned char* end, unsigned char a,
                                unsigned char b)
{
    for (; end - s >= 32; s += 32)
        if (uint32_t mask = ByteMask32(s, a, b))
            return s + __builtin_ctz(mask);
    while (s < end && *s != a && *s != b)
        s++;
    return s;
}

// The last of the bytes a and b in [s, end), or null. Reads whole blocks
// as far down as `floor`.
const unsigned char* FindLastEither(const unsigned char* floor, const unsigned char* s,
                                    const unsigned char* end, unsigned char a, unsigned char b)
{
    for (; end > s && end - floor >= 32; end -= 32) {
        uint32_t mask = ByteMask32(end - 32, a, b);
        if (end - 32 < s)
            mask &= ~0u << (s - (end - 32));
        if (mask)
            return end - 1 - __builtin_clz(mask);
    }
    while (end > s && end[-1] != a && end[-1] != b)
        end--;
    return end > s ? end - 1 : nullptr;
}

// How many bytes from t on, up to limit, a one-byte op takes in a row.
int OneByteRun(const unsigned char* op, const unsigned char* t, int limit, const unsigned char* tr)
{
    int k = 0;
    switch (op[0]) {
    case OP_ANY_CHAR:
        k = static_cast<int>(FindEither(t, t + limit, '\r', '\n') - t);
        break;
    case OP_LITERAL:
        while (k < limit && (tr ? tr[t[k]] : t[k]) == op[2])
            k++;
        break;
    default:
        while (k < limit && InSet(op, tr ? tr[t[k]] : t[k]))
            k++;
        break;
    }
    return k;
}

// If a loop over a one-byte body ("a*", ".*", "[0-9]*") starts at `at`,
// the position of its back jump; -1 otherwise.
int OneByteLoopJump(const unsigned char* code, int used, int at)
{
    if (at + 3 >= used || code[at] != OP_ON_FAILURE_JUMP)
        return -1;
    int length = OneByteOpLength(code + at + 3);
    int jump = at + 3 + length;
    int end = at + 3 + Displacement(code + at + 1);
    if (length == 0 || jump + 3 != end || end > used)
        return -1;
    if (code[jump] != OP_JUMP && code[jump] != OP_FINALIZE_JUMP &&
        code[jump] != OP_MAYBE_FINALIZE_JUMP)
        return -1;
    return jump + 3 + Displacement(code + jump + 1) == at ? jump : -1;
}

// Failure points: where to go on in the code and from which text position.
// An empty point, which failing discards, holds the complement of the code
// position that its dummy jump entered, so that the loop can recognise it.
// A one-byte loop pushes its points (code, text), (code, text + 1), ... as
// one run of `count` points, the last of them the newest.
struct FailurePoint {
    int32_t code;
    int32_t text;
    int32_t count;
};

// Starts in local storage so that a simple match allocates nothing. Sizes
// and capacities count points, not runs, so that the stack grows and meets
// its ceiling where one entry per point would.
class FailureStack
{
  public:
    FailureStack() = default;
    FailureStack(const FailureStack&) = delete;
    FailureStack& operator=(const FailureStack&) = delete;
    ~FailureStack()
    {
        if (m_heap)
            free(m_heap);
    }

    // False when the stack can't take the point: at the ceiling, if
    // `ceiling` is set, or when memory runs out.
    bool Push(int code, int text, bool ceiling)
    {
        if (m_size == m_capacity && !Grow(ceiling))
            return false;
        m_runs[m_count++] = FailurePoint{code, text, 1};
        m_size++;
        return true;
    }
    // Pushes (code, text), (code, text + 1), ... as `count` pushes with the
    // ceiling would, failing where one of them would.
    bool PushRun(int code, int text, int count)
    {
        while (m_capacity - m_size < count)
            if (!Grow(true))
                return false;
        m_runs[m_count++] = FailurePoint{code, text, count};
        m_size += count;
        return true;
    }
    bool Empty() const { return m_size == 0; }
    // The newest run.
    const FailurePoint& Top() const { return m_runs[m_count - 1]; }
    // Drops the newest point.
    void Drop()
    {
        if (m_size > 0)
            DropAbove(Top().text + Top().count - 1);
    }
    // Drops the points of the newest run from `text` on.
    void DropAbove(int text)
    {
        FailurePoint& top = m_runs[m_count - 1];
        int dropped = top.text + top.count - (text > top.text ? text : top.text);
        top.count -= dropped;
        m_size -= dropped;
        if (top.count == 0)
            m_count--;
    }
    // The newest point that starts an iteration of the loop whose body
    // begins at `body` and ends at `end`: the loop's own on-failure point or
    // the empty point of the dummy jump that entered it.
    const FailurePoint* FindIteration(int body, int end) const
    {
        for (int i = m_count - 1; i >= 0; --i)
            if (m_runs[i].code == end || m_runs[i].code == ~body)
                return &m_runs[i];
        return nullptr;
    }

  private:
    bool Grow(bool ceiling)
    {
        if (ceiling && m_capacity > kLargestGrowing)
            return false;
        size_t bytes = sizeof(FailurePoint) * static_cast<size_t>(m_capacity) * 2;
        void* block = realloc(m_heap, bytes);
        if (!block)
            return false;
        if (!m_heap)
            memcpy(block, m_local, sizeof m_local);
        m_heap = m_runs = static_cast<FailurePoint*>(block);
        m_capacity *= 2;
        return true;
    }

    FailurePoint m_local[kLocalPoints];
    FailurePoint* m_runs = m_local;
    FailurePoint* m_heap = nullptr;
    int m_count = 0; // runs
    int m_size = 0;  // points
    int m_capacity = kLocalPoints;
};

class Matcher
{
  public:
    Matcher(PatternBuffer* pb, const unsigned char* text, int size, int stop)
        : m_code(pb->buffer), m_used(static_cast<int>(pb->used)), m_tr(pb->translate), m_text(text),
          m_size(size), m_stop(stop)
    {
    }

    int Run(int pos, MatchRegisters* regs);

  private:
    int Fold(int c) const { return m_tr ? m_tr[c] : c; }
    // Before the start and at the end of the text there is no word byte.
    bool IsWord(int d) const { return d >= 0 && d < m_size && WordCharTable[m_text[d]]; }
    bool Literal(int& p, int& d) const;
    bool BackReference(int group, int& d) const;
    bool LeavesLoop(int p, int target) const;
    int OneByteLoop(int at, int& p, int& d);
    bool Backtrack(int& p, int& d);
    bool EmptyIteration(int target, int d) const;
    void Store(int pos, int d, MatchRegisters* regs) const;

    unsigned char* m_code;
    int m_used;
    const unsigned char* m_tr;
    const unsigned char* m_text;
    int m_size;
    int m_stop;
    FailureStack m_stack;
    int m_start[PATTERN_GROUPS];
    int m_end[PATTERN_GROUPS];
};

bool Matcher::Literal(int& p, int& d) const
{
    int n = m_code[p];
    const unsigned char* lit = m_code + p + 1;
    p += 1 + n;
    if (m_stop - d < n)
        return false;
    const unsigned char* t = m_text + d;
    if (m_tr) {
        for (int i = 0; i < n; ++i)
            if (m_tr[t[i]] != lit[i])
                return false;
    } else if (n > 0 && (t[0] != lit[0] || memcmp(t + 1, lit + 1, n - 1) != 0)) {
        return false;
    }
    d += n;
    return true;
}

// A group that took no part in the path, or holds nothing, matches the empty
// string.
bool Matcher::BackReference(int group, int& d) const
{
    if (group >= PATTERN_GROUPS || m_end[group] < 0 || m_start[group] < 0 ||
        m_end[group] <= m_start[group])
        return true;
    int length = m_end[group] - m_start[group];
    if (m_stop - d < length)
        return false;
    const unsigned char* a = m_text + m_start[group];
    const unsigned char* b = m_text + d;
    if (m_tr) {
        for (int i = 0; i < length; ++i)
            if (m_tr[a[i]] != m_tr[b[i]])
                return false;
    } else if (memcmp(a, b, length) != 0) {
        return false;
    }
    d += length;
    return true;
}

// Decides, the first time a loop's back jump at `p` runs, whether the loop
// can drop each iteration's failure point: it can when what follows the loop
// can't start with what the body starts with. Group ops are stepped over a
// byte at a time, so a loop closing group 1 or 3 reads the group number as a
// literal or a line end; "\(a*\)a" fails on "aaa" for that, as intended.
bool Matcher::LeavesLoop(int p, int target) const
{
    int q = p + 3;
    while (q < m_used && (m_code[q] == OP_GROUP_END || m_code[q] == OP_GROUP_START))
        q++;
    if (q >= m_used)
        return true;
    if (m_code[q] != OP_LITERAL && m_code[q] != OP_LINE_END)
        return false;
    int c = '\r';
    if (m_code[q] == OP_LITERAL)
        c = q + 2 < m_used ? m_code[q + 2] : kNoByte;
    const unsigned char* body = m_code + target + 3;
    if (body[0] == OP_LITERAL)
        return body[2] != c;
    if (body[0] == OP_CHAR_SET || body[0] == OP_CHAR_SET_NOT)
        return c == kNoByte || !InSet(body, c);
    return false;
}

// The engine's own rule against endless loops: an iteration of a loop that
// comes back to its start without having consumed anything fails, as if its
// body had failed, so the match goes on behind the loop. Without it a body
// that can match the empty string, as in "\(a*\)*" against "b", would come
// round forever or fill the failure stack. The first iteration of a '+',
// entered by its dummy jump, is exempt: it is the one that must happen.
bool Matcher::EmptyIteration(int target, int d) const
{
    if (target < 0 || target + 3 > m_used || m_code[target] != OP_ON_FAILURE_JUMP)
        return false;
    int body = target + 3;
    int end = body + Displacement(m_code + target + 1);
    const FailurePoint* start = m_stack.FindIteration(body, end);
    return start && start->code == end && start->text + start->count - 1 == d;
}

enum { LOOP_NOT_SIMPLE = 0, LOOP_DONE = 1 };

// A loop whose body is one byte-matching op ("a*", ".*", "[0-9]*") runs here
// in one go, with the same failure points and patch that running it op by
// op would leave: a finalized loop pushes and drops one point per iteration,
// an unfinalized one keeps one per iteration, and the failing last try pops
// the newest.
int Matcher::OneByteLoop(int at, int& p, int& d)
{
    int jump = OneByteLoopJump(m_code, m_used, at);
    if (jump < 0)
        return LOOP_NOT_SIMPLE;
    const unsigned char* code = m_code;
    const unsigned char* body = code + at + 3;
    int end = jump + 3;
    int k = OneByteRun(body, m_text + d, m_stop - d, m_tr);
    int op = code[jump];
    if (k > 0 && op == OP_MAYBE_FINALIZE_JUMP) {
        op = LeavesLoop(jump, at) ? OP_FINALIZE_JUMP : OP_JUMP;
        m_code[jump] = static_cast<unsigned char>(op);
    }
    int pushes = k == 0 || op == OP_FINALIZE_JUMP ? 1 : k + 1;
    if (!m_stack.PushRun(end, d, pushes))
        return MATCH_STACK_EXHAUSTED;
    m_stack.Drop();
    d += k;
    p = end;
    return LOOP_DONE;
}

// Goes back to the newest failure point, passing over empty points and
// points that would only fail again at once because their code begins with
// a literal that the text there doesn't start with.
bool Matcher::Backtrack(int& p, int& d)
{
    while (!m_stack.Empty()) {
        const FailurePoint& top = m_stack.Top();
        int t = top.text + top.count - 1;
        if (kShortcuts && top.code >= 0 && top.code < m_used && m_code[top.code] == OP_LITERAL) {
            const unsigned char c = m_code[top.code + 2];
            const int end = t < m_stop ? t + 1 : m_stop;
            const unsigned char* at =
                top.text < end
                    ? FindLastEither(m_text, m_text + top.text, m_text + end, c, Unfolded(c, m_tr))
                    : nullptr;
            t = at ? static_cast<int>(at - m_text) : top.text - 1;
        }
        if (top.code >= 0 && t >= top.text) {
            p = top.code;
            d = t;
            m_stack.DropAbove(t);
            return true;
        }
        m_stack.DropAbove(top.text);
    }
    return false;
}

void Matcher::Store(int pos, int d, MatchRegisters* regs) const
{
    regs->start[0] = pos;
    regs->end[0] = d;
    for (int g = 1; g < PATTERN_GROUPS; ++g) {
        bool set = m_end[g] >= 0;
        regs->start[g] = set ? m_start[g] : -1;
        regs->end[g] = set ? m_end[g] : -1;
    }
}

int Matcher::Run(int pos, MatchRegisters* regs)
{
    for (int g = 0; g < PATTERN_GROUPS; ++g)
        m_start[g] = m_end[g] = -1;
    const unsigned char* code = m_code;
    int p = 0;
    int d = pos;
    for (;;) {
        if (p >= m_used) {
            if (regs)
                Store(pos, d, regs);
            return d - pos;
        }
        int op = code[p++];
        switch (op) {
        case OP_LITERAL:
            if (!Literal(p, d))
                goto fail;
            break;
        case OP_LINE_START:
            if (d != 0 && m_text[d - 1] != '\n')
                goto fail;
            break;
        case OP_LINE_END:
            if (d != m_size && m_text[d] != '\r')
                goto fail;
            break;
        case OP_MAYBE_FINALIZE_JUMP:
            op = LeavesLoop(p - 1, p + 2 + Displacement(code + p)) ? OP_FINALIZE_JUMP : OP_JUMP;
            m_code[p - 1] = static_cast<unsigned char>(op);
            /* fall through */
        case OP_JUMP:
        case OP_FINALIZE_JUMP: {
            int target = p + 2 + Displacement(code + p);
            if (EmptyIteration(target, d))
                goto fail;
            if (op == OP_FINALIZE_JUMP)
                m_stack.Drop();
            p = target;
            break;
        }
        case OP_ON_FAILURE_JUMP:
            if (kShortcuts) {
                int loop = OneByteLoop(p - 1, p, d);
                if (loop == MATCH_STACK_EXHAUSTED)
                    return MATCH_STACK_EXHAUSTED;
                if (loop == LOOP_DONE)
                    break;
            }
            if (!m_stack.Push(p + 2 + Displacement(code + p), d, true))
                return MATCH_STACK_EXHAUSTED;
            p += 2;
            break;
        case OP_DUMMY_FAILURE_JUMP: {
            int target = p + 2 + Displacement(code + p);
            if (!m_stack.Push(~target, d, false))
                return MATCH_STACK_EXHAUSTED;
            p = target;
            break;
        }
        case OP_ANY_CHAR:
            if (d >= m_stop || m_text[d] == '\r' || m_text[d] == '\n')
                goto fail;
            d++;
            break;
        case OP_CHAR_SET:
        case OP_CHAR_SET_NOT: {
            const unsigned char* set = code + p - 1;
            p += 1 + set[1];
            if (d >= m_stop || !InSet(set, Fold(m_text[d])))
                goto fail;
            d++;
            break;
        }
        case OP_GROUP_START:
            if (code[p] < PATTERN_GROUPS)
                m_start[code[p]] = d;
            p++;
            break;
        case OP_GROUP_END:
            if (code[p] < PATTERN_GROUPS)
                m_end[code[p]] = d;
            p++;
            break;
        case OP_BACK_REF:
            if (!BackReference(code[p++], d))
                goto fail;
            break;
        case OP_WORD_START:
            if (d >= m_size || !IsWord(d) || IsWord(d - 1))
                goto fail;
            break;
        case OP_WORD_END:
            if (!IsWord(d - 1) || IsWord(d))
                goto fail;
            break;
        default:
            break;
        }
        continue;
    fail:
        if (!Backtrack(p, d))
            return MATCH_NOT_FOUND;
    }
}

// Walks every path of the code up to the first byte that a match must
// consume. Backward jumps are loop back edges: the walk leaves the loop there.
void WalkFirstChars(PatternBuffer* pb)
{
    const unsigned char* code = pb->buffer;
    const unsigned char* tr = pb->translate;
    unsigned char* map = pb->first_char_map;
    auto flag = [&](int c) { map[tr ? tr[c] : c] = 1; };
    int used = static_cast<int>(pb->used);
    int stack[kWalkDepth];
    int depth = 0;
    int p = 0;
    for (;;) {
        if (p >= used) {
            pb->can_be_empty = 1;
            return;
        }
        bool done = true;
        switch (code[p]) {
        case OP_LITERAL:
            flag(code[p + 2]);
            break;
        case OP_LINE_END:
            flag('\r');
            if (pb->can_be_empty != 1)
                pb->can_be_empty = 2;
            break;
        case OP_JUMP:
        case OP_FINALIZE_JUMP:
        case OP_MAYBE_FINALIZE_JUMP:
        case OP_DUMMY_FAILURE_JUMP: {
            pb->can_be_empty = 1;
            int disp = Displacement(code + p + 1);
            int target = p + 3 + disp;
            done = false;
            if (disp > 0 || code[target] != OP_ON_FAILURE_JUMP) {
                p = target;
                break;
            }
            p = target + 3 + Displacement(code + target + 1);
            if (depth > 0 && stack[depth - 1] == p)
                depth--;
            break;
        }
        case OP_ON_FAILURE_JUMP:
            if (depth == kWalkDepth) {
                // Too many open alternatives: the map can't be trusted.
                pb->can_be_empty = 1;
                return;
            }
            stack[depth++] = p + 3 + Displacement(code + p + 1);
            p += 3;
            done = false;
            break;
        case OP_CHAR_SET:
        case OP_CHAR_SET_NOT:
            for (int c = 0; c < 256; ++c)
                if (InSet(code + p, c))
                    flag(c);
            break;
        case OP_BACK_REF:
            pb->can_be_empty = 1;
            flag('\r');
            /* fall through */
        case OP_ANY_CHAR:
            for (int c = 0; c < 256; ++c)
                if (c != '\r' && c != '\n')
                    map[c] = 1;
            if (pb->can_be_empty != 0)
                return;
            break;
        case OP_GROUP_START:
        case OP_GROUP_END:
            p += 2;
            done = false;
            break;
        default:
            p += 1;
            done = false;
            break;
        }
        if (done) {
            if (depth == 0)
                return;
            p = stack[--depth];
        }
    }
}

// Adds the text bytes that a one-byte op takes to `takes`. A set's map is
// of folded bytes, so with folding a lower case letter is in it as its
// upper case.
void AddTaken(uint64_t* takes, const unsigned char* op, const unsigned char* tr)
{
    uint64_t bits[4] = {};
    auto set = [&bits](unsigned char c) { bits[c >> 6] |= uint64_t{1} << (c & 63); };
    if (op[0] == OP_LITERAL) {
        set(op[2]);
        set(Unfolded(op[2], tr));
    } else if (op[0] == OP_ANY_CHAR) {
        for (uint64_t& w : bits)
            w = ~uint64_t{0};
        bits[0] &= ~(uint64_t{1} << '\r' | uint64_t{1} << '\n');
    } else {
        unsigned char map[32] = {};
        memcpy(map, op + 2, op[1]);
        memcpy(bits, map, sizeof bits);
        if (op[0] == OP_CHAR_SET_NOT)
            for (uint64_t& w : bits)
                w = ~w;
        // 'A' to 'Z' are bits 1 to 26 of the second word, 'a' to 'z' 32 above.
        const uint64_t upper = uint64_t{0x7FFFFFE};
        if (tr)
            bits[1] = (bits[1] & ~(upper << 32)) | (bits[1] & upper) << 32;
    }
    for (int k = 0; k < 4; ++k)
        takes[k] |= bits[k];
}

// Fills pb->lead; a line start ahead of the ops is passed over, since the
// search takes care of it.
void FindLead(PatternBuffer* pb)
{
    PatternLead& lead = pb->lead;
    const unsigned char* code = pb->buffer;
    const int used = static_cast<int>(pb->used);
    const int most = static_cast<int>(sizeof lead.jumps / sizeof lead.jumps[0]);
    int p = used >= 1 && code[0] == OP_LINE_START ? 1 : 0;
    int ops = 0;
    while (p < used && lead.loops < most) {
        int jump = OneByteLoopJump(code, used, p);
        if (jump >= 0) {
            AddTaken(lead.takes, code + p + 3, pb->translate);
            lead.jumps[lead.loops++] = static_cast<int16_t>(jump);
            p = jump + 3;
            ops++;
        } else if (code[p] == OP_LITERAL && lead.loops > 0) {
            lead.needed = static_cast<int16_t>(p + 2 < used ? code[p + 2] : -1);
            lead.alone = ops == 1 && p + 3 == used;
            break;
        } else if (int length = OneByteOpLength(code + p)) {
            AddTaken(lead.takes, code + p, pb->translate);
            p += length;
            ops++;
        } else {
            break;
        }
    }
    for (int k = 0; k < 4; ++k)
        for (uint64_t w = ~lead.takes[k]; w && lead.breaks <= 2; w &= w - 1)
            if (lead.breaks++ < 2)
                lead.broken[lead.breaks - 1] =
                    static_cast<unsigned char>(k * 64 + __builtin_ctzll(w));
}

// Finds the positions worth a try in a forward search: those whose byte
// passes the map, less those that would fail at the first op because the
// code starts with a literal or a line start that isn't there, or because
// the byte that the leading ops must reach isn't there (see FindNeeded).
class ForwardFilter
{
  public:
    explicit ForwardFilter(const PatternBuffer* pb);
    bool Passes(unsigned char c) const { return m_pass[c] != 0; }
    // Whether Find may be used where the map says nothing.
    bool Reaches() const;
    // The offset from `from`, below n, of the first position worth a try;
    // n if there is none.
    int Find(const unsigned char* text, int size, int from, int n) const;
    // Whether a try at p, which Find returned, is sure to match.
    bool Matches(const unsigned char* text, int size, int p) const;

  private:
    // Out of line, so that the plain scan of Find stays tight.
    __attribute__((noinline)) int FindHead(const unsigned char* text, int size, int from,
                                           int n) const;
    __attribute__((noinline)) int FindNeeded(const unsigned char* text, int size, int from,
                                             int n) const;
    int FirstLongRun(const unsigned char* text, int size, int from, int end) const;
    bool Takes(unsigned char c) const { return (m_lead.takes[c >> 6] >> (c & 63) & 1) != 0; }
    int LastBreak(const unsigned char* text, int from, int to) const;
    bool Worth(const unsigned char* text, int size, int q) const;

    // The map as text bytes see it: indexed by the unsigned byte, folded
    // first when folding, forward as backward.
    const unsigned char* m_pass;
    unsigned char m_folded[256];
    const unsigned char* m_tr;
    bool m_mapSays;
    int m_single;         // the one byte that passes, or -1
    PatternNeedle m_head; // the literal that every match starts with
    bool m_lineStart = false;
    const unsigned char* m_code;
    const PatternLead& m_lead;
    mutable int m_reached = -1; // what FindNeeded returned, if it reached the byte from there
};

// How common a byte is in program text: lower is more common. With folding
// a letter is as common as the more common of its cases.
int Commonness(unsigned char c, const unsigned char* tr)
{
    static const char kCommon[] = " etrinsaoc\tlud\npf_h()m;,=g*bTEvSxyRkN.LA-w\"IO>C/P0D1M#<F2{}&";
    static const unsigned char* const kRank = [] {
        static unsigned char rank[256];
        memset(rank, 255, sizeof rank);
        for (int i = 0; kCommon[i]; ++i)
            rank[static_cast<unsigned char>(kCommon[i])] = static_cast<unsigned char>(i);
        return rank;
    }();
    int rank = kRank[c], other = kRank[Unfolded(c, tr)];
    return other < rank ? other : rank;
}

// A literal op as a needle, sought by its least common byte.
PatternNeedle LiteralNeedle(const unsigned char* op, const unsigned char* tr)
{
    PatternNeedle needle;
    needle.bytes = op + 2;
    needle.length = op[1];
    needle.translate = tr;
    for (int i = 1; i < needle.length; ++i)
        if (Commonness(needle.bytes[i], tr) > Commonness(needle.bytes[needle.rare], tr))
            needle.rare = i;
    return needle;
}

// Whether the whole needle stands at `at`, with room for it.
bool NeedleAt(const PatternNeedle& needle, const unsigned char* at)
{
    const unsigned char* tr = needle.translate;
    if (!tr)
        return memcmp(at, needle.bytes, static_cast<size_t>(needle.length)) == 0;
    for (int i = 0; i < needle.length; ++i)
        if (tr[at[i]] != needle.bytes[i])
            return false;
    return true;
}

ForwardFilter::ForwardFilter(const PatternBuffer* pb)
    : m_pass(pb->first_char_map), m_tr(pb->translate), m_mapSays(pb->can_be_empty != 1),
      m_single(pb->first_byte), m_code(pb->buffer), m_lead(pb->lead)
{
    if (m_tr) {
        for (int c = 0; c < 256; ++c)
            m_folded[c] = pb->first_char_map[m_tr[c]];
        m_pass = m_folded;
    }
    if (!kShortcuts) {
        m_single = -1;
        return;
    }
    const unsigned char* code = pb->buffer;
    const int used = static_cast<int>(pb->used);
    m_lineStart = used >= 1 && code[0] == OP_LINE_START;
    if (used >= 3 && code[0] == OP_LITERAL)
        m_head = LiteralNeedle(code, m_tr);
}

// The last byte in [from, to) that no leading op takes, or from - 1.
int ForwardFilter::LastBreak(const unsigned char* text, int from, int to) const
{
    const int breaks = m_lead.breaks;
    if (breaks > 2) {
        while (to > from && Takes(text[to - 1]))
            to--;
        return to - 1;
    }
    const unsigned char* at = breaks ? FindLastEither(text, text + from, text + to,
                                                      m_lead.broken[0], m_lead.broken[breaks - 1])
                                     : nullptr;
    return at ? static_cast<int>(at - text) : from - 1;
}

// Until a try has run them, the loops may still decide how they back up.
bool ForwardFilter::Reaches() const
{
    if (m_lead.needed < 0)
        return false;
    for (int i = 0; i < m_lead.loops; ++i)
        if (m_code[m_lead.jumps[i]] == OP_MAYBE_FINALIZE_JUMP)
            return false;
    return true;
}

bool ForwardFilter::Worth(const unsigned char* text, int size, int q) const
{
    if (m_lineStart && q != 0 && text[q - 1] != '\n')
        return false;
    return !m_head.length || (size - q >= m_head.length && NeedleAt(m_head, text + q));
}

// The tries stop below n, but the head may run on past them.
int ForwardFilter::FindHead(const unsigned char* text, int size, int from, int n) const
{
    const int room = size - from < n + m_head.length - 1 ? size - from : n + m_head.length - 1;
    const int at = FindNeedle(m_head, reinterpret_cast<const char*>(text + from), room);
    return at < 0 ? n : at;
}

// Where the code starts with one-byte ops and loops over them, then a
// literal (".*x", "^[ \t]*}", "[A-Z][A-Z_]*("), a try at p can match only
// if the first byte at or after p that the literal starts with comes before
// the first byte that none of the leading ops takes. A try that fails for
// that fails at the literal and pushes at most one point per byte that the
// leading ops took, plus one; as long as that fits in the local points it
// has no effect but its result, and the positions are skipped.
int ForwardFilter::FindNeeded(const unsigned char* text, int size, int from, int n) const
{
    const int last = from + n;
    // Beyond the range a stretch without the byte ends at `cap` as though
    // the byte stood there.
    const int cap = size - last > kLocalPoints ? last + kLocalPoints : size;
    const unsigned char needed = static_cast<unsigned char>(m_lead.needed);
    m_reached = -1;
    int i = from;
    while (i < last) {
        int q = static_cast<int>(FindEither(text + i, text + cap, needed, Unfolded(needed, m_tr)) -
                                 text);
        int b = q < size ? LastBreak(text, i, q) + 1 : last; // with no such byte, none matches
        if (b > last)
            b = last;
        int failing = FirstLongRun(text, size, i, b);
        if (failing < b)
            return failing - from;
        for (int p = b; p <= q && p < last; ++p) {
            if ((!m_mapSays || m_pass[text[p]]) && Worth(text, size, p)) {
                m_reached = q < cap ? p : -1;
                return p - from;
            }
        }
        i = q + 1;
    }
    return n;
}

// The first position in [from, end) from which the leading ops might take
// kLocalPoints bytes or more, so that a try there might need more points than
// the local ones; end if there is none. Only loops that keep their points
// need the test.
int ForwardFilter::FirstLongRun(const unsigned char* text, int size, int from, int end) const
{
    bool keeping = false;
    for (int i = 0; i < m_lead.loops; ++i)
        keeping = keeping || m_code[m_lead.jumps[i]] == OP_JUMP;
    for (int j = from; keeping && j < end;) {
        // Usually a byte that no op takes ends the stretch within reach.
        if (size - j < kLocalPoints || (end - j <= kLocalPoints && !Takes(text[end - 1])))
            break;
        int m = LastBreak(text, j, j + kLocalPoints);
        if (m < j)
            return j;
        j = m + 1;
    }
    return end;
}

// Where the code is one loop and one literal byte behind it (".*x",
// "^[ \t]*}"), a try at a position from which FindNeeded reached that byte
// matches: the loop goes over it or stops at it and gives back the bytes it
// took until the literal matches. Only a loop that keeps its points might
// need more than the local ones and end otherwise.
bool ForwardFilter::Matches(const unsigned char* text, int size, int p) const
{
    return m_lead.alone && m_reached == p &&
           (m_code[m_lead.jumps[0]] == OP_FINALIZE_JUMP || FirstLongRun(text, size, p, p + 1) > p);
}

int ForwardFilter::Find(const unsigned char* text, int size, int from, int n) const
{
    if (Reaches())
        return FindNeeded(text, size, from, n);
    if (m_head.length)
        return FindHead(text, size, from, n);
    const unsigned char* s = text + from;
    int i = 0;
    while (i < n) {
        if (m_single >= 0) {
            const unsigned char* q = FindEither(s + i, s + n, static_cast<unsigned char>(m_single),
                                                static_cast<unsigned char>(m_single));
            if (q == s + n)
                return n;
            i = static_cast<int>(q - s);
        } else if (m_lineStart && from + i != 0 && s[i - 1] != '\n') {
            const unsigned char* q = FindEither(s + i, s + n, '\n', '\n');
            if (q == s + n)
                return n;
            i = static_cast<int>(q - s) + 1;
            continue;
        } else {
            while (i < n && !m_pass[s[i]])
                i++;
            if (i == n)
                return n;
        }
        if (Worth(text, size, from + i))
            return i;
        i++;
    }
    return n;
}

// Where the code starts with a one-byte loop (".*x"), or with a one-byte op
// and such a loop ("[A-Z][A-Z_]*("), a failed try at one position fails at
// every later position inside the run that the loop went over: each of
// those tries either fails at its first op or runs a part of what the
// failed one ran, in the same order. The byte that ended the run still
// gets its try.
class LeadingRun
{
  public:
    explicit LeadingRun(const PatternBuffer* pb);
    // The end of the run that a failed try at p went over; p if none.
    int End(const unsigned char* text, int size, int p) const;

  private:
    const unsigned char* m_first = nullptr;
    const unsigned char* m_body = nullptr;
    const unsigned char* m_tr;
};

LeadingRun::LeadingRun(const PatternBuffer* pb) : m_tr(pb->translate)
{
    const unsigned char* code = pb->buffer;
    int used = static_cast<int>(pb->used);
    if (!kShortcuts || used == 0)
        return;
    if (OneByteLoopJump(code, used, 0) >= 0) {
        m_body = code + 3;
        return;
    }
    int first = OneByteOpLength(code);
    if (first == 0 || OneByteLoopJump(code, used, first) < 0)
        return;
    m_first = code;
    m_body = code + first + 3;
}

int LeadingRun::End(const unsigned char* text, int size, int p) const
{
    if (!m_body)
        return p;
    int d = p;
    if (m_first) {
        if (OneByteRun(m_first, text + d, size - d < 1 ? size - d : 1, m_tr) == 0)
            return p;
        d++;
    }
    return d + OneByteRun(m_body, text + d, size - d, m_tr);
}

int SearchForward(PatternBuffer* pb, const unsigned char* text, int size, int pos, int range,
                  MatchRegisters* regs)
{
    const ForwardFilter filter(pb);
    const LeadingRun run(pb);
    for (;;) {
        if (pos < size && (pb->can_be_empty != 1 || filter.Reaches())) {
            int n = range < size - pos ? range : size - pos;
            int i = filter.Find(text, size, pos, n);
            // Without a map the range is all there is; with one, the last
            // byte of the range, if it passes, was tried and failed last.
            if (i == n && n == range && (pb->can_be_empty == 1 || filter.Passes(text[pos + n - 1])))
                return MATCH_NOT_FOUND;
            pos += i;
            range -= i;
        }
        if (pos == size && pb->can_be_empty == 0)
            return MATCH_NOT_FOUND;
        // Without registers only the position counts.
        if (!regs && filter.Matches(text, size, pos))
            return pos;
        int length = MatchPattern(pb, reinterpret_cast<const char*>(text), size, pos, size, regs);
        if (length >= 0)
            return pos;
        if (length == MATCH_STACK_EXHAUSTED)
            return MATCH_STACK_EXHAUSTED;
        if (range == 0 || pos >= size)
            return MATCH_NOT_FOUND;
        int end = run.End(text, size, pos);
        range--;
        pos++;
        if (range == 0)
            return MATCH_NOT_FOUND;
        if (end > pos) {
            // The byte that ended the run may be the one beyond the range;
            // the filter step decides whether it gets a try.
            if (end - pos > range)
                return MATCH_NOT_FOUND;
            range -= end - pos;
            pos = end;
        }
    }
}

int SearchBackward(PatternBuffer* pb, const unsigned char* text, int size, int pos, int range,
                   MatchRegisters* regs)
{
    const unsigned char* tr = pb->translate;
    for (;;) {
        bool tryHere = true;
        if (pos < size && pb->can_be_empty != 1)
            tryHere = pb->first_char_map[tr ? tr[text[pos]] : text[pos]] != 0;
        if (tryHere) {
            int length =
                MatchPattern(pb, reinterpret_cast<const char*>(text), size, pos, size, regs);
            if (length >= 0)
                return pos;
            if (length == MATCH_STACK_EXHAUSTED)
                return MATCH_STACK_EXHAUSTED;
        }
        range++;
        pos--;
        if (pos == 0 && range == 0)
            range = -1; // position 0 gets its try
        if (range == 0)
            return MATCH_NOT_FOUND;
    }
}

} // namespace

void BuildFirstCharMap(PatternBuffer* pb)
{
    memset(pb->first_char_map, 0, sizeof pb->first_char_map);
    pb->map_valid = 1;
    pb->can_be_empty = 0;
    pb->first_byte = -1;
    pb->lead = PatternLead();
    if (!pb->buffer)
        return;
    WalkFirstChars(pb);
    if (kShortcuts)
        FindLead(pb);
    int passing = 0;
    for (int c = 0; c < 256 && passing < 2; ++c) {
        if (pb->first_char_map[pb->translate ? pb->translate[c] : c]) {
            pb->first_byte = static_cast<int16_t>(c);
            passing++;
        }
    }
    if (passing != 1)
        pb->first_byte = -1;
}

namespace
{

// The length of the op at code[p]: the jumps carry a displacement, the
// literal and the sets their bytes, the groups' ops their number.
int OpLength(const unsigned char* code, int p)
{
    switch (code[p]) {
    case OP_LITERAL:
    case OP_CHAR_SET:
    case OP_CHAR_SET_NOT:
        return 2 + code[p + 1];
    case OP_JUMP:
    case OP_ON_FAILURE_JUMP:
    case OP_FINALIZE_JUMP:
    case OP_MAYBE_FINALIZE_JUMP:
    case OP_DUMMY_FAILURE_JUMP:
        return 3;
    case OP_GROUP_START:
    case OP_GROUP_END:
    case OP_BACK_REF:
        return 2;
    default:
        return 1;
    }
}

bool TakesNoText(unsigned char op)
{
    return op == OP_LINE_START || op == OP_LINE_END || op == OP_WORD_START || op == OP_WORD_END ||
           op == OP_GROUP_START || op == OP_GROUP_END;
}

} // namespace

PatternNeedle FindPatternNeedle(const PatternBuffer* pb)
{
    PatternNeedle needle;
    const unsigned char* code = pb->buffer;
    const int used = static_cast<int>(pb->used);
    if (!kShortcuts || !code)
        return needle;
    int at = 0;
    while (at < used && TakesNoText(code[at]))
        at += OpLength(code, at);
    if (at >= used || code[at] != OP_LITERAL)
        return needle;
    // A jump to the literal or ahead of it would make it one branch of many.
    for (int p = 0; p < used; p += OpLength(code, p))
        if (code[p] >= OP_JUMP && code[p] <= OP_DUMMY_FAILURE_JUMP &&
            p + 3 + Displacement(code + p + 1) <= at)
            return needle;
    return LiteralNeedle(code + at, pb->translate);
}

int FindNeedle(const PatternNeedle& needle, const char* text, int size)
{
    const int n = needle.length;
    if (n == 0 || size < n)
        return -1;
    const unsigned char* s = reinterpret_cast<const unsigned char*>(text);
    const unsigned char rare = needle.bytes[needle.rare];
    const unsigned char* last = s + size - n + needle.rare + 1; // past the last place of rare
    for (const unsigned char* q = s + needle.rare;
         (q = FindEither(q, last, rare, Unfolded(rare, needle.translate))) < last; ++q)
        if (NeedleAt(needle, q - needle.rare))
            return static_cast<int>(q - needle.rare - s);
    return -1;
}

int MatchPattern(PatternBuffer* pb, const char* text, int size, int pos, int stop,
                 MatchRegisters* regs)
{
    if (stop > size)
        stop = size;
    if (pos < 0 || pos > stop || !pb->buffer)
        return MATCH_NOT_FOUND;
    Matcher matcher(pb, reinterpret_cast<const unsigned char*>(text), size, stop);
    return matcher.Run(pos, regs);
}

// Forward, a range of N tries start to start + N - 1, and start + N too when
// the map filter ran to the end of the range: that try lets '$' match at the
// end of the text. Positions beyond the text are never tried.
int SearchPattern(PatternBuffer* pb, const char* text, int size, int start, int range,
                  MatchRegisters* regs)
{
    if (!pb->map_valid)
        BuildFirstCharMap(pb);
    if (range == 0 || start < 0 || start > size || !pb->buffer)
        return MATCH_NOT_FOUND;
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(text);
    if (range > 0)
        return SearchForward(pb, bytes, size, start, range, regs);
    if (range < -start)
        range = -start;
    if (range == 0)
        return MATCH_NOT_FOUND;
    return SearchBackward(pb, bytes, size, start, range, regs);
}
