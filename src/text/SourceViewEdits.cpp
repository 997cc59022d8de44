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
    auto [start, end] = Selection();
    Text blanks;
    if (text.find(u'\t') != TextView::npos) text = blanks = ExpandTabs(text, tabSize_, start.col);
    if (overtype_ && start == end) end = OvertypeEnd(text);
    const std::optional<int32_t> before = start.line == end.line ? IndentWhileTyping() : std::nullopt;
    if (!before) return ReplaceRange(start, end, text);
    {
        Edit edit(*this, true);
        ReplaceRange(start, end, text);
        FollowBlocks(*before);
    }
    Place(anchor_, caret_);
}

void SourceView::NewLine()
{
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
    ReplaceRange(start, end, Text(u"\r\n").append(static_cast<size_t>(indent), u' '));
}

void SourceView::Backspace()
{
    auto [start, end] = Selection();
    if (start == end) {
        TextView line = document_.LineText(start.line, scratch_);
        if (start.col == 0 && start.line > 0) {
            start = {document_.LineLength(start.line - 1), start.line - 1};
        } else if (start.col > 0 && IndentOf(line) >= start.col) {
            start.col = (start.col - 1) / tabSize_ * tabSize_;
        } else {
            start.col = PreviousGrapheme(line, start.col);
        }
    }
    ReplaceRange(start, end, {});
}

void SourceView::Delete()
{
    auto [start, end] = Selection();
    if (start == end) {
        TextView line = document_.LineText(end.line, scratch_);
        if (end.col < static_cast<int32_t>(line.size())) {
            end.col = NextGrapheme(line, end.col);
        } else if (end.line + 1 < document_.LineCount()) {
            end = {0, end.line + 1};
        }
    }
    ReplaceRange(start, end, {});
}

void SourceView::DeleteWord(bool backward)
{
    auto [start, end] = Selection();
    if (start == end) (backward ? start : end) = backward ? StepLeft(start, true) : StepRight(end, true);
    ReplaceRange(start, end, {});
}

void SourceView::DeleteLine()
{
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
    auto [start, end] = Selection();
    ReplaceRange(start, end, Text(static_cast<size_t>(tabSize_ - start.col % tabSize_), u' '));
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
    auto [start, end] = Selection();
    int32_t last = end.col == 0 ? end.line - 1 : end.line;
    if (!MayEdit()) return;
    Position anchor = anchor_;
    Position caret = caret_;
    {
        Edit edit(*this, false);
        LineEdits edits;
        for (int32_t line = start.line; line <= last; ++line) {
            int32_t moved =
                document_.ShiftLine(edits, line, outwards ? -tabSize_ : tabSize_, SourceDocument::EmptyLine::Stays);
            for (Position* p : {&anchor, &caret}) {
                if (p->line == line && p->col > 0) p->col = std::max(p->col + moved, 0);
            }
        }
        document_.EditLines(std::move(edits));
    }
    goal_ = -1;
    Place(anchor, caret);
}

void SourceView::Cut()
{
    if (!HasSelection() || !MayEdit()) return;
    Copy();
    document_.BreakTyping();
    Delete();
}

void SourceView::Copy()
{
    if (HasSelection()) clipboard_.SetText(SelectedText());
}

void SourceView::Insert(TextView text)
{
    if (text.empty()) return;
    auto [start, end] = Selection();
    document_.BreakTyping();
    ReplaceRange(start, end, ExpandTabs(text, tabSize_, start.col));
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
