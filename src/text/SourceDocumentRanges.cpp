// Edits at many places as one; part of SourceDocument.

#include "base/Error.h"
#include "text/SourceDocument.h"

#include <algorithm>
#include <tuple>

namespace nib {

namespace {

bool IsWithinLine(const RangeEdit& edit)
{
    return edit.start.line == edit.end.line && edit.text.find_first_of(u"\r\n") == Text::npos;
}

/// The same edits, each of a line's in the text that those before it leave.
LineEdits WithinLines(const std::vector<RangeEdit>& edits)
{
    LineEdits lines;
    int32_t line = -1;
    int32_t moved = 0;
    for (const RangeEdit& edit : edits) {
        if (std::exchange(line, edit.start.line) != edit.start.line) moved = 0;
        const int32_t column = edit.start.col + moved;
        lines.Remove(line, column, edit.end.col - edit.start.col);
        lines.Insert(line, column, edit.text);
        moved += static_cast<int32_t>(edit.text.size()) - (edit.end.col - edit.start.col);
    }
    return lines;
}

/// Lines that become others; ranges that meet in one are one.
std::vector<ReplacedLines> LinesOf(const std::vector<RangeMoves::Range>& before,
                                   const std::vector<RangeMoves::Range>& after)
{
    std::vector<ReplacedLines> lines;
    for (size_t i = 0; i < before.size(); ++i) {
        const auto [start, end] = before[i];
        const int32_t more = after[i].end.line - after[i].start.line - (end.line - start.line);
        if (lines.empty() || start.line > lines.back().last) {
            lines.push_back({start.line, end.line, more});
        } else {
            lines.back().last = std::max(lines.back().last, end.line);
            lines.back().more += more;
        }
    }
    return lines;
}

} // namespace

std::vector<Position> SourceDocument::ReplaceRanges(std::vector<RangeEdit> edits)
{
    RefuseInCallback();
    for (size_t i = 0; i < edits.size(); ++i) {
        const RangeEdit& edit = edits[i];
        if (edit.end < edit.start || Clamp(edit.start) != edit.start || Clamp(edit.end) != edit.end ||
            (i > 0 && edit.start < edits[i - 1].end))
            throw Error{error_number::kInvalidCall, u"The ranges do not ascend, or are not in the text."};
    }
    RangeMoves moves(edits);
    std::vector<Position> ends;
    ends.reserve(edits.size());
    for (const RangeMoves::Range& range : moves.After()) ends.push_back(range.end);
    if (std::all_of(edits.begin(), edits.end(), [](const RangeEdit& e) { return e.IsNothing(); })) return ends;
    if (std::all_of(edits.begin(), edits.end(), IsWithinLine))
        EditLines(WithinLines(edits), true);
    else
        BreakLines(edits, std::move(moves));
    return ends;
}

void SourceDocument::BreakLines(std::vector<RangeEdit>& edits, RangeMoves moves)
{
    auto batch = std::make_unique<RangeBatch>();
    batch->moves = std::move(moves);
    std::vector<TextEdit>& parts = batch->parts;
    parts.reserve(edits.size() * 2);
    const std::vector<ReplacedLines> replaced = LinesOf(batch->moves.Before(), batch->moves.After());
    changes_.BeforeAll(replaced);
    try {
        for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
            if (edit->start != edit->end) {
                parts.push_back(TakeText(edit->start, edit->end));
                LinesMoved(edit->start, edit->end, edit->start);
            }
            if (edit->text.empty()) continue;
            parts.push_back({true, edit->start, edit->start, std::move(edit->text), {}});
            MakePart(parts.back(), true);
        }
    } catch (...) {
        for (auto part = parts.rbegin(); part != parts.rend(); ++part) MakePart(*part, false);
        changes_.NoneReplaced();
        throw;
    }
    changes_.AllReplaced(replaced);
    TextEdit whole;
    whole.start = batch->moves.After().front().start;
    whole.end = batch->moves.After().back().end;
    whole.ranges = std::move(batch);
    const RangeBatch& made = *whole.ranges;
    Record(std::move(whole));
    TellRanges(made.moves, true);
}

Position SourceDocument::ApplyRanges(RangeBatch& batch, bool forward)
{
    const auto& [before, after] = forward ? std::tie(batch.moves.Before(), batch.moves.After())
                                          : std::tie(batch.moves.After(), batch.moves.Before());
    const std::vector<ReplacedLines> replaced = LinesOf(before, after);
    changes_.BeforeAll(replaced);
    if (forward)
        for (TextEdit& part : batch.parts) MakePart(part, true);
    else
        for (auto part = batch.parts.rbegin(); part != batch.parts.rend(); ++part) MakePart(*part, false);
    changes_.AllReplaced(replaced);
    TellRanges(batch.moves, forward);
    return (forward ? batch.moves.After() : batch.moves.Before()).back().end;
}

void SourceDocument::TellRanges(const RangeMoves& moves, bool forward)
{
    const auto& before = forward ? moves.Before() : moves.After();
    const auto& after = forward ? moves.After() : moves.Before();
    std::vector<EditedLines::Range> lines;
    lines.reserve(after.size());
    for (size_t i = 0; i < after.size(); ++i) {
        // The line below one that came or went has a new one before it.
        const bool moved = before[i].end.line - before[i].start.line != after[i].end.line - after[i].start.line;
        lines.push_back({after[i].start.line, std::min(after[i].end.line + (moved ? 1 : 0), lines_.Count() - 1)});
    }
    edited_.AddAll(std::move(lines), lines_.Count());
    TextChange change{before.front().start, before.back().end, after.back().end};
    change.ranges = &moves;
    change.takenBack = !forward;
    TellText(change);
}

} // namespace nib
