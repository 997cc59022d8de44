#pragma once
#include <QScreen>
#include <QWidget>

namespace nib {

/// The first size of a window: what its texts would like, as far as the screen has it.
inline void ResizeOnScreen(QWidget& window, const QSize& wanted)
{
    window.resize(wanted.boundedTo(window.screen()->availableSize() * 0.9));
}

} // namespace nib
