#include "text/Carets.h"

#include "text/SourceDocument.h"

#include <numeric>

namespace nib {

namespace {

/// Selections that only touch stay two; a caret at the edge of one is part of it.
bool Meet(const CaretSpan& a, const CaretSpan& b)
{
    const Position end = a.LastCell();
    const Position start = b.FirstCell();
    return start < end || (start == end && (a.IsEmpty() || b.IsEmpty()));
}

bool InOrder(const CaretSpan& a, const CaretSpan& b)
{
    const Position first = a.FirstCell();
    const Position second = b.FirstCell();
    return first != second ? first < second : a.LastCell() < b.LastCell();
}

/// Both of them, in the direction of `leading`.
CaretSpan Union(const CaretSpan& a, const CaretSpan& b, const CaretSpan& leading)
{
    const CaretSpan& first = a.FirstCell() <= b.FirstCell() ? a : b;
    const CaretSpan& last = a.LastCell() >= b.LastCell() ? a : b;
    auto startOf = [](const CaretSpan& s) {
        return s.AnchorCell() <= s.CaretCell() ? std::pair(s.anchor, s.anchorBeyond)
                                               : std::pair(s.caret, s.caretBeyond);
    };
    auto endOf = [](const CaretSpan& s) {
        return s.AnchorCell() <= s.CaretCell() ? std::pair(s.caret, s.caretBeyond)
                                               : std::pair(s.anchor, s.anchorBeyond);
    };
    auto [start, startBeyond] = startOf(first);
    auto [end, endBeyond] = endOf(last);
    const bool backward = leading.CaretCell() < leading.AnchorCell();
    return backward ? CaretSpan{end, start, endBeyond, startBeyond, leading.goal}
                    : CaretSpan{start, end, startBeyond, endBeyond, leading.goal};
}

} // namespace

void Carets::Set(std::vector<CaretSpan> spans, size_t main)
{
    spans_ = std::move(spans);
    main_ = main;
    if (!std::is_sorted(spans_.begin(), spans_.end(), InOrder)) {
        std::vector<size_t> order(spans_.size());
        std::iota(order.begin(), order.end(), size_t{0});
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return InOrder(spans_[a], spans_[b]); });
        std::vector<CaretSpan> sorted;
        sorted.reserve(spans_.size());
        for (size_t i : order) sorted.push_back(spans_[i]);
        main_ = static_cast<size_t>(std::find(order.begin(), order.end(), main) - order.begin());
        spans_ = std::move(sorted);
    }
    Merge();
}

void Carets::Merge()
{
    size_t kept = 0;
    size_t main = 0;
    for (size_t i = 1; i < spans_.size(); ++i) {
        if (i == main_) main = kept + 1;
        if (!Meet(spans_[kept], spans_[i])) {
            spans_[++kept] = spans_[i];
            continue;
        }
        const bool leads = i == main_ || (spans_[kept].IsEmpty() && main != kept);
        spans_[kept] = Union(spans_[kept], spans_[i], leads ? spans_[i] : spans_[kept]);
        if (i == main_) main = kept;
    }
    if (!spans_.empty()) spans_.resize(kept + 1);
    main_ = main;
}

void Carets::Follow(const TextChange& change)
{
    for (CaretSpan& span : spans_) {
        const bool forwards = span.anchor < span.caret;
        const bool empty = span.anchor == span.caret;
        span.anchor = change.Map(span.anchor, empty || !forwards);
        span.caret = change.Map(span.caret, empty || forwards);
        // What a line lost or got decides anew where it ends.
        span.anchorBeyond = span.caretBeyond = 0;
        span.goal = -1;
    }
    Merge();
}

std::span<const CaretSpan> Carets::InLines(int32_t first, int32_t last) const
{
    auto from =
        std::partition_point(spans_.begin(), spans_.end(), [&](const CaretSpan& s) { return s.End().line < first; });
    auto to = std::partition_point(from, spans_.end(), [&](const CaretSpan& s) { return s.Start().line <= last; });
    return {from, to};
}

size_t Carets::Find(Position at) const
{
    auto found = std::partition_point(spans_.begin(), spans_.end(), [&](const CaretSpan& s) { return s.End() < at; });
    return found != spans_.end() && found->Covers(at) ? static_cast<size_t>(found - spans_.begin()) : spans_.size();
}

} // namespace nib
