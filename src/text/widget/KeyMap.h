#pragma once
// Which key does what in a view: one table.

#include <QKeyEvent>

namespace nib {

class SourceViewWidget;

struct KeyBinding {
    int key;
    int modifiers;     ///< Qt::KeyboardModifiers without the keypad's bit
    bool shiftExtends; ///< with Shift too, which then extends the selection
    bool yields;       ///< a menu shortcut of the window on the same key goes first
    void (*run)(SourceViewWidget& widget, bool extend);
};

/// Null when the key has no binding.
const KeyBinding* FindBinding(const QKeyEvent& event);

/// The text that the key types, empty for none.
QString TypedText(const QKeyEvent& event);

} // namespace nib
