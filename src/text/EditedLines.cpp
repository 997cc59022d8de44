#include "text/EditedLines.h"

#include <algorithm>
#include <utility>

namespace nib {

void EditedLines::Add(int32_t first, int32_t oldLast, int32_t newLast, int32_t count)
{
    const int32_t tail = count - 1 - newLast;
    tail_ = Any() ? std::min(tail_, tail) : tail;
    first_ = Any() ? std::min(first_, first) : first;
    if (oldLast != newLast) {
        moved_ = true;
        ranges_.clear();
    }
    if (moved_) return;
    if (!ranges_.empty()) {
        // What follows the last edit, or is the same line again, goes on with it.
        Range& back = ranges_.back();
        if (first >= back.first && first <= back.last + 1) {
            back.last = std::max(back.last, newLast);
            return;
        }
    }
    ranges_.push_back({first, newLast});
}

void EditedLines::AddAll(std::vector<Range> ranges, int32_t count)
{
    const int32_t tail = count - 1 - ranges.back().last;
    tail_ = Any() ? std::min(tail_, tail) : tail;
    // Earlier ones no longer have the numbers that they were known by.
    moved_ = Any();
    first_ = moved_ ? std::min(first_, ranges.front().first) : ranges.front().first;
    ranges_ = moved_ ? std::vector<Range>() : std::move(ranges);
}

bool EditedLines::AreWithin(int32_t first, int32_t last, int32_t count) const
{
    return !moved_ && first_ >= first && count - 1 - tail_ <= last;
}

void EditedLines::Clear()
{
    ranges_.clear();
    first_ = -1;
    moved_ = false;
}

std::vector<EditedLines::Range> EditedLines::Take(int32_t count)
{
    std::vector<Range> ranges = std::exchange(ranges_, {});
    // Where lines came or went, the line below has a new one before it, whatever state that passes on.
    if (moved_) ranges = {{first_, count - tail_}};
    Clear();
    std::sort(ranges.begin(), ranges.end(), [](Range a, Range b) { return a.first < b.first; });
    size_t kept = 0;
    for (size_t i = 1; i < ranges.size(); ++i) {
        if (ranges[i].first <= ranges[kept].last + 1)
            ranges[kept].last = std::max(ranges[kept].last, ranges[i].last);
        else
            ranges[++kept] = ranges[i];
    }
    if (!ranges.empty()) ranges.resize(kept + 1);
    return ranges;
}

} // namespace nib
