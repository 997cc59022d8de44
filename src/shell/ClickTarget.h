#pragma once
// What a click in a text means, and what it leads to: a label to go to, an item to open, a block to fold.

#include "base/Text.h"

namespace nib {

class LexClass;
class Program;
class SourceView;
class mvDocument;

enum class HitKind : int32_t { None = 0, Label = 1, Call = 2, Include = 3, OpenBlock = 4, ClosedBlock = 5 };

struct Hit {
    HitKind kind = HitKind::None;
    Text Target;            ///< the label or item to go to
    int32_t TargetLine = 0; ///< 1-based; 0 for none
};

/// `at` is the character that was clicked, `lexer` that of the view: it is looked at with colours, be they on or off.
Hit HitTest(SourceView& view, Position at, LexClass* lexer = nullptr);

// These act on the target that the hit test has just left; `document` may be null.
void HandleBookmarkToggle(Program& program, mvDocument* document);
void HandleBlockToggle(Program& program, mvDocument* document);
/// `all`: every block; else the one round the caret.
void HandleBlockCollapse(mvDocument* document, bool collapse, bool all);
/// Asks for the target in a dialog, unless there is one and neither the caller nor the settings want to ask.
void HandleGoto(Program& program, mvDocument* document, bool alwaysAsk);
/// Opens the item that an include or call names.
void HandleOpen(Program& program, mvDocument* document);

} // namespace nib
