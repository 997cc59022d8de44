// Several carets: their commands, and how the one and the many become each other; part of SourceView.

#include "text/SourceView.h"

#include <algorithm>

namespace nib {

namespace {

/// Each unit is removed by one of the edits alone, whatever carets stand close together.
void TakeApart(std::vector<RangeEdit>& edits)
{
    for (size_t i = 1; i < edits.size(); ++i) {
        for (size_t k = i; k > 0 && edits[k].start < edits[k - 1].end; --k) {
            RangeEdit& before = edits[k - 1];
            const Position between = std::max(before.start, edits[k].start);
            edits[k].end = std::max(before.end, edits[k].end);
            before.start = std::min(before.start, edits[k].start);
            before.end = edits[k].start = between;
        }
    }
}

std::vector<TextView> LinesOf(TextView text)
{
    std::vector<TextView> lines;
    for (size_t end = text.find_first_of(u"\r\n"); end != TextView::npos; end = text.find_first_of(u"\r\n")) {
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end + (text.substr(end, 2) == u"\r\n" ? 2 : 1));
    }
    lines.push_back(text);
    return lines;
}

} // namespace

// One and many

void SourceView::Become(const CaretSpan& span)
{
    anchor_ = span.anchor;
    caret_ = span.caret;
    goal_ = span.goal;
}

void SourceView::DropCarets()
{
    column_.reset();
    pickedWord_.clear();
    if (HasSeveral()) carets_.Clear();
}

void SourceView::PlaceAll(Carets carets)
{
    if (document_.VisibleCount() < document_.LineCount()) {
        for (const CaretSpan& span : carets.Spans()) document_.Reveal(span.caret.line);
    }
    column_.reset();
    carets_ = std::move(carets);
    Become(carets_.Main());
    if (!HasSeveral()) carets_.Clear();
    Tell();
    host_->EnsureCaretVisible();
}

void SourceView::TellAll()
{
    int32_t first = std::min(toldAnchor_, toldCaret_).line;
    int32_t last = std::max(toldAnchor_, toldCaret_).line;
    if (toldLast_ >= 0) {
        first = std::min(first, toldFirst_);
        last = std::max(last, toldLast_);
    }
    toldAnchor_ = anchor_;
    toldCaret_ = caret_;
    toldFirst_ = HasSeveral() ? carets_.Spans().front().Start().line : 0;
    toldLast_ = HasSeveral() ? carets_.Spans().back().End().line : -1;
    first = std::min(first, HasSeveral() ? toldFirst_ : Selection().start.line);
    last = std::max(last, HasSeveral() ? toldLast_ : Selection().end.line);
    host_->SelectionChanged(first, last);
    if (events_) events_->CaretMoved(caret_);
}

void SourceView::FollowChange(const TextChange& change)
{
    column_.reset();
    if (!HasSeveral()) return;
    carets_.Follow(change);
    Become(carets_.Main());
    if (!HasSeveral()) carets_.Clear();
}

std::vector<CaretSpan> SourceView::CaretSpans() const
{
    if (HasSeveral()) return carets_.Spans();
    return {CaretSpan{anchor_, caret_, 0, 0, goal_}};
}

void SourceView::SetCarets(std::vector<CaretSpan> spans, size_t main)
{
    if (spans.empty()) return;
    document_.BreakTyping();
    for (CaretSpan& span : spans) {
        const bool empty = span.anchor == span.caret;
        span = {SnapToUnit(span.anchor), SnapToUnit(span.caret)};
        if (empty) span.anchor = span.caret = SnapToGrapheme(span.caret);
    }
    main = std::min(main, spans.size() - 1);
    Carets carets;
    carets.Set(std::move(spans), main);
    PlaceAll(std::move(carets));
}

void SourceView::CaretsRequested(const Carets& carets)
{
    if (leads_) PlaceAll(carets);
}

bool SourceView::SelectsLines() const
{
    const std::vector<CaretSpan>& spans = carets_.Spans();
    return anchor_.line != caret_.line || std::any_of(spans.begin(), spans.end(), [](const CaretSpan& span) {
               return span.anchor.line != span.caret.line;
           });
}

bool SourceView::AnySelection() const
{
    const std::vector<CaretSpan>& spans = carets_.Spans();
    return HasSelection() || std::any_of(spans.begin(), spans.end(), [](const auto& s) { return s.anchor != s.caret; });
}

Text SourceView::AllSelectedText() const
{
    Text text;
    bool first = true;
    for (const CaretSpan& span : CaretSpans()) {
        if (!std::exchange(first, false)) text += u"\r\n";
        text += document_.GetRange(span.Start(), span.End());
    }
    return text;
}

// Commands

void SourceView::MoveAll(Move move, bool extendSelection)
{
    std::vector<CaretSpan> spans = carets_.Spans();
    for (CaretSpan& span : spans) {
        Become(span);
        const Position to = TargetOf(move, extendSelection);
        span = {extendSelection ? anchor_ : to, to, 0, 0, goal_};
    }
    Carets carets;
    carets.Set(std::move(spans), carets_.MainIndex());
    PlaceAll(std::move(carets));
}

bool SourceView::StandsStill(const CaretSpan& span, Beyond beyond) const
{
    if (beyond != Beyond::StepsBack && beyond != Beyond::Stays) return false;
    if (span.anchor != span.caret) return false;
    if (!span.IsEmpty() || span.caretBeyond > 0) return true;
    // A column stays one: its lines are not joined.
    if (!KeepsColumn()) return false;
    return span.caret.col == (beyond == Beyond::StepsBack ? 0 : document_.LineLength(span.caret.line));
}

void SourceView::ApplyToAll(const Plan& plan, Beyond beyond)
{
    std::vector<CaretSpan> spans = carets_.Spans();
    std::vector<RangeEdit> edits;
    edits.reserve(spans.size());
    for (CaretSpan& span : spans) {
        Become(span);
        const int32_t behind = std::min(span.anchorBeyond, span.caretBeyond);
        int32_t left = 0;
        if (StandsStill(span, beyond)) {
            left = span.IsEmpty() && beyond == Beyond::StepsBack ? std::max(behind - 1, 0) : behind;
            edits.push_back({caret_, caret_, {}});
        } else {
            const int32_t filled = beyond == Beyond::Fills ? behind : 0;
            edits.push_back(plan(filled));
            edits.back().text.insert(0, static_cast<size_t>(filled), u' ');
        }
        span = {{}, {}, left, left};
    }
    Become(carets_.Main());
    const std::optional<Column> column = beyond == Beyond::Leaves ? std::nullopt : column_;
    if (ReplaceAtAll(std::move(edits), std::move(spans)) && column) StraightenColumn(*column);
}

void SourceView::KeepAndPlace(const Carets& before, std::vector<CaretSpan> spans, bool edited)
{
    Carets after;
    after.Set(std::move(spans), before.MainIndex());
    if (edited) document_.KeepCarets(before, after);
    PlaceAll(std::move(after));
}

/// Each caret then stands behind its text; what a span tells beyond that stays.
bool SourceView::ReplaceAtAll(std::vector<RangeEdit> edits, std::vector<CaretSpan> spans)
{
    TakeApart(edits);
    const bool nothing = std::all_of(edits.begin(), edits.end(), [](const RangeEdit& e) { return e.IsNothing(); });
    if (!nothing && !MayEdit()) return false;
    const Carets before = carets_;
    std::vector<Position> ends;
    {
        Edit edit(*this, false);
        ends = document_.ReplaceRanges(std::move(edits));
    }
    for (size_t i = 0; i < spans.size(); ++i) spans[i].anchor = spans[i].caret = ends[i];
    KeepAndPlace(before, std::move(spans), !nothing);
    return true;
}

void SourceView::InsertAtAll(TextView text)
{
    std::vector<TextView> lines = LinesOf(text);
    const size_t carets = carets_.Spans().size();
    if (lines.size() > carets && lines.back().empty()) lines.pop_back();
    const bool share = lines.size() == carets;
    size_t next = 0;
    ApplyToAll(
        [&](int32_t filled) {
            auto [start, end] = Selection();
            return RangeEdit{start, end, ExpandTabs(share ? lines[next++] : text, tabSize_, start.col + filled)};
        },
        Beyond::Fills);
}

void SourceView::DeleteLines()
{
    if (!MayEdit()) return;
    document_.BreakTyping();
    std::vector<CaretSpan> spans = carets_.Spans();
    std::vector<RangeEdit> edits;
    int32_t next = 0; // line below the last run
    int32_t gone = 0;
    for (CaretSpan& span : spans) {
        const int32_t line = span.caret.line;
        if (line >= next && (edits.empty() || line > next)) edits.push_back({{0, line}, {}, {}});
        if (line >= next) ++gone;
        next = std::max(next, line + 1);
        edits.back().end = {0, next};
        span.caret.line = line + 1 - gone;
        span = {span.caret, span.caret};
    }
    if (next == document_.LineCount()) {
        RangeEdit& last = edits.back();
        last.end = document_.End();
        if (last.start.line > 0) last.start = {document_.LineLength(last.start.line - 1), last.start.line - 1};
    }
    const bool nothing = edits.front().IsNothing(); // the only line, and it is empty
    const Carets before = carets_;
    {
        Edit edit(*this, false);
        document_.ReplaceRanges(std::move(edits));
    }
    for (CaretSpan& span : spans) span.anchor = span.caret = SnapToGrapheme(span.caret);
    KeepAndPlace(before, std::move(spans), !nothing);
}

void SourceView::SelectAround(int32_t from, int32_t length)
{
    std::vector<CaretSpan> spans = CaretSpans();
    for (CaretSpan& span : spans) {
        span.anchor = {std::max(span.caret.col + from, 0), span.caret.line};
        span.caret = {span.anchor.col + length, span.anchor.line};
    }
    SetCarets(std::move(spans), HasSeveral() ? carets_.MainIndex() : 0);
}

} // namespace nib
