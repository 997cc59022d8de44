#pragma once
// The colours that have names. A value is 0x00BBGGRR, or 0x80000000 plus the index of a system colour.

#include "base/Text.h"

#include <functional>
#include <optional>
#include <vector>

namespace nib {

/// 0x00BBGGRR of one of the desktop's own colours by its index; nothing for one that the desktop does not know.
using SystemColors = std::function<std::optional<int32_t>(int32_t)>;

/// What a row of the list of colours does when it is no colour.
namespace color_row {
inline constexpr int32_t kStandardHeading = -1;
inline constexpr int32_t kSystemHeading = -2;
inline constexpr int32_t kCustom = -3;
constexpr bool IsHeading(int32_t value)
{
    return value == kStandardHeading || value == kSystemHeading;
}
} // namespace color_row

struct ColorRow {
    TextView name;
    int32_t value;
};

/// Headings, the colours below them as far as the desktop can translate them, and the row for a colour of one's own.
std::vector<ColorRow> ColorRows(const SystemColors& system);
/// Index of the row of a value; of the custom row for one that has no name.
size_t RowOfColor(const std::vector<ColorRow>& rows, int32_t value);

/// The real colour, black for a system colour that there is not.
int32_t ResolveColor(int32_t value, const SystemColors& system);
/// Name and components, for the tool tip of a colour's preview.
Text ColorTip(int32_t value, const SystemColors& system);

} // namespace nib
