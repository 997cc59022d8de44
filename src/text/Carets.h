#pragma once
// The carets of a view while it has several: in the order of the text, apart from one another, one of them the main
// one.

#include "base/Text.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace nib {

struct TextChange;

/// A caret and its selection. Both may stand behind the end of their lines, where a column goes on: so many cells
/// behind it.
struct CaretSpan {
    Position anchor;
    Position caret;
    int32_t anchorBeyond = 0;
    int32_t caretBeyond = 0;
    double goal = -1; ///< as of a single caret

    Position Start() const { return std::min(anchor, caret); }
    Position End() const { return std::max(anchor, caret); }
    /// Of the selection, in the order of the text, with what lies behind the end of the line.
    Position FirstCell() const { return std::min(AnchorCell(), CaretCell()); }
    Position LastCell() const { return std::max(AnchorCell(), CaretCell()); }
    bool IsEmpty() const { return AnchorCell() == CaretCell(); }
    bool Covers(Position p) const { return Start() <= p && p <= End(); }
    Position AnchorCell() const { return {anchor.col + anchorBeyond, anchor.line}; }
    Position CaretCell() const { return {caret.col + caretBeyond, caret.line}; }
};

class Carets {
public:
    bool Several() const { return spans_.size() > 1; }
    /// None while there is a single caret, of which the view itself knows.
    const std::vector<CaretSpan>& Spans() const { return spans_; }
    size_t MainIndex() const { return main_; }
    const CaretSpan& Main() const { return spans_[main_]; }

    /// In any order; those that meet become one.
    void Set(std::vector<CaretSpan> spans, size_t main);
    void SetMain(size_t main) { main_ = main; }
    void Clear() { spans_ = {}; }
    void Follow(const TextChange& change);

    /// Those that reach into the lines.
    std::span<const CaretSpan> InLines(int32_t first, int32_t last) const;
    /// The one at a place or whose selection holds it, and the number of all when there is none.
    size_t Find(Position at) const;
    size_t MemoryUse() const { return spans_.capacity() * sizeof(CaretSpan); }

private:
    void Merge();

    std::vector<CaretSpan> spans_;
    size_t main_ = 0;
};

} // namespace nib
