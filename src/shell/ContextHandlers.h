#pragma once
// What a click in a view leads to. They act on the target that the hit test has just left; `document` may be null.

#include "shell/Commands.h"

namespace nib {

void HandleBookmarkToggle(Program& program, mvDocument* document);
void HandleBlockToggle(Program& program, mvDocument* document);
/// `all`: every block; else the one round the caret.
void HandleBlockCollapse(mvDocument* document, bool collapse, bool all);
/// Asks for the target in a dialog, unless there is one and neither the caller nor the settings want to ask.
void HandleGoto(Program& program, mvDocument* document, bool alwaysAsk);
/// Opens the item that an include or call names.
void HandleOpen(Program& program, mvDocument* document);

} // namespace nib
