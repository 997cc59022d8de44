#pragma once
// Characters that a font shows nothing of. They are drawn as signs in cells of their own, so that no text hides another
// or shows it in an order that is not its own.

#include "base/Text.h"

#include <array>
#include <cstdint>
#include <optional>

namespace nib {

/// Control characters and invisible format characters of one unit.
constexpr bool IsShownControl(char16_t c)
{
    if (c < 0x300) return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0xAD;
    return c == 0x034F || c == 0x061C || c == 0x115F || c == 0x1160 || c == 0x17B4 || c == 0x17B5 ||
           (c >= 0x180B && c <= 0x180F) || (c >= 0x200B && c <= 0x200F) || (c >= 0x2028 && c <= 0x202E) ||
           (c >= 0x2060 && c <= 0x206F) || c == 0x3164 || c == 0xFEFF || c == 0xFFA0 || (c >= 0xFFF9 && c <= 0xFFFB);
}

constexpr bool IsSign(char16_t c)
{
    return IsMark(c) || IsShownControl(c);
}

/// A sign of a single cell, which has no name.
constexpr bool IsSmallSign(char16_t c)
{
    return IsMark(c) || c < 0x20 || c == 0x7F;
}

struct Sign {
    int32_t units = 1;
    int32_t cells = 1;
    std::array<char, 8> name{}; ///< empty for a small one
};

/// The sign that begins at a unit, if one does. Variation selectors are signs where there is nothing that they could
/// be meant for.
std::optional<Sign> SignAt(TextView text, size_t at);

} // namespace nib
