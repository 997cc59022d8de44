#pragma once
// UTF-16 text and the few helpers that every room needs. Upper and lower case and charset work are ICU's.

#include <cstdint>
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

} // namespace nib
