#pragma once
#include <QColor>
#include <QPalette>

#include <cstdint>

namespace nib {

/// What a numbered system colour is on this desktop: the palette's where it has one for the purpose, a fixed one where
/// it has none. Invalid beyond the last number.
QColor DesktopColor(const QPalette& palette, int32_t index);

} // namespace nib
