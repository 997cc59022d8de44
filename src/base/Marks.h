#pragma once
#include "base/Text.h"

namespace nib {

// The MultiValue delimiters as they stand in an edited text: the host's bytes moved into the private-use area.
inline constexpr char16_t kTextMark = 0xF8FB;
inline constexpr char16_t kSubValueMark = 0xF8FC;
inline constexpr char16_t kValueMark = 0xF8FD;
inline constexpr char16_t kAttributeMark = 0xF8FE;
inline constexpr char16_t kItemMark = 0xF8FF;

inline constexpr TextView SubValueMark{u"\uF8FC"};
inline constexpr TextView ValueMark{u"\uF8FD"};
inline constexpr TextView AttributeMark{u"\uF8FE"};

constexpr bool IsMark(char16_t c)
{
    return c >= kTextMark && c <= kItemMark;
}

} // namespace nib
