#include "text/RangeEdits.h"

#include <algorithm>

namespace nib {

namespace {

/// The end of a text that begins at `at`.
Position Behind(Position at, TextView text)
{
    for (size_t end = text.find_first_of(u"\r\n"); end != TextView::npos; end = text.find_first_of(u"\r\n")) {
        text.remove_prefix(end + (text.substr(end, 2) == u"\r\n" ? 2 : 1));
        at = {0, at.line + 1};
    }
    return {at.col + static_cast<int32_t>(text.size()), at.line};
}

/// Where a place that `from` leads to stands when `from` has become `to`.
Position Moved(Position p, Position from, Position to)
{
    return {p.line == from.line ? to.col + p.col - from.col : p.col, p.line + to.line - from.line};
}

} // namespace

RangeMoves::RangeMoves(const std::vector<RangeEdit>& edits)
{
    before_.reserve(edits.size());
    after_.reserve(edits.size());
    Position from;
    Position to;
    for (const RangeEdit& edit : edits) {
        before_.push_back({edit.start, edit.end});
        const Position start = Moved(edit.start, from, to);
        after_.push_back({start, Behind(start, edit.text)});
        from = edit.end;
        to = after_.back().end;
    }
}

Position RangeMoves::Map(Position p, bool sticky, bool forward) const
{
    const std::vector<Range>& from = forward ? before_ : after_;
    const std::vector<Range>& to = forward ? after_ : before_;
    auto behind = std::partition_point(from.begin(), from.end(),
                                       [&](const Range& r) { return sticky ? r.start < p : r.start <= p; });
    if (behind == from.begin()) return p;
    const auto at = static_cast<size_t>(behind - from.begin()) - 1;
    return p < from[at].end ? to[at].start : Moved(p, from[at].end, to[at].end);
}

size_t RangeBatch::MemoryUse() const
{
    size_t bytes = parts.capacity() * sizeof(TextEdit) + moves.MemoryUse();
    for (const TextEdit& part : parts)
        bytes += part.text.capacity() * sizeof(char16_t) + part.words.capacity() * sizeof(KeptWords);
    return bytes;
}

} // namespace nib
