#pragma once
#include "text/LineStore.h"

namespace nib {

/// Blocks of lines, matched by the nesting that the scan left on them; which are collapsed, and what that hides.
class BlockFolder {
public:
    explicit BlockFolder(LineStore& lines) : lines_(lines) {}

    /// Last line of the block that `line` heads, -1 when it heads none: blocks that never close are none.
    int32_t BlockEnd(int32_t line) const;
    bool IsCollapsed(int32_t line) const;
    bool IsHidden(int32_t line) const;
    /// The block field of a line's control word.
    uint32_t BlockBits(int32_t line) const;
    /// Each answers whether anything changed.
    bool Collapse(int32_t line);
    bool Expand(int32_t line);
    bool CollapseAll();
    bool ExpandAll();
    bool Reveal(int32_t line);
    /// After edits of these lines: no line stays hidden without a collapsed head above it, and every collapsed head
    /// hides its block. Looks no further than the folds around them.
    bool Refresh(int32_t first, int32_t last);
    bool AnyCollapsed() const { return collapsed_ > 0; }
    void Reset() { collapsed_ = 0; }
    /// A line with these control bits goes; answers whether that concerns any fold.
    bool LineRemoved(uint32_t control);

private:
    int32_t LastHidden(int32_t head) const;
    int32_t LastHidden(int32_t head, int32_t end) const;
    /// Calls closed(head, end) for every block, inner ones first, in one walk over all lines.
    template <typename Closed>
    void MatchBlocks(Closed&& closed) const;
    void SetBit(int32_t line, uint32_t bit, bool on);
    void ShowRange(int32_t first, int32_t last);
    bool HideCollapsed();

    LineStore& lines_;
    int32_t collapsed_ = 0;
};

} // namespace nib
