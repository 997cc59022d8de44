#pragma once
// What a click in a text means: a label to go to, an item to open, a block to fold.

#include "text/SourceView.h"

namespace nib {

enum class HitKind : int32_t { None = 0, Label = 1, Call = 2, Include = 3, OpenBlock = 4, ClosedBlock = 5 };

struct Hit {
    HitKind kind = HitKind::None;
    Text Target;            ///< what to go to; for a block "-" or "+" and its 0-based line
    int32_t TargetLine = 0; ///< 1-based
};

/// `at` is the character that was clicked.
Hit HitTest(SourceView& view, Position at);

} // namespace nib
