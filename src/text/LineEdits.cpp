#include "text/LineEdits.h"

#include <algorithm>
#include <utility>

namespace nib {

namespace {

Position Moved(Position p, bool sticky, int32_t column, int32_t removed, int32_t inserted)
{
    if (p.col > column) p.col = std::max(p.col - removed, column);
    if (p.col > column || (p.col == column && !sticky)) p.col += inserted;
    return p;
}

} // namespace

void LineEdits::Remove(int32_t line, int32_t column, int32_t count)
{
    if (count > 0) splices_.push_back({line, column, count, 0});
}

void LineEdits::Replace(int32_t line, int32_t column, int32_t count, TextView text)
{
    if (text.empty()) return Remove(line, column, count);
    in_ += text;
    splices_.push_back({line, column, count, static_cast<int32_t>(text.size())});
}

void LineEdits::Reserve(size_t edits, size_t inserted)
{
    splices_.reserve(edits);
    in_.reserve(edits * inserted);
}

Position LineEdits::Map(Position p, bool sticky, bool forward) const
{
    auto at = std::partition_point(splices_.begin(), splices_.end(), [&](const Splice& s) { return s.line < p.line; });
    const auto end = std::find_if(at, splices_.end(), [&](const Splice& s) { return s.line != p.line; });
    if (forward) {
        for (; at != end; ++at) p = Moved(p, sticky, at->column, at->removed, at->inserted);
    } else {
        for (auto back = end; back != at;) {
            --back;
            p = Moved(p, sticky, back->column, back->inserted, back->removed);
        }
    }
    return p;
}

Position LineEdits::LastPlace(bool forward) const
{
    const Splice& last = forward ? splices_.back() : splices_.front();
    return {last.column + (forward ? last.inserted : last.removed), last.line};
}

bool LineEdits::GoesOnFrom(const LineEdits& before) const
{
    if (splices_.size() != before.splices_.size()) return false;
    int32_t line = -1;
    int32_t moved = 0;
    for (size_t i = 0; i < splices_.size(); ++i) {
        const Splice& now = splices_[i];
        const Splice& then = before.splices_[i];
        if (now.line != then.line || (now.removed > 0) != (then.removed > 0)) return false;
        if (std::exchange(line, now.line) != now.line) moved = 0;
        const int32_t from = now.column - moved;
        const int32_t end = then.column + then.inserted;
        if (from != end && (now.removed == 0 || from + now.removed != end)) return false;
        moved += now.inserted - now.removed;
    }
    return true;
}

void LineEdits::Do(LineStore& lines)
{
    size_t removed = 0;
    for (const Splice& splice : splices_) removed += static_cast<size_t>(splice.removed);
    out_.clear();
    out_.reserve(removed);
    size_t done = 0;
    size_t at = 0;
    try {
        for (; done < splices_.size(); ++done) {
            Splice& splice = splices_[done];
            const UnitSpan units = lines.At(splice.line).Units();
            const auto length = static_cast<int32_t>(units.length);
            splice.column = std::min(splice.column, length);
            splice.removed = std::min(splice.removed, length - splice.column);
            const auto column = static_cast<size_t>(splice.column);
            const auto count = static_cast<size_t>(splice.removed);
            const auto inserted = static_cast<size_t>(splice.inserted);
            if (count > 0) units.AppendTo(out_, column, count);
            lines.Replace(splice.line, column, count, TextView(in_).substr(at, inserted));
            at += inserted;
        }
    } catch (...) {
        Undo(lines, done);
        throw;
    }
}

void LineEdits::Undo(LineStore& lines, size_t done)
{
    size_t at = 0;
    for (size_t i = 0; i < done; ++i) at += static_cast<size_t>(splices_[i].removed);
    while (done > 0) {
        const Splice& splice = splices_[--done];
        const auto removed = static_cast<size_t>(splice.removed);
        at -= removed;
        lines.Replace(splice.line, static_cast<size_t>(splice.column), static_cast<size_t>(splice.inserted),
                      TextView(out_).substr(at, removed));
    }
}

} // namespace nib
