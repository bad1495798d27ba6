#include "ui/KeyRecords.h"

#include <gtest/gtest.h>

namespace
{

// Menu texts and the lookups in the settings are tried with a real frame;
// here the order of the shifts and what the frame never shows.
TEST(KeyRecords, ShiftOrderAndOnlyTheFirstRecordOfACommandChanges)
{
    std::string text;
    ASSERT_TRUE(KeyText(0x7B, KEY_VIRTKEY | KEY_SHIFT | KEY_ALT | KEY_CONTROL, text));
    EXPECT_EQ("\tCtrl+Alt+Shift+F12", text);
    EXPECT_FALSE(KeyText(0x92, KEY_VIRTKEY, text));
    KeyRecord table[4] = {{9, 0, 'A', 100}, {9, 0, 'B', 200}, {5, 0, 'C', 100}};
    int count = 3;
    ASSERT_TRUE(SetRecord(table, count, 4, 0x11, 'X', 100));
    ASSERT_TRUE(SetRecord(table, count, 4, 1, 'E', 400));  // appended
    EXPECT_FALSE(SetRecord(table, count, 4, 1, 'F', 500)); // full
    ASSERT_TRUE(SetRecord(table, count, 4, 0, 0, 200));    // removed
    EXPECT_FALSE(SetRecord(table, count, 4, 0, 0, 200));
    ASSERT_EQ(3, count);
    EXPECT_EQ('X', table[0].key);
    EXPECT_EQ('C', table[1].key);
    EXPECT_EQ(400, table[2].cmd);
}

} // namespace
