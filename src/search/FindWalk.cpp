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
    const Position left = query.up ? lastMatch_ : LastEnd();
    if (current.DocumentID() != searchDocId_ || current.EnsureView().txtText().Caret() != left) return Reset();
    document_ = documents_.ById(searchDocId_);
    if (!document_) return;
    lastMatch_.line = LineOf(*document_, {lastMatch_, lastMatchLineId_});
    end_.at.line = LineOf(*document_, end_);
}

/// The line is mostly where it was; only after edits above it is it looked for.
int32_t FindWalk::LineOf(mvDocument& document, const Place& place)
{
    if (place.lineId < 1) return -1;
    const SourceDocument& text = TextOf(document);
    if (place.at.line >= 0 && place.at.line < text.LineCount() &&
        static_cast<int32_t>(text.GetLineData(place.at.line, LineWord::Identity)) == place.lineId)
        return place.at.line;
    return document.LineFromLineId(place.lineId);
}

void FindWalk::Mark(Place& place, Position at, bool withId)
{
    place.at = at;
    place.lineId = withId ? document_->LineIdFromLine(at.line) : -1;
}

void FindWalk::MoveLastMatch(mvDocument& document, Position behind)
{
    lastMatch_ = {behind.col - lastLength_, behind.line};
    lastMatchLineId_ = document.LineIdFromLine(behind.line);
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
    const bool exhausted = !StepPastHit(query, from);
    return Search(query, from, exhausted);
}

/// False when there is nothing left of the text: before its first place, or behind an empty hit at its end.
bool FindWalk::StepPastHit(const FindQuery& query, Position& from) const
{
    if (query.up) return lastMatch_ != kTop;
    from = LastEnd();
    if (lastLength_ > 0) return true;
    const SourceDocument& text = TextOf(*document_);
    if (from.col < text.LineLength(from.line))
        ++from.col;
    else
        from = {0, from.line + 1};
    return from.line < text.LineCount();
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

/// A step has selected it, and where it looks is what was selected before.
bool FindWalk::IsShown(mvDocument& current, const OrderedSelection& selection) const
{
    return current.DocumentID() == keptDocId_ && current.DocumentID() == shownDocId_ &&
           selection.start == shown_.start && selection.end == shown_.end;
}

std::optional<TextRange> FindWalk::SelectedRange(mvDocument& current)
{
    if (current.SelectionIsMultiLine()) KeepSelection(current);
    if (const OrderedSelection selection = current.GetOrderedSelection();
        current.HasSelection() && !IsShown(current, selection))
        return TextRange{selection.start, selection.end};
    if (current.DocumentID() != keptDocId_) return {};
    TextRange kept{{keptStart_.at.col, LineOf(current, keptStart_)}, {keptEnd_.at.col, LineOf(current, keptEnd_)}};
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

bool FindWalk::HitInRange(const FindQuery& query, Position from, FindHit& hit) const
{
    const SourceDocument& text = TextOf(*document_);
    if (query.up) from = StepBack(text, from);
    from = Resolve(text, from);
    if (!text.Find(*query.pattern, from, query.up, hit)) return false;
    Position end = end_.at;
    int32_t last = text.LineCount() - 1;
    if (end.line < 0 || end.line > last) end.line = last;
    // The end stands for the text with all replacements made, and is not itself moved by them.
    int32_t shift = end.line == shiftedLine_ ? shift_ : 0;
    int32_t length = text.LineLength(end.line) + shift;
    if (end.col < 0 || end.col > length) end.col = length;
    if (query.up) return hit.at >= end;
    return hit.at.line < end.line || (hit.at.line == end.line && hit.at.col + shift + hit.length <= end.col);
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
        FindHit hit;
        if (!exhausted && HitInRange(query, at, hit)) {
            lastMatch_ = hit.at;
            lastLength_ = hit.length;
            if (query.mode == FindMode::Interactive) {
                shown_ = {lastMatch_, LastEnd()};
                shownDocId_ = searchDocId_;
            }
            lastMatchLineId_ = query.mode == FindMode::Interactive ? document_->LineIdFromLine(hit.at.line) : -1;
            return true;
        }
        events_.passEnds();
        query.pattern->Forget();
        shift_ = 0;
        if (WrapDue(query)) {
            if (!events_.mayWrap(query)) {
                Reset();
                return false;
            }
            FindDocument(); // the question leaves time to close it
            end_ = start_;
            if (query.FromCaret()) end_.at.line = LineOf(*document_, end_);
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
