#include "app/SettingsText.h"

#include <gtest/gtest.h>

namespace
{

TEST(SettingsText, NumbersInTheirRadix)
{
    const struct {
        const char* text;
        int radix;
        unsigned long value;
    } reads[] = {
        {"100000000000", 2, 0x800},
        {"10000001000", 2, 0x408},
        {"12abc", 10, 12},
        {"abc", 10, 0},
        {"  7", 10, 7},
        {"-1", 10, 0xFFFFFFFF},
        {"99999999999", 10, 0xFFFFFFFF},
        {"102", 2, 2},
    };
    for (const auto& read : reads)
        EXPECT_EQ(read.value, ParseSetting(read.text, read.radix)) << read.text;
    EXPECT_EQ("10000001000", FormatSetting(0x408, 2));
    EXPECT_EQ("0", FormatSetting(0, 2));
    EXPECT_EQ("-5", FormatSetting(-5, 10));
    EXPECT_EQ(std::string(32, '1'), FormatSetting(-1, 2));
}

TEST(SettingsText, Placement)
{
    const Placement fallback = {-100, -100, 0, 0, 0};
    const struct {
        const char* text;
        Placement place;
    } rows[] = {
        {"10,20,500,400,1", {10, 20, 500, 400, 1}},
        {"-30,-5,900,700,0", {0, 0, 800, 600, 0}}, // pulled in, size not kept
        {"10,20", {10, 20, 0, 0, 0}},              // as far as commas lead
        {"", {0, -100, 0, 0, 0}},
        {"5,6,7,8,9", {5, 6, 7, 8, 1}},
    };
    for (const auto& row : rows) {
        Placement place = fallback;
        ParsePlacement(row.text, 800, 600, place);
        EXPECT_EQ(row.place.left, place.left) << row.text;
        EXPECT_EQ(row.place.top, place.top) << row.text;
        EXPECT_EQ(row.place.right, place.right) << row.text;
        EXPECT_EQ(row.place.bottom, place.bottom) << row.text;
        EXPECT_EQ(row.place.maximised, place.maximised) << row.text;
    }
}

TEST(SettingsText, SessionValue)
{
    const struct {
        const char* value;
        bool split;
        const char* path;
        unsigned long flags;
    } rows[] = {
        {"c:\\a,b\\x.c,44", true, "c:\\a,b\\x.c", 44}, // the last comma separates
        {"c:\\x.c, 13", true, "c:\\x.c", 13},
        {"c:\\x.c,", true, "c:\\x.c", 0}, // bare comma: flags 0
        {"c:\\x.c", false, "c:\\x.c", 99},
        {",12", false, ",12", 99}, // a comma in front counts as none
    };
    for (const auto& row : rows) {
        std::string path;
        unsigned long flags = 99;
        EXPECT_EQ(row.split, SplitSessionValue(row.value, path, flags)) << row.value;
        EXPECT_EQ(row.path, path);
        EXPECT_EQ(row.flags, flags) << row.value;
    }
}

} // namespace
