#include "views/ViewLayout.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

TEST(ViewLayout, HexRowsShowAddressGroupsOfFourAndPrintableCharacters)
{
    const struct {
        uint32_t offset;
        std::string bytes, row;
    } rows[] = {
        {0, "A", "       0: 41" + std::string(35, ' ') + "A"},
        {0xFFFFFFF0u, std::string("\x7f\x80\x9f\xa0\x1f\xff\x00 ~", 9),
         "FFFFFFF0: 7F809FA0 1FFF0020 7E" + std::string(17, ' ') + "\x7f..\xa0.\xff. ~"},
    };
    for (const auto& row : rows) {
        char text[HEX_ROW_SIZE];
        const int length =
            FormatHexRow(row.offset, reinterpret_cast<const unsigned char*>(row.bytes.data()),
                         int(row.bytes.size()), text);
        EXPECT_EQ(row.row, std::string(text, size_t(length)));
    }
}

TEST(ViewLayout, HexColumnsAndClicksRoundTrip)
{
    const int32_t columns[][2] = {{0, 10}, {1, 12}, {4, 19}, {15, 43}, {16, 45}};
    for (const auto& [byte, column] : columns) {
        EXPECT_EQ(column, HexColumnOf(byte));
        EXPECT_EQ(byte, HexByteAt(column));
    }
    // Left of the digits the first byte, from 45 on the end; 44 rounds down.
    const int32_t clicks[][2] = {{3, 0}, {11, 1}, {18, 4}, {44, 15}, {46, 16}, {60, 16}};
    for (const auto& [column, byte] : clicks)
        EXPECT_EQ(byte, HexByteAt(column)) << column;
}

TEST(ViewLayout, TabStopsOfATextLine)
{
    const std::string line = "\tab\tc";
    const int32_t columns[][3] = {{0, 0, 8},  {1, 8, 8}, {2, 9, 8}, {3, 10, 8},
                                  {4, 16, 8}, {4, 8, 4}, {9, 21, 8}};
    for (const auto& [col, column, tab] : columns)
        EXPECT_EQ(column, TextColumnOf(line.data(), int(line.size()), col, tab)) << col;
    // A click on a tab's blank area snaps forward to the tab stop.
    const int32_t clicks[][3] = {{3, 1, 8}, {8, 1, 8}, {9, 2, 9}, {11, 4, 16}, {30, 5, 17}};
    for (const auto& [click, col, reached] : clicks) {
        int32_t column = click;
        EXPECT_EQ(col, TextByteAt(line.data(), int(line.size()), column, 8)) << click;
        EXPECT_EQ(reached, column);
    }
}

} // namespace
