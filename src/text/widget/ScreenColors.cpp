#include "text/widget/ScreenColors.h"

#include <algorithm>
#include <cmath>
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

double Luminance(const QColor& color)
{
    auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor Mix(const QColor& a, const QColor& b, double share)
{
    auto mix = [&](double x, double y) { return static_cast<float>(x * (1 - share) + y * share); };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

} // namespace

QColor DesktopColor(const QPalette& palette, int32_t index)
{
    if (index < 0 || index >= static_cast<int32_t>(std::size(kRows))) return {};
    const DesktopRow& row = kRows[index];
    return row.fixed ? QColor(row.fixed) : palette.color(row.group, row.role);
}

double Contrast(const QColor& a, const QColor& b)
{
    double x = Luminance(a) + 0.05;
    double y = Luminance(b) + 0.05;
    return std::max(x, y) / std::min(x, y);
}

QColor Legible(const QColor& color, const QColor& ground, double enough)
{
    if (Contrast(color, ground) >= enough) return color;
    const QColor target = Luminance(ground) < 0.2 ? QColor(Qt::white) : QColor(Qt::black);
    for (double share = 0.1; share < 1; share += 0.1) {
        QColor moved = Mix(color, target, share);
        if (Contrast(moved, ground) >= enough) return moved;
    }
    return target;
}

QColor ScreenColors::FromNumber(int32_t color) const
{
    auto bits = static_cast<uint32_t>(color);
    if (bits & 0x80000000U) {
        QColor known = DesktopColor(palette_, color & 0xFFFF);
        return known.isValid() ? known : palette_.color(QPalette::Text);
    }
    return QColor(static_cast<int>(bits & 0xFF), static_cast<int>(bits >> 8 & 0xFF),
                  static_cast<int>(bits >> 16 & 0xFF));
}

/// The styles are chosen for a white page as a rule, so a dark one asks for more.
QColor ScreenColors::Readable(QColor color) const
{
    bool dark = Luminance(base) < 0.2;
    return !dark && Contrast(color, base) >= 2.5 ? color : Legible(color, base);
}

/// White on black is what desktops show those who need more contrast than others.
QColor ScreenColors::Drawn(const TokenStyle& style) const
{
    constexpr double enough = 4.5;
    constexpr double most = 7;
    const QColor color = FromNumber(style.color);
    if (style.chosen) return color;
    const bool highContrast = Luminance(base) == 0 && palette_.color(QPalette::Text) == Qt::white;
    return Legible(color, base, highContrast ? most : enough);
}

/// For areas, which need less than text does.
QColor ScreenColors::Visible(const QColor& color) const
{
    return Contrast(color, base) >= 1.8 ? color : Legible(color, base);
}

ScreenStyle ScreenColors::Style(int32_t tokenType) const
{
    auto index = static_cast<size_t>(tokenType);
    if (index >= known_.size()) return Find(tokenType);
    if (!known_[index]) known_[index] = Find(tokenType);
    return *known_[index];
}

ScreenStyle ScreenColors::Find(int32_t tokenType) const
{
    TokenStyle style = model_->TokenStyles().Get(tokenType);
    if (style.color == -1) return {text, style.style};
    return {Drawn(style), style.style};
}

void ScreenColors::Build(const QPalette& palette, const SourceView& model)
{
    known_.fill(std::nullopt);
    palette_ = palette;
    model_ = &model;
    base = FromNumber(model.BackColor());
    TokenStyle plain = model.TokenStyles().Get(kPlainToken);
    text = plain.color == -1 ? Legible(palette.color(QPalette::Text), base) : Drawn(plain);
    highlight = palette.color(QPalette::Highlight);
    highlightedText = palette.color(QPalette::HighlightedText);
    faint = Readable(Mix(text, base, 0.45));
    sign = Readable(Mix(text, base, 0.25));
    hidden = Readable(QColor(0xC0, 0x39, 0x2B));
    strong = text;
    line = Mix(text, base, 0.85);
    bookmark = Mix(highlight, base, 0.1);
    // A ground of any colour: what is laid on it is of the text's and the selection's.
    currentLine = Mix(text, base, 0.94);
    match = Mix(highlight, base, 0.8);
    matchFrame = Mix(highlight, base, 0.25);
    occurrence = Mix(Mix(highlight, text, 0.3), base, 0.82);
    found = Mix(QColor(0xF2, 0xA6, 0x0C), base, Luminance(base) < 0.2 ? 0.8 : 0.75);
    foundMark = Visible(QColor(0xF2, 0xA6, 0x0C));
    guide = Mix(text, base, 0.82);
    blank = Mix(text, base, 0.65);
    unsaved = Visible(QColor(0xE8, 0x8A, 0x1A));
    saved = Visible(QColor(0x4A, 0xA5, 0x4E));
    wrong = Mix(hidden, base, 0.85);
    onWrong = Legible(hidden, wrong);
    onBookmark = Contrast(bookmark, Qt::white) >= 3 ? Qt::white : Qt::black;
}

} // namespace nib
