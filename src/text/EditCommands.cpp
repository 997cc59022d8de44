// The commands that change text; part of SourceViewModel.

#include "text/SourceViewModel.h"
#include "text/WordBreak.h"

#include <algorithm>

namespace nib {

/// While one lives, positions follow the text silently; the command then places the caret once. `group` makes all
/// changes one step of undo; a lone change stays outside of a group, so that a run of typing can grow.
class SourceViewModel::Edit {
public:
    Edit(SourceViewModel& view, bool group) : view_(view), group_(group)
    {
        ++view_.editing_;
        if (group_) view_.buffer_.BeginGroup();
    }
    ~Edit()
    {
        if (group_) view_.buffer_.EndGroup();
        --view_.editing_;
    }
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;

private:
    SourceViewModel& view_;
    bool group_;
};

void SourceViewModel::ReplaceRange(Position start, Position end, TextView text)
{
    if (start == end && text.empty()) return;
    Position after = start;
    {
        Edit edit(*this, start != end && !text.empty());
        if (start != end) buffer_.DeleteRange(start, end);
        if (!text.empty()) after = buffer_.InsertText(start, text);
    }
    goal_ = -1;
    Place(after, after);
}

Text SourceViewModel::WithoutTabs(TextView text, int32_t column) const
{
    Text out;
    out.reserve(text.size() + 16);
    for (char16_t c : text) {
        if (c == u'\t') {
            int32_t blanks = tabSize_ - column % tabSize_;
            out.append(static_cast<size_t>(blanks), u' ');
            column += blanks;
        } else {
            out.push_back(c);
            column = c == u'\n' || c == u'\r' ? 0 : column + 1;
        }
    }
    return out;
}

Position SourceViewModel::OvertypeEnd(TextView text)
{
    if (text.find_first_of(u"\r\n") != TextView::npos) return caret_;
    TextView line = buffer_.LineText(caret_.line, scratch_);
    Position end = caret_;
    auto size = static_cast<int32_t>(text.size());
    for (int32_t i = 0; i < size; i = NextGrapheme(text, i)) end.col = NextGrapheme(line, end.col);
    return end;
}

void SourceViewModel::TypeText(TextView text)
{
    Position start;
    Position end;
    Ordered(start, end);
    Text blanks;
    if (text.find(u'\t') != TextView::npos) text = blanks = WithoutTabs(text, start.col);
    if (overtype_ && start == end) end = OvertypeEnd(text);
    ReplaceRange(start, end, text);
}

void SourceViewModel::NewLine()
{
    Position start;
    Position end;
    Ordered(start, end);
    int32_t indent = std::min(IndentOf(buffer_.LineText(start.line, scratch_)), start.col);
    ReplaceRange(start, end, Text(u"\r\n").append(static_cast<size_t>(indent), u' '));
}

void SourceViewModel::Backspace()
{
    Position start;
    Position end;
    Ordered(start, end);
    if (start == end) {
        TextView line = buffer_.LineText(start.line, scratch_);
        if (start.col == 0 && start.line > 0) {
            start = {buffer_.LineLength(start.line - 1), start.line - 1};
        } else if (start.col > 0 && IndentOf(line) >= start.col) {
            start.col = (start.col - 1) / tabSize_ * tabSize_;
        } else {
            start.col = PreviousGrapheme(line, start.col);
        }
    }
    ReplaceRange(start, end, {});
}

void SourceViewModel::DeleteForward()
{
    Position start;
    Position end;
    Ordered(start, end);
    if (start == end) {
        TextView line = buffer_.LineText(end.line, scratch_);
        if (end.col < static_cast<int32_t>(line.size())) {
            end.col = NextGrapheme(line, end.col);
        } else if (end.line + 1 < buffer_.LineCount()) {
            end = {0, end.line + 1};
        }
    }
    ReplaceRange(start, end, {});
}

void SourceViewModel::Delete()
{
    DeleteForward();
}

void SourceViewModel::DeleteWord(bool backward)
{
    Position start;
    Position end;
    Ordered(start, end);
    if (start == end) (backward ? start : end) = backward ? StepLeft(start, true) : StepRight(end, true);
    ReplaceRange(start, end, {});
}

void SourceViewModel::DeleteLine()
{
    int32_t line = caret_.line;
    Position start{0, line};
    Position end{buffer_.LineLength(line), line};
    if (line + 1 < buffer_.LineCount()) {
        end = {0, line + 1};
    } else if (line > 0) {
        start = {buffer_.LineLength(line - 1), line - 1};
    }
    Position stay{caret_.col, line};
    buffer_.BreakTyping();
    ReplaceRange(start, end, {});
    SetCaret(stay);
}

bool SourceViewModel::SelectsLines() const
{
    return anchor_.line != caret_.line;
}

void SourceViewModel::Tab()
{
    if (SelectsLines()) return ShiftLines(false);
    Position start;
    Position end;
    Ordered(start, end);
    ReplaceRange(start, end, Text(static_cast<size_t>(tabSize_ - start.col % tabSize_), u' '));
}

void SourceViewModel::Backtab()
{
    if (SelectsLines()) {
        ShiftLines(true);
    } else {
        Backspace();
    }
}

void SourceViewModel::ShiftLines(bool outwards)
{
    Position start;
    Position end;
    Ordered(start, end);
    int32_t last = end.col == 0 ? end.line - 1 : end.line;
    Position anchor = anchor_;
    Position caret = caret_;
    {
        Edit edit(*this, true);
        Text blanks(static_cast<size_t>(tabSize_), u' ');
        for (int32_t line = start.line; line <= last; ++line) {
            int32_t indent = IndentOf(buffer_.LineText(line, scratch_));
            int32_t moved = 0;
            if (outwards) {
                moved = -std::min(indent, tabSize_);
                if (moved != 0) buffer_.DeleteRange({0, line}, {-moved, line});
            } else if (buffer_.LineLength(line) > 0) {
                moved = tabSize_;
                buffer_.InsertText({0, line}, blanks);
            }
            for (Position* p : {&anchor, &caret}) {
                if (p->line == line && p->col > 0) p->col = std::max(p->col + moved, 0);
            }
        }
    }
    goal_ = -1;
    Place(anchor, caret);
}

void SourceViewModel::Cut()
{
    if (!HasSelection()) return;
    Copy();
    buffer_.BreakTyping();
    DeleteForward();
}

void SourceViewModel::Copy()
{
    if (HasSelection()) clipboard_.SetText(SelectedText());
}

void SourceViewModel::Insert(TextView text)
{
    if (text.empty()) return;
    Position start;
    Position end;
    Ordered(start, end);
    buffer_.BreakTyping();
    ReplaceRange(start, end, WithoutTabs(text, start.col));
    buffer_.BreakTyping();
}

void SourceViewModel::Paste()
{
    Insert(clipboard_.GetText());
}

void SourceViewModel::MoveSelection(Position target, bool copy)
{
    if (!HasSelection()) return;
    target = SnapToGrapheme(target);
    Position start;
    Position end;
    Ordered(start, end);
    bool inside = start <= target && target <= end;
    if (inside && !copy) return SetCaret(target);

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
        if (!copy) buffer_.DeleteRange(start, end);
        to = buffer_.InsertText(from, text);
    }
    goal_ = -1;
    Place(from, to);
}

} // namespace nib
