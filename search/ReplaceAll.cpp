#include "search/ReplaceAll.h"

namespace
{

const int kTextStart = -1; // nothing stands before the search position

// The original text behind one byte that the loop sets, before each
// search, to the byte that the changed text holds just before the search
// position. The matcher reads no further back than that byte, and from the
// position on the changed text is the original. An LF there matches as the
// start of the text does.
class ShiftedText
{
  public:
    ShiftedText(const char* text, int size) : m_bytes(1, '\n') { m_bytes.append(text, size); }

    // Searches from `position` of the original, with `before` in front;
    // the result and the registers are offsets into the original.
    int Search(PatternBuffer* pb, int position, int before, int range, MatchRegisters& regs)
    {
        char& front = m_bytes[position];
        const char original = front;
        front = before == kTextStart ? '\n' : static_cast<char>(before);
        const int found = SearchPattern(pb, m_bytes.data(), static_cast<int>(m_bytes.size()),
                                        position + 1, range, &regs);
        front = original;
        if (found < 0)
            return found;
        for (int g = 0; g < PATTERN_GROUPS; ++g) {
            if (regs.start[g] != -1)
                regs.start[g]--;
            if (regs.end[g] != -1)
                regs.end[g]--;
        }
        return found - 1;
    }

  private:
    std::string m_bytes;
};

int ByteAt(const char* text, int offset)
{
    return static_cast<unsigned char>(text[offset]);
}

} // namespace

void ReplaceAllInText(PatternBuffer* pb, const char* text, int size, int position, int range,
                      const ExpandMatch& expand, ReplaceAllResult& result)
{
    result = ReplaceAllResult();
    ShiftedText shifted(text, size);
    // The end of the range stays where it is in the original text.
    const int end = position + range;
    int before = position > 0 ? ByteAt(text, position - 1) : kTextStart;
    MatchRegisters regs;
    while (end - position > 0 && position <= size) {
        const int found = shifted.Search(pb, position, before, end - position, regs);
        if (found < 0)
            break;
        if (result.count++ == 0)
            result.from = found;
        else
            result.text.append(text + result.to, found - result.to);
        const size_t inserted = result.text.size();
        expand(text, regs, result.text);
        const bool empty = result.text.size() == inserted;
        const int searched = position;
        const int seen = before;
        if (!empty)
            before = static_cast<unsigned char>(result.text.back());
        else if (found > position)
            before = ByteAt(text, found - 1);
        position = result.to = regs.end[0];
        if (pb->has_line_start && empty) {
            if (position < size)
                before = ByteAt(text, position);
            position++;
        } else {
            for (const char lineEnd : {'\r', '\n'}) {
                if (position < size && text[position] == lineEnd) {
                    before = lineEnd;
                    position++;
                }
            }
        }
        // An empty match that changed nothing the next search sees would
        // be found again for ever.
        if (position == searched && before == seen)
            break;
    }
}
