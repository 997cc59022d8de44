// The commands that change text; part of SourceView.

#include "text/AutoIndent.h"
#include "text/SourceView.h"
#include "text/TextSearch.h"

#include <algorithm>

namespace nib {

void SourceView::ReplaceRange(Position start, Position end, TextView text)
{
    if ((start == end && text.empty()) || !MayEdit()) return;
    Position after = start;
    {
        Edit edit(*this, start != end && !text.empty());
        if (start != end) document_.DeleteRange(start, end);
        if (!text.empty()) after = document_.InsertText(start, text);
    }
    goal_ = -1;
    Place(after, after);
}

void SourceView::Apply(const Plan& plan, Beyond beyond)
{
    if (HasSeveral()) return ApplyToAll(plan, beyond);
    const RangeEdit edit = plan(0);
    ReplaceRange(edit.start, edit.end, edit.text);
}

Position SourceView::OvertypeEnd(TextView text)
{
    if (text.find_first_of(u"\r\n") != TextView::npos) return caret_;
    TextView line = document_.LineText(caret_.line, scratch_);
    Position end = caret_;
    auto size = static_cast<int32_t>(text.size());
    for (int32_t i = 0; i < size; i = NextGrapheme(text, i)) end.col = NextGrapheme(line, end.col);
    return end;
}

void SourceView::TypeText(TextView text)
{
    const auto type = [&] {
        Apply(
            [&](int32_t filled) {
                auto [start, end] = Selection();
                Text typed =
                    text.find(u'\t') == TextView::npos ? Text(text) : ExpandTabs(text, tabSize_, start.col + filled);
                if (overtype_ && start == end) end = OvertypeEnd(typed);
                return RangeEdit{start, end, std::move(typed)};
            },
            Beyond::Fills);
    };
    const std::optional<int32_t> before = IndentWhileTyping();
    if (!before) return type();
    {
        Edit edit(*this, true);
        type();
        FollowBlocks(*before);
    }
    Place(anchor_, caret_);
}

void SourceView::NewLine()
{
    Apply([&](int32_t) {
        auto [start, end] = Selection();
        int32_t indent = std::min(IndentOf(document_.LineText(start.line, scratch_)), start.col);
        if (indentsByBlocks_ && indent < start.col) {
            const Text head(document_.LineText(start.line, scratch_).substr(0, static_cast<size_t>(start.col)));
            TextView tail = document_.LineText(end.line, scratch_).substr(static_cast<size_t>(end.col));
            if (auto column = AutoIndent(document_, tabSize_).Below(start.line, head, tail)) {
                indent = *column;
                end.col += IndentOf(tail);
            }
        }
        return RangeEdit{start, end, Text(u"\r\n").append(static_cast<size_t>(indent), u' ')};
    });
}

void SourceView::Backspace()
{
    Apply(
        [&](int32_t) {
            auto [start, end] = Selection();
            if (start != end) return RangeEdit{start, end, {}};
            TextView line = document_.LineText(start.line, scratch_);
            if (start.col == 0 && start.line > 0) {
                start = {document_.LineLength(start.line - 1), start.line - 1};
            } else if (start.col > 0 && IndentOf(line) >= start.col && !KeepsColumn()) {
                start.col = (start.col - 1) / tabSize_ * tabSize_;
            } else {
                start.col = PreviousGrapheme(line, start.col);
            }
            return RangeEdit{start, end, {}};
        },
        Beyond::StepsBack);
}

void SourceView::Delete()
{
    Apply(
        [&](int32_t) {
            auto [start, end] = Selection();
            if (start != end) return RangeEdit{start, end, {}};
            TextView line = document_.LineText(end.line, scratch_);
            if (end.col < static_cast<int32_t>(line.size())) {
                end.col = NextGrapheme(line, end.col);
            } else if (end.line + 1 < document_.LineCount()) {
                end = {0, end.line + 1};
            }
            return RangeEdit{start, end, {}};
        },
        Beyond::Stays);
}

void SourceView::DeleteSelection()
{
    Apply([&](int32_t) { return RangeEdit{Selection().start, Selection().end, {}}; }, Beyond::Stays);
}

void SourceView::DeleteWord(bool backward)
{
    Apply([&](int32_t) {
        auto [start, end] = Selection();
        if (start == end) (backward ? start : end) = backward ? StepLeft(start, true) : StepRight(end, true);
        return RangeEdit{start, end, {}};
    });
}

void SourceView::DeleteLine()
{
    if (HasSeveral()) return DeleteLines();
    int32_t line = caret_.line;
    Position start{0, line};
    Position end{document_.LineLength(line), line};
    if (line + 1 < document_.LineCount()) {
        end = {0, line + 1};
    } else if (line > 0) {
        start = {document_.LineLength(line - 1), line - 1};
    }
    Position stay{caret_.col, line};
    if (!MayEdit()) return;
    document_.BreakTyping();
    ReplaceRange(start, end, {});
    SetCaret(stay);
}

void SourceView::Undo()
{
    if (document_.CanUndo() && MayEdit()) document_.Undo();
}

void SourceView::Redo()
{
    if (document_.CanRedo() && MayEdit()) document_.Redo();
}

void SourceView::Tab()
{
    if (SelectsLines()) return ShiftLines(false);
    Apply(
        [&](int32_t filled) {
            auto [start, end] = Selection();
            const int32_t blanks = tabSize_ - (start.col + filled) % tabSize_;
            return RangeEdit{start, end, Text(static_cast<size_t>(blanks), u' ')};
        },
        Beyond::Fills);
}

void SourceView::Backtab()
{
    if (SelectsLines()) {
        ShiftLines(true);
    } else {
        Backspace();
    }
}

void SourceView::ShiftLines(bool outwards)
{
    if (!MayEdit()) return;
    std::vector<CaretSpan> spans = CaretSpans();
    const Carets before = carets_;
    LineEdits edits;
    bool edited = false;
    {
        Edit edit(*this, false);
        int32_t line = -1;
        int32_t moved = 0;
        for (CaretSpan& span : spans) {
            const int32_t first = span.Start().line;
            const int32_t last = span.End().col == 0 && span.End().line > first ? span.End().line - 1 : span.End().line;
            for (int32_t next = first; next <= last; ++next) {
                if (std::exchange(line, std::max(line, next)) < next)
                    moved = document_.ShiftLine(edits, next, outwards ? -tabSize_ : tabSize_,
                                                SourceDocument::EmptyLine::Stays);
                for (Position* p : {&span.anchor, &span.caret}) {
                    if (p->line == next && p->col > 0) p->col = std::max(p->col + moved, 0);
                }
            }
            span.goal = -1;
        }
        edited = !edits.IsEmpty();
        document_.EditLines(std::move(edits));
    }
    goal_ = -1;
    if (before.Several())
        KeepAndPlace(before, std::move(spans), edited);
    else
        Place(spans.front().anchor, spans.front().caret);
}

void SourceView::Cut()
{
    if (!AnySelection() || !MayEdit()) return;
    Copy();
    document_.BreakTyping();
    DeleteSelection();
}

void SourceView::Copy()
{
    if (AnySelection()) clipboard_.SetText(AllSelectedText());
}

void SourceView::Insert(TextView text)
{
    if (text.empty()) return;
    document_.BreakTyping();
    if (HasSeveral()) {
        InsertAtAll(text);
    } else {
        auto [start, end] = Selection();
        ReplaceRange(start, end, ExpandTabs(text, tabSize_, start.col));
    }
    document_.BreakTyping();
}

void SourceView::MoveSelection(Position target, bool copy)
{
    if (!HasSelection()) return;
    target = SnapToGrapheme(target);
    auto [start, end] = Selection();
    bool inside = start <= target && target <= end;
    if (inside && !copy) return SetCaret(target);
    if (!MayEdit()) return;

    Text text = SelectedText();
    Position from = target;
    Position to;
    {
        Edit edit(*this, true);
        if (!copy && target > end) {
            // Deleting first moves the target up; a place on the selection's last line also moves along it.
            if (target.line == end.line) from.col = target.col - end.col + start.col;
            from.line = target.line - (end.line - start.line);
        }
        if (!copy) document_.DeleteRange(start, end);
        to = document_.InsertText(from, text);
    }
    goal_ = -1;
    Place(from, to);
}

} // namespace nib
