#pragma once
#include "base/Text.h"

namespace nib {

/// What the shell remembers between events, for the whole program.
struct ShellState {
    Text Target;            ///< what the last click in a view pointed at: a label, an item, or a block's line
    int32_t TargetLine = 0; ///< its line, 1-based; 0 for none
    bool HelpWasOpened = false;
};

} // namespace nib
