#include "platform/qt/QtLooks.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include <cstdlib>

namespace nib {

namespace {

constexpr int kLeastContrast = 50;
constexpr int kHalfLight = 128;

/// Some desktops colour everything but the hints in empty fields, which are then dark on dark.
void ShowHints()
{
    QPalette palette = QApplication::palette();
    QColor hint = palette.color(QPalette::PlaceholderText);
    const int base = palette.color(QPalette::Base).lightness();
    if (std::abs(hint.lightness() - base) * hint.alpha() / 255 >= kLeastContrast) return;
    hint = palette.color(QPalette::Text);
    hint.setAlpha(128);
    palette.setColor(QPalette::PlaceholderText, hint);
    QApplication::setPalette(palette);
}

/// Fusion outlines boxes in a shade darker than the window's colour, which a dark window swallows. Nothing else of
/// these widgets is in that colour.
void ShowOutlines()
{
    const QPalette palette = QApplication::palette();
    const bool isFusion = QApplication::style()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
    if (!isFusion || palette.color(QPalette::Base).lightness() >= kHalfLight) return;
    QPalette outlined;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        outlined.setColor(group, QPalette::Window, palette.color(group, QPalette::Text));
    for (const char* name : {"QCheckBox", "QRadioButton"}) QApplication::setPalette(outlined, name);
}

} // namespace

void MendLooks()
{
    ShowHints();
    ShowOutlines();
}

} // namespace nib
