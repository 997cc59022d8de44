#include "search/FindWalk.h"

#include "base/Error.h"

#include <algorithm>

namespace nib {

namespace {

constexpr Position kTop{0, 0};
constexpr Position kBottom{-1, -1};

SourceDocument& TextOf(mvDocument& document)
{
    return document.EnsureView().txtText().Document();
}

Position Resolve(const SourceDocument& text, Position p)
{
    int32_t last = text.LineCount() - 1;
    if (p.line < 0 || p.line > last) p.line = last;
    int32_t length = text.LineLength(p.line);
    if (p.col < 0 || p.col > length) p.col = length;
    return p;
}

/// A search backward finds what starts at its place or before; the hit that it comes from is not to be found again.
Position StepBack(const SourceDocument& text, Position p)
{
    int32_t last = text.LineCount() - 1;
    if (p.line < 0 || p.line > last) p.line = last;
    if (p.col == 0 && p.line > 0) return {-1, p.line - 1};
    if (p.col > 0) --p.col;
    return p;
}

} // namespace

void FindWalk::Reset()
{
    searchDocId_ = 0;
    newSearch_ = true;
}

void FindWalk::Rejoin(const FindQuery& query, mvDocument& current)
{
    if (newSearch_) return;
    Position left = lastMatch_;
    if (!query.up) left.col += query.Length();
    if (current.DocumentID() != searchDocId_ || current.EnsureView().txtText().Caret() != left) return Reset();
    document_ = documents_.ById(searchDocId_);
    if (!document_) return;
    lastMatch_.line = LineOf({lastMatch_, lastMatchLineId_});
    end_.at.line = LineOf(end_);
}

/// The line is mostly where it was; only after edits above it is it looked for.
int32_t FindWalk::LineOf(const Place& place) const
{
    if (place.lineId < 1) return -1;
    const SourceDocument& text = TextOf(*document_);
    if (place.at.line >= 0 && place.at.line < text.LineCount() &&
        static_cast<int32_t>(text.GetLineData(place.at.line, LineWord::Identity)) == place.lineId)
        return place.at.line;
    return document_->LineFromLineId(place.lineId);
}

void FindWalk::Mark(Place& place, Position at, bool withId)
{
    place.at = at;
    place.lineId = withId ? document_->LineIdFromLine(at.line) : -1;
}

void FindWalk::MoveLastMatch(mvDocument& document, Position place)
{
    lastMatch_ = place;
    lastMatchLineId_ = document.LineIdFromLine(place.line);
    shift_ = 0;
}

void FindWalk::ShiftLine(int32_t columns)
{
    shift_ = shiftedLine_ == lastMatch_.line ? shift_ + columns : columns;
    shiftedLine_ = lastMatch_.line;
}

bool FindWalk::Next(const FindQuery& query, mvDocument& current)
{
    if (newSearch_) {
        if (!Restart(query, current)) return false;
        return Search(query, start_.at, false);
    }
    FindDocument();
    Position from = lastMatch_;
    if (!query.up) from.col += query.Length();
    // Before the very first place of a text there is nothing left.
    return Search(query, from, query.up && lastMatch_ == kTop);
}

void FindWalk::FindDocument()
{
    document_ = documents_.ById(searchDocId_);
    if (!document_) throw Error{error_number::kInvalidCall, u"The document of the search has been closed."};
}

void FindWalk::KeepSelection(mvDocument& document)
{
    const OrderedSelection selection = document.GetOrderedSelection();
    keptDocId_ = document.DocumentID();
    keptStart_ = {selection.start, document.LineIdFromLine(selection.start.line)};
    keptEnd_ = {selection.end, document.LineIdFromLine(selection.end.line)};
}

/// The one kept, when all that is selected now is nothing.
std::optional<TextRange> FindWalk::SelectedRange(mvDocument& current)
{
    if (current.SelectionIsMultiLine()) KeepSelection(current);
    if (current.HasSelection()) {
        const OrderedSelection selection = current.GetOrderedSelection();
        return TextRange{selection.start, selection.end};
    }
    if (current.DocumentID() != keptDocId_) return {};
    TextRange kept{{keptStart_.at.col, LineOf(keptStart_)}, {keptEnd_.at.col, LineOf(keptEnd_)}};
    if (kept.start.line < 0 || kept.end.line < 0) return {}; // its lines are gone
    return kept;
}

bool FindWalk::Restart(const FindQuery& query, mvDocument& current)
{
    matchCount = 0;
    shift_ = 0;
    document_ = current.shared_from_this();
    searchDocId_ = current.DocumentID();
    visited_.assign(1, searchDocId_);
    int32_t last = TextOf(current).LineCount() - 1;
    Position start = query.up ? kBottom : kTop;
    Position end = query.up ? kTop : kBottom;
    if (query.inSelection) {
        const auto selection = SelectedRange(current);
        if (!selection) return false;
        start = selection->start;
        end = selection->end;
        if (start.line == last) start.line = -1;
        if (end.line == last) end.line = -1;
        if (query.up) std::swap(start, end);
    } else if (query.FromCaret()) {
        start = current.EnsureView().txtText().Caret();
        if (start.col == TextOf(current).LineLength(start.line)) start.col = -1;
        // In a text of one line the first line counts when searching down: what began there does not wrap.
        if (start.line == last && (query.up || last > 0)) start.line = -1;
    }
    Mark(start_, start, query.FromCaret());
    Mark(end_, end, query.FromCaret());
    newSearch_ = false;
    return true;
}

bool FindWalk::HitInRange(const FindQuery& query, Position from, Position& hit) const
{
    const SourceDocument& text = TextOf(*document_);
    if (query.up) from = StepBack(text, from);
    from = Resolve(text, from);
    FindHit found;
    if (!text.Find(query.text, from, {query.up, query.matchCase, query.wholeWord}, found)) return false;
    hit = found.at;
    Position end = end_.at;
    int32_t last = text.LineCount() - 1;
    if (end.line < 0 || end.line > last) end.line = last;
    // The end stands for the text with all replacements made, and is not itself moved by them.
    int32_t shift = end.line == shiftedLine_ ? shift_ : 0;
    int32_t length = text.LineLength(end.line) + shift;
    if (end.col < 0 || end.col > length) end.col = length;
    if (query.up) return hit >= end;
    return hit.line < end.line || (hit.line == end.line && hit.col + shift + query.Length() <= end.col);
}

bool FindWalk::WrapDue(const FindQuery& query) const
{
    return !query.inSelection && searchDocId_ == visited_.front() && start_.at.line != (query.up ? -1 : 0);
}

bool FindWalk::NextDocument()
{
    for (int32_t tries = documents_.Count() - 1; tries > 0; --tries) {
        document_ = documents_.NextAfter(searchDocId_);
        if (!document_) return false;
        searchDocId_ = document_->DocumentID();
        if (std::find(visited_.begin(), visited_.end(), searchDocId_) != visited_.end()) continue;
        visited_.push_back(searchDocId_);
        return true;
    }
    return false;
}

bool FindWalk::Search(const FindQuery& query, Position at, bool exhausted)
{
    for (;; exhausted = false) {
        Position hit;
        if (!exhausted && HitInRange(query, at, hit)) {
            lastMatch_ = hit;
            lastMatchLineId_ = query.mode == FindMode::Interactive ? document_->LineIdFromLine(hit.line) : -1;
            return true;
        }
        events_.passEnds();
        shift_ = 0;
        if (WrapDue(query)) {
            if (!events_.mayWrap(query)) {
                Reset();
                return false;
            }
            FindDocument(); // the question leaves time to close it
            end_ = start_;
            if (query.FromCaret()) end_.at.line = LineOf(end_);
        } else {
            if (!query.allDocuments || !NextDocument()) {
                Reset();
                return false;
            }
            Mark(end_, query.up ? kTop : kBottom, query.FromCaret());
        }
        Mark(start_, query.up ? kBottom : kTop, query.FromCaret());
        at = start_.at;
    }
}

} // namespace nib
