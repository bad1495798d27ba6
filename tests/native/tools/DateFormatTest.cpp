#include "tools/DateFormat.h"

#include <gtest/gtest.h>

namespace
{

const char kDays[] = "Sunday Monday Tuesday Wednesday Thursday Friday Saturday";
const char kMonths[] = "January February March April May June July August September October "
                       "November December";

tm At(int year, int month, int day, int weekday, int hour, int minute)
{
    tm time = {};
    time.tm_year = year - 1900, time.tm_mon = month - 1, time.tm_mday = day;
    time.tm_wday = weekday, time.tm_hour = hour, time.tm_min = minute;
    return time;
}

TEST(DateFormat, TimesOnBothClocksShortAndLongDates)
{
    TimeSettings zeroes24;
    zeroes24.separator = '.';
    zeroes24.leadingZero = zeroes24.clock24 = true;
    const TimeSettings defaults;
    const struct {
        int hour, minute;
        const TimeSettings& settings;
        const char* text;
    } times[] = {
        {0, 5, defaults, "0:05 AM"},  {11, 59, defaults, "11:59 AM"}, {12, 0, defaults, "12:00 PM"},
        {13, 7, defaults, "1:07 PM"}, {23, 59, defaults, "11:59 PM"}, {9, 3, zeroes24, "09.03"},
        {0, 0, zeroes24, "00.00"},    {21, 30, zeroes24, "21.30"},
    };
    for (const auto& row : times)
        EXPECT_EQ(row.text, FormatTimeText(At(2000, 1, 1, 6, row.hour, row.minute), row.settings))
            << row.hour << ":" << row.minute;

    const tm newYear2000 = At(2000, 1, 1, 6, 0, 0), lateIn1999 = At(1999, 12, 31, 5, 0, 0);
    const struct {
        const tm& time;
        bool longForm;
        const char* format;
        const char* text;
    } dates[] = {
        {newYear2000, false, "M/d/yy", "1/1/100"},
        {newYear2000, false, "MM-dd-yyyy", "01-01-2000"},
        {newYear2000, false, "MMMM 'd'", "01 '1'"},
        {newYear2000, true, "dddd' 'MMMM' 'd' 'yyyy", "Saturday January 1 2000"},
        {lateIn1999, true, "ddd, MMM dd yy", "Fri, Dec 31 99"},
        {lateIn1999, true, "'dd''MM' M/d", "ddMM 12/31"},
        {newYear2000, true, "d 'of MM", "1 of MM"},
    };
    for (const auto& row : dates)
        EXPECT_EQ(row.text, row.longForm ? FormatLongDateText(row.time, row.format, kDays, kMonths)
                                         : FormatShortDateText(row.time, row.format))
            << row.format;
}

} // namespace
