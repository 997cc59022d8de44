#pragma once
// UTF-16 units, several at a time where a loop is hot.

#include "base/Text.h"

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace nib::units {

static_assert((kSubValueMark | 1) == kValueMark);

constexpr bool IsLetter(char16_t c)
{
    return (c | 0x20) >= u'a' && (c | 0x20) <= u'z';
}
constexpr bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}
constexpr char16_t FoldAscii(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c | 0x20) : c;
}

inline constexpr uint64_t kEach = 0x0001000100010001ULL;

inline uint64_t Load4(const char16_t* at)
{
    uint64_t four = 0;
    std::memcpy(&four, at, sizeof four);
    return four;
}

inline bool IsAscii4(uint64_t four)
{
    return (four & (kEach * 0xFF80)) == 0;
}

/// A-Z become a-z; the units must be ASCII.
inline uint64_t FoldAscii4(uint64_t four)
{
    uint64_t atLeastA = four + kEach * (0x80 - u'A');
    uint64_t behindZ = four + kEach * (0x80 - u'Z' - 1);
    return four | ((atLeastA & ~behindZ & (kEach * 0x80)) >> 2);
}

inline constexpr size_t kAtOnce = 16;

/// So many units of 8 bits as units of 16.
inline void Widen(const uint8_t* from, char16_t* to)
{
#if defined(__SSE2__)
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to) + 1, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
#else
    for (size_t i = 0; i < kAtOnce; ++i) to[i] = from[i];
#endif
}

/// Sixteen units; the answers hold a bit for each, that of the first lowest.
#if defined(__SSE2__)
class Group {
public:
    explicit Group(const char16_t* at)
        : first_(Load8(at)), second_(Load8(at + 8)), bytes_(_mm_packus_epi16(first_, second_))
    {
    }

    /// `c` is ASCII and not NUL.
    uint32_t Equal(char16_t c) const { return Bits(Same(c)); }
    /// Letters, digits, ".", "%", "_".
    uint32_t Names() const
    {
        __m128i letters = Between(_mm_or_si128(bytes_, All(0x20)), u'a', u'z');
        __m128i names = _mm_or_si128(letters, Between(bytes_, u'0', u'9'));
        return Bits(_mm_or_si128(names, _mm_or_si128(Same(u'.'), _mm_or_si128(Same(u'%'), Same(u'_')))));
    }

    /// Value and subvalue marks, which differ in the lowest bit only.
    uint32_t Breaks() const { return Bits(_mm_packs_epi16(Break8(first_), Break8(second_))); }

private:
    static __m128i Break8(__m128i units)
    {
        return _mm_cmpeq_epi16(_mm_or_si128(units, _mm_set1_epi16(1)), _mm_set1_epi16(static_cast<short>(kValueMark)));
    }
    static __m128i Load8(const char16_t* at) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); }
    static __m128i All(int c) { return _mm_set1_epi8(static_cast<char>(c)); }
    static uint32_t Bits(__m128i mask) { return static_cast<uint32_t>(_mm_movemask_epi8(mask)); }
    __m128i Same(char16_t c) const { return _mm_cmpeq_epi8(bytes_, All(c)); }
    static __m128i Between(__m128i bytes, int low, int high)
    {
        return _mm_and_si128(_mm_cmpgt_epi8(bytes, All(low - 1)), _mm_cmpgt_epi8(All(high + 1), bytes));
    }

    __m128i first_;
    __m128i second_;
    __m128i bytes_; ///< units beyond a byte are 0 or 255, which nobody asks for
};
#else
class Group {
public:
    explicit Group(const char16_t* at) : at_(at) {}

    uint32_t Equal(char16_t c) const
    {
        return Bits([c](char16_t unit) { return unit == c; });
    }
    /// Letters, digits, ".", "%", "_".
    uint32_t Names() const
    {
        return Bits([](char16_t c) { return IsLetter(c) || IsDigit(c) || c == u'.' || c == u'%' || c == u'_'; });
    }

    uint32_t Breaks() const
    {
        return Bits([](char16_t c) { return c == kValueMark || c == kSubValueMark; });
    }

private:
    template <typename Test>
    uint32_t Bits(Test test) const
    {
        uint32_t bits = 0;
        for (size_t i = 0; i < kAtOnce; ++i) bits |= (test(at_[i]) ? 1U : 0U) << i;
        return bits;
    }

    const char16_t* at_;
};
#endif

} // namespace nib::units
