#include "app/SettingsText.h"

#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <cstring>

std::string FormatSetting(long value, int radix)
{
    if (radix == 10)
        return std::to_string(value);
    uint32_t bits = static_cast<uint32_t>(value);
    std::string text;
    do {
        text.insert(text.begin(), static_cast<char>('0' + bits % static_cast<uint32_t>(radix)));
        bits /= static_cast<uint32_t>(radix);
    } while (bits);
    return text;
}

unsigned long ParseSetting(const char* text, int radix)
{
    while (isspace(static_cast<unsigned char>(*text)))
        ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    const unsigned long long value = strtoull(text, nullptr, radix);
    if (value > 0xFFFFFFFFu)
        return 0xFFFFFFFFul;
    return static_cast<uint32_t>(negative ? 0 - value : value); // a negative one wraps
}

int ParseFields(const char* text, long* fields, int count)
{
    int read = 0;
    for (const char* p = text; p && read < count; ++read) {
        fields[read] = strtol(p, nullptr, 10);
        p = strchr(p, ',');
        if (p)
            ++p;
    }
    return read;
}

void ParsePlacement(const char* text, long screenWidth, long screenHeight, Placement& placement)
{
    long fields[5];
    const int read = ParseFields(text, fields, 5);
    long* targets[4] = {&placement.left, &placement.top, &placement.right, &placement.bottom};
    for (int i = 0; i < read && i < 4; ++i)
        *targets[i] = fields[i];
    if (read > 0 && placement.left < 0)
        placement.left = 0;
    if (read > 1 && placement.top < 0)
        placement.top = 0;
    if (read > 2 && placement.right > screenWidth)
        placement.right = screenWidth;
    if (read > 3 && placement.bottom > screenHeight)
        placement.bottom = screenHeight;
    if (read > 4)
        placement.maximised = fields[4] != 0;
}

bool SplitSessionValue(const std::string& value, std::string& path, unsigned long& flags)
{
    const size_t comma = value.rfind(',');
    if (comma == std::string::npos || comma == 0) {
        path = value;
        return false;
    }
    flags = strtoul(value.c_str() + comma + 1, nullptr, 10); // blanks before it are skipped
    path = value.substr(0, comma);
    return true;
}
