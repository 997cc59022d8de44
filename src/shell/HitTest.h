#pragma once
// What a click in a text means: a label to go to, an item to open, a block to fold.

#include "base/Position.h"
#include "base/Text.h"

namespace nib {

class SourceView;

enum class HitKind : int32_t { None = 0, Label = 1, Call = 2, Include = 3, OpenBlock = 4, ClosedBlock = 5 };

struct Hit {
    HitKind kind = HitKind::None;
    Text Target;            ///< the label or item to go to
    int32_t TargetLine = 0; ///< 1-based; 0 for none
};

/// `at` is the character that was clicked.
Hit HitTest(SourceView& view, Position at);

} // namespace nib
