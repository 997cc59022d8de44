#pragma once
// The keys that belong to the frame before any widget of it may have them, as a pure function.

#include "base/Text.h"

namespace nib {

enum class FrameKey { Tab, F6, Other };

struct KeyStroke {
    FrameKey key = FrameKey::Other;
    bool down = true; ///< false when the key goes up
    bool shift = false;
    bool ctrl = false;
    bool alt = false;
};

struct KeyboardState {
    bool frameActive = false;        ///< the frame is the window that the user works in
    bool textFocused = false;        ///< the keys go to the text of the active document
    bool multiLineSelection = false; ///< of that text
};

enum class KeyAction {
    Pass,    ///< the widget gets the key
    Swallow, ///< nobody gets it
    NextDocument,
    PreviousDocument,
    IndentBlock,
    OutdentBlock
};

/// Every answer but Pass swallows the key.
KeyAction FilterKey(const KeyStroke& stroke, const KeyboardState& state);

/// The name of a numbered shortcut, 1 to 79 ("Ctrl+A" ...); empty for any other number.
Text ShortcutName(int32_t number);

} // namespace nib
