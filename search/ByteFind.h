// Finding bytes sixteen at a time. The C library's own search is a byte
// loop on some platforms, and the global search and the views run over
// every byte of every file. With the vector unit that every 64-bit target
// has, a compare; without it, words of eight bytes.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__) && !defined(KM_BYTEFIND_WORDS)
#define KM_BYTEFIND_VECTOR
#include <emmintrin.h>
#endif

// The high bit of each byte of word that is zero, and no other bit: no
// byte borrows from or carries into the next.
inline uint64_t ZeroByteBits(uint64_t word)
{
    const uint64_t lows = 0x7F7F7F7F7F7F7F7Full;
    return ~(((word & lows) + lows) | word | lows);
}

// The high bit of each byte of word as one bit, the first byte in memory
// lowest: gathered into one byte by a multiply.
inline uint32_t HighBitsOf(uint64_t word)
{
    static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "bytes of a word in memory order");
    return static_cast<uint32_t>(((word >> 7) * 0x0102040810204080ull) >> 56);
}

// One bit for each of the 16 bytes from s on that equals a or b (which may
// be the same byte), the first byte in memory lowest.
inline uint32_t ByteMask16(const void* s, unsigned char a, unsigned char b)
{
#ifdef KM_BYTEFIND_VECTOR
    const __m128i v = _mm_loadu_si128(static_cast<const __m128i*>(s));
    const __m128i hits = _mm_or_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8(static_cast<char>(a))),
                                      _mm_cmpeq_epi8(v, _mm_set1_epi8(static_cast<char>(b))));
    return static_cast<uint32_t>(_mm_movemask_epi8(hits));
#else
    const uint64_t ones = 0x0101010101010101ull;
    uint32_t mask = 0;
    for (int k = 0; k < 2; ++k) {
        uint64_t w;
        memcpy(&w, static_cast<const char*>(s) + 8 * k, sizeof w);
        mask |= HighBitsOf(ZeroByteBits(w ^ (ones * a)) | ZeroByteBits(w ^ (ones * b))) << (8 * k);
    }
    return mask;
#endif
}

// The same for the 32 bytes from s on.
inline uint32_t ByteMask32(const void* s, unsigned char a, unsigned char b)
{
    return ByteMask16(s, a, b) | ByteMask16(static_cast<const char*>(s) + 16, a, b) << 16;
}

// The first c in [s, s + n), or null.
inline const char* FindByte(const char* s, char c, size_t n)
{
    const unsigned char u = static_cast<unsigned char>(c);
    size_t i = 0;
    for (; i + 16 <= n; i += 16)
        if (const uint32_t mask = ByteMask16(s + i, u, u))
            return s + i + __builtin_ctz(mask);
    for (; i < n; ++i)
        if (s[i] == c)
            return s + i;
    return nullptr;
}
