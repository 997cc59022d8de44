#pragma once
// How single characters of a source text are shown.

#include "base/Text.h"

namespace nib {

/// Shown as a small sign although the font shows nothing: control characters, and the invisible format characters that
/// could hide or reorder code.
constexpr bool IsShownControl(char16_t c)
{
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0xAD || c == 0x200B || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x2069) || c == 0xFEFF;
}

/// Drawn by us in a cell of its own.
constexpr bool IsSign(char16_t c)
{
    return IsMark(c) || IsShownControl(c);
}

} // namespace nib
