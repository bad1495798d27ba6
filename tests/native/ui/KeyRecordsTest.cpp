#include "ui/KeyRecords.h"
#include "resources/KmIds.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

TEST(KeyRecords, KeyTableRowsAndMenuTexts)
{
    ASSERT_EQ(105, g_virtualKeyCount);
    EXPECT_EQ(0, VirtualKeyRow(0));
    EXPECT_EQ(1, VirtualKeyRow('A'));
    EXPECT_EQ(104, VirtualKeyRow(0x91));
    struct Case {
        unsigned key, fVirt;
        bool ok;
        const char* text;
    } cases[] = {
        {0, 0, true, ""},
        {'N', KEY_VIRTKEY | KEY_CONTROL, true, "\tCtrl+N"},
        {0x7B, KEY_VIRTKEY | KEY_SHIFT | KEY_ALT | KEY_CONTROL, true, "\tCtrl+Alt+Shift+F12"},
        {0x22, KEY_VIRTKEY, true, "\tPage Down"},
        {0x69, KEY_VIRTKEY | KEY_ALT, true, "\tAlt+Num 9"},
        {'N', 0, false, ""},
        {0x92, KEY_VIRTKEY, false, ""},
    };
    for (const Case& c : cases) {
        std::string text = "old";
        EXPECT_EQ(c.ok, KeyText(c.key, c.fVirt, text)) << c.key;
        if (c.ok) {
            EXPECT_EQ(c.text, text) << c.key;
        }
    }
}

TEST(KeyRecords, BindingValuesAndNames)
{
    struct Case {
        const char* value;
        unsigned key, fVirt;
    } cases[] = {{"78,9", 78, 9}, {"78", 78, 0}, {" 65 ,, 25", 65, 25}, {"0,0", 0, 0}};
    for (const Case& c : cases) {
        unsigned key = 1, fVirt = 1;
        ParseBindingValue(c.value, key, fVirt);
        EXPECT_EQ(c.key, key) << c.value;
        EXPECT_EQ(c.fVirt, fVirt) << c.value;
    }
    EXPECT_EQ(unsigned(ID_FILE_NEW), CommandByName("fILE:nEW"));
    EXPECT_EQ(0u, CommandByName("File:Ne"));
    EXPECT_EQ(0u, CommandByName("File:NewX"));
    std::string name;
    ASSERT_TRUE(CommandName(ID_EDIT_SHIFTRIGHT, name));
    EXPECT_EQ("Edit:ShiftRight", name);
}

TEST(KeyRecords, OnlyTheFirstRecordOfACommandChanges)
{
    std::vector<KeyRecord> table = {
        {9, 0, 'A', 100}, {9, 0, 'B', 200}, {5, 0, 'C', 100}, {9, 0, 'D', 300}};
    int count = 4;
    table.resize(5);
    ASSERT_TRUE(SetRecord(table.data(), count, 5, 0x11, 'X', 100));
    EXPECT_EQ('X', table[0].key);
    EXPECT_EQ(0x11, table[0].fVirt);
    EXPECT_EQ('C', table[2].key);
    ASSERT_TRUE(SetRecord(table.data(), count, 5, 1, 'E', 400)); // appended
    EXPECT_EQ(5, count);
    EXPECT_EQ(400, table[4].cmd);
    EXPECT_FALSE(SetRecord(table.data(), count, 5, 1, 'F', 500)); // full
    ASSERT_TRUE(SetRecord(table.data(), count, 5, 0, 0, 100));    // removes the first
    EXPECT_EQ(4, count);
    EXPECT_EQ(200, table[0].cmd);
    EXPECT_EQ('C', table[1].key);
    EXPECT_EQ(400, table[3].cmd);
    EXPECT_EQ(1, FindRecord(table.data(), count, 100));
    EXPECT_FALSE(SetRecord(table.data(), count, 5, 0, 0, 999));
    EXPECT_EQ(4, count);
}

} // namespace
