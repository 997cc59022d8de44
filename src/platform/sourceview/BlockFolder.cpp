#include "platform/sourceview/BlockFolder.h"

#include "editing/SourceView.h"

#include <algorithm>

namespace nib {

namespace {
constexpr auto kControl = static_cast<size_t>(LineWord::Control);
}

bool BlockFolder::IsCollapsed(int32_t line) const
{
    return lines_.Word(line, kControl) & own_bits::kCollapsed;
}

bool BlockFolder::IsHidden(int32_t line) const
{
    return lines_.Word(line, kControl) & own_bits::kHidden;
}

int32_t BlockFolder::BlockEnd(int32_t line) const
{
    int32_t opens = NestingOf(lines_.Word(line, kControl)).opens;
    return opens > 0 ? lines_.FindClose(line + 1, opens) : -1;
}

/// The end line is hidden with its block unless it opens the next one.
int32_t BlockFolder::LastHidden(int32_t head) const
{
    int32_t end = BlockEnd(head);
    if (end > head && NestingOf(lines_.Word(end, kControl)).opens > 0) --end;
    return end;
}

uint32_t BlockFolder::BlockBits(int32_t line) const
{
    Nesting own = NestingOf(lines_.Word(line, kControl));
    int32_t depth = lines_.NestingBefore(line).opens;
    uint32_t bits = depth > own.closes ? line_bits::kBlockInside : 0;
    if (IsCollapsed(line)) return bits | line_bits::kBlockCollapsed;
    if (own.opens > 0 && BlockEnd(line) >= 0) return bits | line_bits::kBlockHead;
    if (own.closes > 0 && depth > 0) return bits | line_bits::kBlockEnd;
    return bits;
}

void BlockFolder::SetBit(int32_t line, uint32_t bit, bool on)
{
    uint32_t word = lines_.Word(line, kControl);
    lines_.SetWord(line, kControl, on ? word | bit : word & ~bit);
}

bool BlockFolder::Collapse(int32_t line)
{
    int32_t last = LastHidden(line);
    if (IsCollapsed(line) || last <= line) return false;
    SetBit(line, own_bits::kCollapsed, true);
    ++collapsed_;
    for (int32_t i = line + 1; i <= last; ++i) SetBit(i, own_bits::kHidden, true);
    return true;
}

/// Shows lines again, but for what collapsed blocks among them hide.
void BlockFolder::ShowRange(int32_t first, int32_t last)
{
    int32_t hiddenTo = -1;
    for (int32_t line = first; line <= last; ++line) {
        SetBit(line, own_bits::kHidden, line <= hiddenTo);
        if (IsCollapsed(line)) hiddenTo = std::max(hiddenTo, LastHidden(line));
    }
}

bool BlockFolder::Expand(int32_t line)
{
    if (!IsCollapsed(line)) return false;
    SetBit(line, own_bits::kCollapsed, false);
    --collapsed_;
    if (!IsHidden(line)) ShowRange(line + 1, LastHidden(line));
    return true;
}

bool BlockFolder::CollapseAll()
{
    for (int32_t line = 0; line < lines_.Count(); ++line) {
        if (IsCollapsed(line) || NestingOf(lines_.Word(line, kControl)).opens == 0 || LastHidden(line) <= line)
            continue;
        SetBit(line, own_bits::kCollapsed, true);
        ++collapsed_;
    }
    return Refresh();
}

bool BlockFolder::ExpandAll()
{
    if (collapsed_ == 0) return false;
    for (int32_t line = 0; line < lines_.Count(); ++line) {
        SetBit(line, own_bits::kCollapsed, false);
        SetBit(line, own_bits::kHidden, false);
    }
    collapsed_ = 0;
    return true;
}

bool BlockFolder::Reveal(int32_t line)
{
    bool changed = false;
    for (int32_t head = line - 1; head >= 0 && IsHidden(line); --head)
        if (IsCollapsed(head) && LastHidden(head) >= line) changed = Expand(head) || changed;
    return changed;
}

bool BlockFolder::Refresh()
{
    int32_t hiddenBefore = lines_.HiddenCount();
    int32_t hiddenTo = -1;
    bool changed = false;
    for (int32_t line = 0; line < lines_.Count(); ++line) {
        bool hide = line <= hiddenTo;
        if (hide != IsHidden(line)) {
            SetBit(line, own_bits::kHidden, hide);
            changed = true;
        }
        if (!IsCollapsed(line)) continue;
        int32_t last = LastHidden(line);
        if (last > line) {
            hiddenTo = std::max(hiddenTo, last);
        } else {
            SetBit(line, own_bits::kCollapsed, false);
            --collapsed_;
            changed = true;
        }
    }
    return changed || hiddenBefore != lines_.HiddenCount();
}

void BlockFolder::LineRemoved(uint32_t control)
{
    if (control & own_bits::kCollapsed) --collapsed_;
}

} // namespace nib
