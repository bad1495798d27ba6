// Built twice: with the vector compare, and with KM_BYTEFIND_WORDS for
// the eight-byte words that targets without the vector unit use.
#include "search/ByteFind.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

// Blocks that hold the bytes sought, their neighbours and bytes with the
// high bit set, at every place of the block.
TEST(ByteFind, MasksAndFirstBytesAtEveryPlace)
{
    const unsigned char sought[][2] = {{'\n', '\r'}, {'\n', '\n'}, {0x00, 0x80}, {0xFF, 'a'}};
    const unsigned char others[] = {'\v', '\f', 0x01, 0x7F, 0x81, 0xFE, 'b', 'A'};
    for (const auto& pair : sought)
        for (unsigned pattern = 0; pattern < 400; ++pattern) {
            unsigned char block[16];
            uint32_t expected = 0;
            unsigned seed = pattern * 2654435761u;
            for (int i = 0; i < 16; ++i) {
                seed = seed * 1103515245u + 12345u;
                const unsigned pick = seed >> 16;
                block[i] = pick % 5 == 0 ? pair[pick / 5 % 2] : others[pick / 5 % 8];
                if (block[i] == pair[0] || block[i] == pair[1])
                    expected |= 1u << i;
            }
            ASSERT_EQ(expected, ByteMask16(block, pair[0], pair[1])) << pattern;
            const char* text = reinterpret_cast<const char*>(block);
            for (size_t n : {size_t(16), size_t(9)}) {
                int first = -1;
                for (size_t i = 0; i < n && first < 0; ++i)
                    if (block[i] == pair[0])
                        first = static_cast<int>(i);
                const char* found = FindByte(text, static_cast<char>(pair[0]), n);
                ASSERT_EQ(first, found ? static_cast<int>(found - text) : -1) << pattern;
            }
        }
}

TEST(ByteFind, FirstByteBeyondWholeBlocks)
{
    std::string text(100, 'x');
    for (size_t at : {0, 15, 16, 31, 47, 99}) {
        text[at] = '\x1A';
        EXPECT_EQ(text.data() + at, FindByte(text.data(), '\x1A', text.size())) << at;
        EXPECT_EQ(nullptr, FindByte(text.data(), '\x1A', at));
        text[at] = 'x';
    }
}

} // namespace
