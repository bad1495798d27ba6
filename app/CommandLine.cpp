#include "app/CommandLine.h"

#include <cstring>

namespace
{

char FoldLower(char ch)
{
    unsigned char byte = static_cast<unsigned char>(ch);
    if ((byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7))
        return static_cast<char>(byte + 32);
    return ch;
}

// A word behind -d or -i: blanks skipped, then up to the next blank.
const char* TakeWord(const char* p, std::string& word)
{
    while (*p == ' ')
        ++p;
    const char* start = p;
    while (*p && *p != ' ')
        ++p;
    word.assign(start, static_cast<size_t>(p - start));
    return p;
}

} // namespace

void CCommandLine::Parse(const char* text)
{
    const char* p = text ? text : "";
    while (*p) {
        if (*p == ' ') {
            ++p;
            continue;
        }
        if (*p != '-' && *p != '/') {
            files.Split(1, p);
            return;
        }
        ++p;
        char letter = FoldLower(*p);
        if (*p)
            ++p;
        switch (letter) {
        case 'a': {
            char how = FoldLower(*p);
            if (*p)
                ++p;
            static const char kinds[] = "vhcm";
            if (how && strchr(kinds, how))
                arrange = static_cast<int>(strchr(kinds, how) - kinds) + 1;
            break;
        }
        case 'd':
            p = TakeWord(p, directory);
            break;
        case 'i':
            p = TakeWord(p, iniName);
            break;
        case 'e':
            editOnly = 1;
            break;
        case 'p':
            printOnly = 1;
            break;
        case 's':
            safeMode = 1;
            break;
        default:
            break; // an unknown letter is ignored without a message
        }
    }
}

int ArrangeForSwitch(int arrangeSwitch)
{
    static const int values[] = {0, 0, 3, 1, 2}; // -av, -ah, -ac, -am
    return arrangeSwitch >= 1 && arrangeSwitch <= 4 ? values[arrangeSwitch] : -1;
}

std::string ProgramDirFromModule(const char* modulePath)
{
    std::string dir(modulePath ? modulePath : "");
    for (char& ch : dir)
        ch = FoldLower(ch);
    size_t slash = dir.rfind('\\');
    dir.erase(slash == std::string::npos ? 0 : slash + 1);
    if (dir.size() >= 3 && dir.compare(dir.size() - 3, 3, "nt\\") == 0)
        dir.erase(dir.size() - 3);
    return dir;
}
