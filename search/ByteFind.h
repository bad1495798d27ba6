// Finding one byte in a span, eight bytes at a time. The C library's own
// search is a byte loop on some platforms, and the global search runs it
// over every byte of every file more than once.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

// The first c in [s, s + n), or null. The first byte in memory is the low
// byte of a word, as on every target of the program.
inline const char* FindByte(const char* s, char c, size_t n)
{
    const uint64_t ones = 0x0101010101010101ull, lows = ones * 0x7F;
    const uint64_t pattern = ones * static_cast<unsigned char>(c);
    size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        uint64_t word;
        memcpy(&word, s + i, sizeof word);
        word ^= pattern;
        // the high bit of each byte of word that is zero, and of no other
        if (const uint64_t zeros = ~(((word & lows) + lows) | word | lows))
            return s + i + __builtin_ctzll(zeros) / 8;
    }
    for (; i < n; ++i)
        if (s[i] == c)
            return s + i;
    return nullptr;
}
