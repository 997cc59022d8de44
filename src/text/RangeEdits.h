#pragma once
// Replacements at many places of a text that are made, told and taken back as one, whether they break lines or not.

#include "text/UndoStack.h"

#include <vector>

namespace nib {

/// A text in place of a range; the range is one of the text before all edits of the set.
struct RangeEdit {
    Position start;
    Position end;
    Text text;

    bool IsNothing() const { return start == end && text.empty(); }
};

/// What ranges of a text became, in the order of the text.
class RangeMoves {
public:
    RangeMoves() = default;
    /// The edits ascend and lie apart.
    explicit RangeMoves(const std::vector<RangeEdit>& edits);

    struct Range {
        Position start;
        Position end;
    };
    /// Of the edits' texts, in the text after.
    const std::vector<Range>& After() const { return after_; }
    const std::vector<Range>& Before() const { return before_; }
    /// Where `p` stands after the edits or, if not `forward`, after they were taken back; `sticky` as in TextChange.
    Position Map(Position p, bool sticky, bool forward) const;
    size_t MemoryUse() const { return (before_.capacity() + after_.capacity()) * sizeof(Range); }

private:
    std::vector<Range> before_;
    std::vector<Range> after_;
};

/// Edits as the undo stack keeps them: the parts in the order in which they were made, the last place first, so that
/// no part moves the place of one that follows.
struct RangeBatch {
    std::vector<TextEdit> parts;
    RangeMoves moves;

    size_t MemoryUse() const;
};

} // namespace nib
