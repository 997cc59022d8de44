#include "text/widget/DesktopColors.h"

#include <iterator>

namespace nib {

namespace {

struct DesktopRow {
    QPalette::ColorRole role;
    QPalette::ColorGroup group = QPalette::Active;
    QRgb fixed = 0; ///< instead of the role, unless 0
};

constexpr DesktopRow kRows[] = {
    {QPalette::Midlight},                              // scroll bar
    {QPalette::Window, QPalette::Active, 0xFF3A6EA5U}, // desktop
    {QPalette::Highlight},                             // active caption
    {QPalette::Mid},                                   // inactive caption
    {QPalette::Window},                                // menu
    {QPalette::Base},                                  // window
    {QPalette::Shadow},                                // window frame
    {QPalette::WindowText},                            // menu text
    {QPalette::Text},                                  // window text
    {QPalette::HighlightedText},                       // active caption text
    {QPalette::Window},                                // active border
    {QPalette::Window},                                // inactive border
    {QPalette::Dark},                                  // workspace
    {QPalette::Highlight},                             // selection
    {QPalette::HighlightedText},                       // selected text
    {QPalette::Button},                                // button face
    {QPalette::Dark},                                  // button shadow
    {QPalette::Text, QPalette::Disabled},              // gray text
    {QPalette::ButtonText},                            // button text
    {QPalette::WindowText},                            // inactive caption text
    {QPalette::Light},                                 // button highlight
    {QPalette::Shadow},                                // dark shadow
    {QPalette::Midlight},                              // light
    {QPalette::ToolTipText},                           // tool tip text
    {QPalette::ToolTipBase},                           // tool tip
    {QPalette::AlternateBase},                         // alternate face
    {QPalette::Link},                                  // hot light
    {QPalette::Highlight},                             // active caption's end
    {QPalette::Mid},                                   // inactive caption's end
    {QPalette::Highlight},                             // menu highlight
    {QPalette::Window},                                // menu bar
};

} // namespace

QColor DesktopColor(const QPalette& palette, int32_t index)
{
    if (index < 0 || index >= static_cast<int32_t>(std::size(kRows))) return {};
    const DesktopRow& row = kRows[index];
    return row.fixed ? QColor(row.fixed) : palette.color(row.group, row.role);
}

} // namespace nib
