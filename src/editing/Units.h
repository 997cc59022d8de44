#pragma once
// UTF-16 units, several at a time where a loop is hot.

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace nib::units {

constexpr bool IsLetter(char16_t c) { return (c | 0x20) >= u'a' && (c | 0x20) <= u'z'; }
constexpr bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
constexpr char16_t FoldAscii(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c | 0x20) : c; }

inline constexpr uint64_t kEach = 0x0001000100010001ULL;

inline uint64_t Load4(const char16_t* at)
{
    uint64_t four = 0;
    std::memcpy(&four, at, sizeof four);
    return four;
}

inline bool IsAscii4(uint64_t four) { return (four & (kEach * 0xFF80)) == 0; }

/// A-Z become a-z; the units must be ASCII.
inline uint64_t FoldAscii4(uint64_t four)
{
    uint64_t atLeastA = four + kEach * (0x80 - u'A');
    uint64_t behindZ = four + kEach * (0x80 - u'Z' - 1);
    return four | ((atLeastA & ~behindZ & (kEach * 0x80)) >> 2);
}

/// Eight units; the answers hold two equal bits for each of them, those of the first lowest.
#if defined(__SSE2__)
class Eight {
public:
    explicit Eight(const char16_t* at) : units_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))) {}

    uint32_t Equal(char16_t c) const { return Bits(Same(c)); }
    /// Letters, digits, ".", "%", "_".
    uint32_t Names() const
    {
        __m128i letters = Between(_mm_or_si128(units_, _mm_set1_epi16(0x20)), u'a', u'z');
        __m128i names = _mm_or_si128(letters, Between(units_, u'0', u'9'));
        names = _mm_or_si128(names, _mm_or_si128(Same(u'.'), _mm_or_si128(Same(u'%'), Same(u'_'))));
        return Bits(names);
    }

private:
    static uint32_t Bits(__m128i mask) { return static_cast<uint32_t>(_mm_movemask_epi8(mask)); }
    static __m128i All(char16_t c) { return _mm_set1_epi16(static_cast<short>(c)); }
    __m128i Same(char16_t c) const { return _mm_cmpeq_epi16(units_, All(c)); }
    static __m128i Between(__m128i units, char16_t low, char16_t high)
    {
        return _mm_and_si128(_mm_cmpgt_epi16(units, All(static_cast<char16_t>(low - 1))),
                             _mm_cmpgt_epi16(All(static_cast<char16_t>(high + 1)), units));
    }

    __m128i units_;
};
#else
class Eight {
public:
    explicit Eight(const char16_t* at) : at_(at) {}

    uint32_t Equal(char16_t c) const
    {
        return Bits([c](char16_t unit) { return unit == c; });
    }
    /// Letters, digits, ".", "%", "_".
    uint32_t Names() const
    {
        return Bits([](char16_t c) { return IsLetter(c) || IsDigit(c) || c == u'.' || c == u'%' || c == u'_'; });
    }

private:
    template <typename Test> uint32_t Bits(Test test) const
    {
        uint32_t bits = 0;
        for (int i = 0; i < 8; ++i) bits |= (test(at_[i]) ? 3U : 0U) << 2 * i;
        return bits;
    }

    const char16_t* at_;
};
#endif

/// Units before the first that answers no, at most eight.
inline int32_t RunOf(uint32_t bits) { return std::countr_one(bits) / 2; }
/// Units before the first that answers yes, at most eight.
inline int32_t RunTo(uint32_t bits) { return std::countr_zero(bits | 0x10000U) / 2; }

} // namespace nib::units
