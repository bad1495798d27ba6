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
    EXPECT_EQ(std::string(32, '1'), FormatSetting(-1, 2));

    Placement place = {-100, -100, 0, 0, 0};
    ParsePlacement("-5,-6,900", 800, 600, place);
    EXPECT_EQ(0, place.left);
    EXPECT_EQ(0, place.top);
    EXPECT_EQ(800, place.right);
    EXPECT_EQ(0, place.bottom); // the default's, untouched without a field
    ParsePlacement("1,2,3,700,5", 800, 600, place);
    EXPECT_EQ(600, place.bottom);
    EXPECT_EQ(1, place.maximised);

    for (const char* value : {"c:\\x.c", ",12"}) {
        std::string path;
        unsigned long flags = 99;
        EXPECT_FALSE(SplitSessionValue(value, path, flags));
        EXPECT_EQ(value, path);
        EXPECT_EQ(99ul, flags);
    }
    std::string path;
    unsigned long flags = 99;
    EXPECT_TRUE(SplitSessionValue("c:\\a,b.c, 13", path, flags));
    EXPECT_EQ("c:\\a,b.c", path);
    EXPECT_EQ(13ul, flags);
}

} // namespace
