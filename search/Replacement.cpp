#include "search/Replacement.h"

#include <cstring>

namespace
{

// The case switch that every emitted byte passes: -2 all lower, -1 the next
// byte lower, 0 as it is, 1 the next byte upper, 2 all upper.
class CaseWriter
{
  public:
    CaseWriter(const CaseMap& cases, std::string& out) : m_cases(cases), m_out(out) {}

    void Switch(int state) { m_state = state; }
    void Put(char byte)
    {
        unsigned char c = static_cast<unsigned char>(byte);
        if (m_state > 0)
            c = m_cases.upper(c);
        else if (m_state < 0)
            c = m_cases.lower(c);
        if (m_state == 1 || m_state == -1)
            m_state = 0;
        m_out += static_cast<char>(c);
    }
    void Put(const char* bytes, long length)
    {
        if (m_state == 0) {
            m_out.append(bytes, length);
            return;
        }
        for (long i = 0; i < length; ++i)
            Put(bytes[i]);
    }

  private:
    const CaseMap& m_cases;
    std::string& m_out;
    int m_state = 0;
};

void PutGroup(CaseWriter& writer, const char* text, const MatchRegisters& regs, int group)
{
    const int start = regs.start[group];
    const int end = regs.end[group];
    if (start >= 0 && end > start)
        writer.Put(text + start, end - start);
}

// What the byte after a backslash stands for; false for a plain byte.
bool Escape(CaseWriter& writer, char code, const char* text, const MatchRegisters& regs,
            const ClipboardText& clipboard)
{
    switch (code) {
    case 'n':
        writer.Put('\r');
        writer.Put('\n');
        return true;
    case 't':
        writer.Put('\t');
        return true;
    case 'p':
        if (clipboard) {
            std::string clip;
            clipboard(clip);
            writer.Put(clip.data(), static_cast<long>(clip.size()));
        }
        return true;
    default:
        break;
    }
    // \u \l \U \L \E \e set the case state.
    static const char kSwitches[] = "ulULEe";
    static const int kStates[] = {1, -1, 2, -2, 0, 0};
    if (const char* at = code != '\0' ? std::strchr(kSwitches, code) : nullptr) {
        writer.Switch(kStates[at - kSwitches]);
        return true;
    }
    if (code < '0' || code > '9')
        return false;
    PutGroup(writer, text, regs, code - '0');
    return true;
}

} // namespace

void ExpandReplacementText(const std::string& replace, const char* text, const MatchRegisters& regs,
                           const ClipboardText& clipboard, const CaseMap& cases, std::string& out)
{
    CaseWriter writer(cases, out);
    const size_t length = replace.size();
    for (size_t i = 0; i < length; ++i) {
        const char c = replace[i];
        if (c == '&') {
            PutGroup(writer, text, regs, 0);
        } else if (c != '\\') {
            writer.Put(c);
        } else if (i + 1 == length) {
            writer.Put('\\');
        } else if (!Escape(writer, replace[++i], text, regs, clipboard)) {
            writer.Put(replace[i]);
        }
    }
}
