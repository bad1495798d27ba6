#include "app/SettingsText.h"

#include <gtest/gtest.h>

namespace
{

// What the window tests can't reach: the numbers' extremes, a partial
// Window value, and session values without a usable comma.
TEST(SettingsText, EdgesOfTheTexts)
{
    EXPECT_EQ(0xFFFFFFFFul, ParseSetting(" -1", 10));
    EXPECT_EQ(0xFFFFFFFFul, ParseSetting("99999999999", 10));
    EXPECT_EQ(2ul, ParseSetting("102", 2));
    EXPECT_EQ("10000001000", FormatSetting(0x408, 2));

    Placement place = {-100, -100, 0, 0, 0};
    ParsePlacement("-5,-6,900", 800, 600, place);
    EXPECT_EQ("0 0 800 0 0", std::to_string(place.left) + " " + std::to_string(place.top) + " " +
                                 std::to_string(place.right) + " " + std::to_string(place.bottom) +
                                 " " + std::to_string(place.maximised));

    std::string path;
    unsigned long flags = 99;
    for (const char* value : {"c:\\x.c", ",12"}) {
        EXPECT_FALSE(SplitSessionValue(value, path, flags));
        EXPECT_EQ(value, path);
    }
    EXPECT_TRUE(SplitSessionValue("c:\\a,b.c, 13", path, flags));
    EXPECT_EQ("c:\\a,b.c 13", path + " " + std::to_string(flags));
}

} // namespace
