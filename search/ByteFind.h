// Finding bytes eight at a time. The C library's own search is a byte loop
// on some platforms, and the global search and the views run over every
// byte of every file.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

// The high bit of each byte of word that is zero, and no other bit: no
// byte borrows from or carries into the next.
inline uint64_t ZeroByteBits(uint64_t word)
{
    const uint64_t lows = 0x7F7F7F7F7F7F7F7Full;
    return ~(((word & lows) + lows) | word | lows);
}

// The first c in [s, s + n), or null. The first byte in memory is the low
// byte of a word, as on every target of the program.
inline const char* FindByte(const char* s, char c, size_t n)
{
    const uint64_t pattern = 0x0101010101010101ull * static_cast<unsigned char>(c);
    size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        uint64_t word;
        memcpy(&word, s + i, sizeof word);
        if (const uint64_t zeros = ZeroByteBits(word ^ pattern))
            return s + i + __builtin_ctzll(zeros) / 8;
    }
    for (; i < n; ++i)
        if (s[i] == c)
            return s + i;
    return nullptr;
}
