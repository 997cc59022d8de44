#pragma once
// UTF-16 text, positions in it, and the few helpers that every room needs. Upper and lower case and charset work are
// ICU's.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace nib {

using Text = std::u16string;
using TextView = std::u16string_view;

/// Converts UTF-8; an invalid sequence becomes U+FFFD. Pure ASCII takes a fast path.
Text FromUtf8(std::string_view bytes);
/// Converts to UTF-8; a lone surrogate becomes U+FFFD.
std::string ToUtf8(TextView text);
/// True when `bytes` is well-formed UTF-8.
bool IsValidUtf8(std::string_view bytes);

Text ToUpper(TextView text);
Text ToLower(TextView text);
/// Equality under Unicode case folding.
bool EqualsNoCase(TextView a, TextView b);
bool StartsWithNoCase(TextView text, TextView prefix);

/// Without the blanks (U+0020 only) at both ends.
TextView Trim(TextView text);
/// Every occurrence of `from`, which must not be empty, becomes `to`.
Text Replace(TextView text, TextView from, TextView to);
/// Cut at each `delimiter`; an empty text has no fields.
std::vector<Text> Split(TextView text, char16_t delimiter);
/// 0 for an empty text, else the number of delimiters plus one.
int32_t CountFields(TextView text, char16_t delimiter);
/// Field `number` (1-based), empty when there is none.
TextView Field(TextView text, char16_t delimiter, int32_t number);
/// Every "&" doubled, so that the text can stand in a caption where "&" marks the access key.
Text DoubleAmpersands(TextView text);

/// Decimal and upper-case hexadecimal (as an unsigned 32-bit number) forms.
Text Decimal(int64_t number);
Text Hex(int32_t number);
/// The decimal number at the start of `text` (sign allowed), 0 when there is none; clamped to 32 bits.
int32_t ToInt(TextView text);

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

/// A place in a text, 0-based; `col` counts UTF-16 units. What a user sees is 1-based.
struct Position {
    int32_t col = 0;
    int32_t line = 0;

    friend bool operator==(const Position&, const Position&) = default;
    friend std::strong_ordering operator<=>(const Position& a, const Position& b)
    {
        return a.line == b.line ? a.col <=> b.col : a.line <=> b.line;
    }
};

/// Length of the ASCII run at the start, looked at eight bytes at a time.
inline size_t AsciiRun(std::string_view bytes)
{
    size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        uint64_t word = 0;
        std::memcpy(&word, bytes.data() + i, 8);
        if (word & 0x8080808080808080ULL) break;
    }
    while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80) ++i;
    return i;
}

} // namespace nib
