// Times and dates for page headers, in the forms of the system's
// international settings, which the caller reads and passes in.
// Platform-free.
#pragma once
#include <ctime>
#include <string>

struct TimeSettings {
    char separator = ':';
    bool leadingZero = false;
    bool clock24 = false;
    std::string am = "AM";
    std::string pm = "PM";
};

// The hour and minute; a 12-hour clock shows midnight's hour as 0, and the
// suffix behind a blank.
std::string FormatTimeText(const tm& time, const TimeSettings& settings);
// A format of runs of M, d and y: one letter a plain number, more a number
// of two digits; a year of fewer than three letters is tm_year, so that
// 2001 shows as 101.
std::string FormatShortDateText(const tm& time, const char* format);
// The short date's runs, where three or more M or d give the month's or
// the day's name (three its first three letters), from the blank-separated
// lists of seven days and twelve months; a text in single quotes stands as
// it is.
std::string FormatLongDateText(const tm& time, const char* format, const char* dayNames,
                               const char* monthNames);
