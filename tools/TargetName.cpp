#include "tools/TargetName.h"

#include <cstring>

namespace
{

const char* NamePart(const char* path, const char* separators)
{
    const char* name = path;
    for (const char* p = path; *p; ++p)
        if (std::strchr(separators, *p))
            name = p + 1;
    return name;
}

bool InPart(const char* s)
{
    return *s && *s != '.';
}

} // namespace

std::string ExpandTargetName(const char* source, const char* target)
{
    const char* t = NamePart(target, "\\");
    std::string result(target, t);
    const char* s = NamePart(source, "\\:");
    while (*t) {
        switch (*t) {
        case '*':
            while (InPart(s))
                result += *s++;
            while (InPart(t))
                ++t;
            break;
        case '.':
            result += *t++;
            s = std::strchr(s, '.') ? std::strchr(s, '.') + 1 : s + std::strlen(s);
            break;
        case '?':
            if (InPart(s))
                result += *s++;
            ++t;
            break;
        default:
            result += *t++;
            if (InPart(s))
                ++s;
        }
    }
    return result;
}
