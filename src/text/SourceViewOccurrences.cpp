// Carets that are added by command: on the lines beside, and where the same text stands again; part of SourceView.

#include "text/SourceView.h"

#include <algorithm>

namespace nib {

namespace {

/// The word at a column, or the one that ends there.
ColumnRange NearWord(TextView line, int32_t col)
{
    const auto isWord = [&](int32_t at) {
        return at >= 0 && at < static_cast<int32_t>(line.size()) && IsWordUnit(line[static_cast<size_t>(at)]);
    };
    return WordAt(line, !isWord(col) && isWord(col - 1) ? col - 1 : col);
}

} // namespace

void SourceView::AddCarets(bool above)
{
    document_.BreakTyping();
    std::vector<CaretSpan> spans = CaretSpans();
    const size_t count = spans.size();
    const Move move = above ? Move::Up : Move::Down;
    for (size_t i = 0; i < count; ++i) {
        const CaretSpan from = spans[i];
        Position anchor;
        if (const bool onOneLine = from.anchor.line == from.caret.line; onOneLine && from.anchor != from.caret) {
            Become({from.anchor, from.anchor});
            anchor = VerticalTarget(move);
        }
        Become(from);
        const Position caret = VerticalTarget(move);
        spans.push_back({anchor.line == caret.line && from.anchor != from.caret ? anchor : caret, caret, 0, 0, goal_});
    }
    // The main one is where they grow, and so in sight.
    Carets carets;
    carets.Set(std::move(spans), 0);
    carets.SetMain(above ? 0 : carets.Spans().size() - 1);
    PlaceAll(std::move(carets));
}

bool SourceView::SelectWords(std::vector<CaretSpan>& spans)
{
    bool any = false;
    for (CaretSpan& span : spans) {
        if (span.anchor != span.caret) continue;
        const int32_t line = span.caret.line;
        const ColumnRange word = NearWord(document_.LineText(line, scratch_), span.caret.col);
        span = {{word.first, line}, {word.last, line}};
        any = any || word.first < word.last;
    }
    return any;
}

FindOptions SourceView::OccurrenceOptions() const
{
    return {.matchCase = true, .wholeWord = SelectedText() == pickedWord_};
}

void SourceView::SelectNextOccurrence()
{
    std::vector<CaretSpan> spans = CaretSpans();
    const size_t main = HasSeveral() ? carets_.MainIndex() : 0;
    if (SelectWords(spans)) {
        SetCarets(std::move(spans), main);
        pickedWord_ = SelectedText();
        return;
    }
    const Text wanted = SelectedText();
    const FindOptions options = OccurrenceOptions();
    const Position behind = Selection().end;
    Position from = behind;
    bool round = false;
    FindHit hit;
    for (;;) {
        if (!document_.Find(wanted, from, options, hit)) {
            if (std::exchange(round, true)) return;
            from = {};
            continue;
        }
        if (round && hit.at >= behind) return;
        const CaretSpan found{hit.at, {hit.at.col + hit.length, hit.at.line}};
        const auto next = std::partition_point(spans.begin(), spans.end(),
                                               [&](const CaretSpan& span) { return span.End() <= found.anchor; });
        const bool taken = next != spans.end() && next->Start() < found.caret;
        from = found.caret;
        if (taken) continue;
        spans.push_back(found);
        const size_t added = spans.size() - 1;
        return SetCarets(std::move(spans), added);
    }
}

void SourceView::SelectAllOccurrences()
{
    if (!HasSelection()) {
        std::vector<CaretSpan> word{{caret_, caret_}};
        if (!SelectWords(word)) return;
        SetCarets(std::move(word), 0);
        pickedWord_ = SelectedText();
    }
    const Text wanted = SelectedText();
    const FindOptions options = OccurrenceOptions();
    std::vector<CaretSpan> spans;
    size_t main = 0;
    FindHit hit;
    for (Position from; document_.Find(wanted, from, options, hit);) {
        from = {hit.at.col + hit.length, hit.at.line};
        if (hit.at <= Selection().start) main = spans.size();
        spans.push_back({hit.at, from});
    }
    SetCarets(std::move(spans), main);
}

} // namespace nib
