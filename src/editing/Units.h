#pragma once
// UTF-16 units, four at a time where a loop is hot.

#include <cstdint>
#include <cstring>

namespace nib::units {

inline constexpr uint64_t kEach = 0x0001000100010001ULL;

constexpr bool IsLetter(char16_t c)
{
    return (c | 0x20) >= u'a' && (c | 0x20) <= u'z';
}
constexpr bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

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

inline bool Holds4(uint64_t four, char16_t unit)
{
    uint64_t zero = four ^ (kEach * unit);
    return ((zero - kEach) & ~zero & (kEach * 0x8000)) != 0;
}

/// A-Z become a-z; the units must be ASCII.
inline uint64_t FoldAscii4(uint64_t four)
{
    uint64_t atLeastA = four + kEach * (0x80 - u'A');
    uint64_t behindZ = four + kEach * (0x80 - u'Z' - 1);
    return four | ((atLeastA & ~behindZ & (kEach * 0x80)) >> 2);
}

constexpr char16_t FoldAscii(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c | 0x20) : c;
}

} // namespace nib::units
