#pragma once
// The colours that have names. A value is 0x00BBGGRR, or 0x80000000 plus the index of a system colour.

#include "base/Text.h"
#include "editing/MvEdit.h"

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

// What the settings dialog shows the colours on: a short program with one of each kind of token.

inline constexpr TextView kSampleProgram = u"* Prices of all open orders\r\n"
                                           u"SUBROUTINE PRICE.LIST(ORDERS, TOTAL)\r\n"
                                           u"TOTAL = 0\r\n"
                                           u"NEXT.ORDER:\r\n"
                                           u"LOOP\r\n"
                                           u"   REMOVE ID FROM ORDERS SETTING MORE\r\n"
                                           u"   PRINT TRIM(ID)\r\n"
                                           u"UNTIL ID = '' DO\r\n"
                                           u"   IF ID # \"CLOSED\" THEN TOTAL = TOTAL + 12.50 ; * net\r\n"
                                           u"REPEAT\r\n"
                                           u"IF MORE THEN GOTO NEXT.ORDER\r\n"
                                           u"RETURN";

/// Words of a user, who may have none yet.
inline constexpr TextView kSampleUserWords = u"REMOVE FROM SETTING RETURN";

/// Puts on the sample's own settings what can be seen of `settings`. Its keywords and its highlighting stay, so that
/// every colour shows that the dialect has.
void ShowOnSample(const MvEdit& settings, MvEdit& sample);
/// Settings that the sample begins with.
MvEdit SampleSettings();

} // namespace nib
