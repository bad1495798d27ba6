#include "tools/DateFormat.h"

#include <cstdio>
#include <cstring>

namespace
{

std::string Number(int value, bool twoDigits)
{
    char text[16];
    snprintf(text, sizeof text, twoDigits ? "%02d" : "%d", value);
    return text;
}

// Word n (from 0) of a blank-separated list; empty past its end.
std::string Word(const char* list, int n)
{
    for (const char* p = list ? list : ""; *p;) {
        while (*p == ' ')
            ++p;
        const size_t length = strcspn(p, " ");
        if (length && n-- == 0)
            return std::string(p, length);
        p += length;
    }
    return std::string();
}

// A run of count letters: a number, or from three letters on a name, cut
// to three letters for exactly three.
std::string NumberOrName(int value, int count, const char* names, int index)
{
    if (count < 3 || !names)
        return Number(value, count > 1);
    const std::string name = Word(names, index);
    return count == 3 ? name.substr(0, 3) : name;
}

// Both date forms; the long one has the names and the quoted texts.
std::string FormatDate(const tm& time, const char* format, bool longForm, const char* dayNames,
                       const char* monthNames)
{
    std::string text;
    for (const char* p = format; *p;) {
        const char c = *p;
        if (longForm && c == '\'') {
            const char* close = strchr(p + 1, '\'');
            const char* end = close ? close : p + strlen(p);
            text.append(p + 1, end);
            p = close ? close + 1 : end;
            continue;
        }
        int count = 0;
        while (p[count] == c)
            ++count;
        if (c == 'M') {
            text +=
                NumberOrName(time.tm_mon + 1, count, longForm ? monthNames : nullptr, time.tm_mon);
        } else if (c == 'd') {
            text += NumberOrName(time.tm_mday, count, longForm ? dayNames : nullptr, time.tm_wday);
        } else if (c == 'y') {
            text += count >= 3 ? Number(time.tm_year + 1900, false) : Number(time.tm_year, true);
        } else {
            text += c;
            count = 1;
        }
        p += count;
    }
    return text;
}

} // namespace

std::string FormatTimeText(const tm& time, const TimeSettings& settings)
{
    int hour = time.tm_hour;
    const bool afternoon = hour >= 12;
    if (!settings.clock24 && hour > 12)
        hour -= 12;
    std::string text =
        Number(hour, settings.leadingZero) + settings.separator + Number(time.tm_min, true);
    if (!settings.clock24)
        text += ' ' + (afternoon ? settings.pm : settings.am);
    return text;
}

std::string FormatShortDateText(const tm& time, const char* format)
{
    return FormatDate(time, format, false, nullptr, nullptr);
}

std::string FormatLongDateText(const tm& time, const char* format, const char* dayNames,
                               const char* monthNames)
{
    return FormatDate(time, format, true, dayNames, monthNames);
}
