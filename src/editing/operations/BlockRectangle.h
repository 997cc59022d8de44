#pragma once
#include "text/SourceView.h"

namespace nib {

/// What a block operation works on: the selection, put in order, or the caret's place.
struct BlockRectangle {
    Position start;
    Position end;
    Position caret;
    bool selected = false;
    bool swapped = false; ///< the user selected from the end to the start

    int32_t FirstLine() const { return start.line; }
    /// A selection that stops at the start of a line does not touch that line.
    int32_t LastLine() const { return end.col < 1 ? end.line - 1 : end.line; }

    /// Moves the places on this line that lie to the right of `column`, though never left of the line's start.
    void Shift(int32_t line, int32_t column, int32_t by);
};

/// Without a selection, a caret at the start of a line stands for the whole line.
BlockRectangle TakeBlock(const SourceView& view);
/// Tells of the change and puts the selection back, in the direction that the user gave it.
void FinishBlock(SourceDocument& document, SourceView& view, const BlockRectangle& block);

} // namespace nib
