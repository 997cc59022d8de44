#include "text/SourceViewModel.h"

#include "text/WordBreak.h"

#include <unicode/utf16.h>

#include <algorithm>
#include <utility>

namespace nib {

void TokenStyleTable::SetStyle(int32_t type, int32_t style, int32_t /*reserved*/)
{
    styles_[type].style = style;
}

void TokenStyleTable::SetColor(int32_t type, int32_t color, int32_t /*reserved*/)
{
    styles_[type].color = color;
}

TokenStyle TokenStyleTable::Get(int32_t type) const
{
    auto found = styles_.find(type);
    return found == styles_.end() ? TokenStyle{} : found->second;
}

SourceViewModel::SourceViewModel(SourceBuffer& buffer, Clipboard& clipboard) : buffer_(buffer), clipboard_(clipboard)
{
    buffer_.AddListener(this);
}

SourceViewModel::~SourceViewModel()
{
    buffer_.RemoveListener(this);
}

void SourceViewModel::SetHost(ViewHost* host)
{
    host_ = host ? host : &noHost_;
}

void SourceViewModel::SetEvents(ViewEvents* events)
{
    events_ = events;
}

// Caret and selection

void SourceViewModel::Tell()
{
    if (editing_ > 0 || (anchor_ == toldAnchor_ && caret_ == toldCaret_)) return;
    Position oldAnchor = std::exchange(toldAnchor_, anchor_);
    Position oldCaret = std::exchange(toldCaret_, caret_);
    auto repaint = [&](Position a, Position b) { host_->SelectionChanged(std::min(a, b).line, std::max(a, b).line); };
    if (oldAnchor == anchor_) {
        repaint(oldCaret, caret_);
    } else {
        repaint(oldAnchor, oldCaret);
        repaint(anchor_, caret_);
    }
    if (events_) events_->CaretMoved(caret_);
}

void SourceViewModel::Place(Position anchor, Position caret)
{
    anchor_ = anchor;
    caret_ = caret;
    buffer_.Reveal(caret_.line);
    Tell();
    host_->EnsureCaretVisible();
}

Position SourceViewModel::SnapToUnit(Position p)
{
    p = buffer_.Clamp(p);
    if (p.col <= 0) return p;
    TextView line = buffer_.LineText(p.line, scratch_);
    auto col = static_cast<size_t>(p.col);
    if (col < line.size() && U16_IS_TRAIL(line[col]) && U16_IS_LEAD(line[col - 1])) --p.col;
    return p;
}

Position SourceViewModel::SnapToGrapheme(Position p)
{
    p = buffer_.Clamp(p);
    if (p.col > 0) p.col = GraphemeStart(buffer_.LineText(p.line, scratch_), p.col);
    return p;
}

void SourceViewModel::SetCaret(Position caret)
{
    buffer_.BreakTyping();
    goal_ = -1;
    caret = SnapToGrapheme(caret);
    Place(caret, caret);
}

void SourceViewModel::GetSelection(Position& start, Position& end) const
{
    start = anchor_;
    end = caret_;
}

void SourceViewModel::SetSelection(Position anchor, Position caret)
{
    buffer_.BreakTyping();
    goal_ = -1;
    Place(SnapToUnit(anchor), SnapToUnit(caret));
}

void SourceViewModel::SelectAll()
{
    buffer_.BreakTyping();
    goal_ = -1;
    anchor_ = {};
    caret_ = buffer_.End();
    buffer_.Reveal(caret_.line);
    Tell(); // and stay where the reader is
}

void SourceViewModel::SelectWord(Position at)
{
    at = buffer_.Clamp(at);
    ColumnRange word = WordAt(buffer_.LineText(at.line, scratch_), at.col);
    SetSelection({word.first, at.line}, {word.last, at.line});
}

void SourceViewModel::SelectLines(int32_t anchorLine, int32_t caretLine)
{
    constexpr int32_t behindAll = 0x7FFFFFFF;
    if (caretLine < anchorLine) {
        SetSelection({behindAll, anchorLine}, {0, caretLine});
    } else {
        SetSelection({0, anchorLine}, {behindAll, caretLine});
    }
}

void SourceViewModel::Ordered(Position& start, Position& end) const
{
    start = std::min(anchor_, caret_);
    end = std::max(anchor_, caret_);
}

Text SourceViewModel::SelectedText() const
{
    Position start;
    Position end;
    Ordered(start, end);
    return start == end ? Text{} : buffer_.GetRange(start, end);
}

// Text and appearance

Text SourceViewModel::GetText() const
{
    return buffer_.GetText();
}

void SourceViewModel::SetText(TextView text)
{
    buffer_.SetText(text);
}

void SourceViewModel::SetTabSize(int32_t size)
{
    tabSize_ = std::max(size, 1);
}

int32_t SourceViewModel::LineHeight() const
{
    return host_->LineHeight();
}

int32_t SourceViewModel::PageLines() const
{
    return host_->PageLines();
}

void SourceViewModel::GetFirstVisible(int32_t& line, int32_t& column) const
{
    host_->GetFirstVisible(line, column);
}

void SourceViewModel::SetFirstVisible(int32_t line, int32_t column)
{
    host_->SetFirstVisible(line, column);
}

void SourceViewModel::SetFont(const SourceFont& font)
{
    font_ = font;
    host_->AppearanceChanged();
}

void SourceViewModel::SetLineWrap(bool wrap)
{
    if (std::exchange(lineWrap_, wrap) != wrap) host_->AppearanceChanged();
}

void SourceViewModel::SetOvertype(bool overtype)
{
    if (std::exchange(overtype_, overtype) == overtype) return;
    host_->SelectionChanged(caret_.line, caret_.line);
    if (events_) events_->OvertypeChanged(overtype);
}

void SourceViewModel::SetBackColor(int32_t color)
{
    backColor_ = color;
    host_->AppearanceChanged();
}

void SourceViewModel::SetMarginWidth(int32_t characters)
{
    characters = std::max(characters, 0);
    if (std::exchange(marginWidth_, characters) != characters) host_->AppearanceChanged();
}

void SourceViewModel::SetShowBlocks(bool show)
{
    if (std::exchange(showBlocks_, show) != show) host_->AppearanceChanged();
}

bool SourceViewModel::NextToken(int32_t line, int32_t position, Token& token)
{
    if (line < 0 || line >= buffer_.LineCount()) return false;
    buffer_.ScanLine(line, tokens_);
    auto found = std::find_if(tokens_.begin(), tokens_.end(),
                              [&](const Token& t) { return t.type == 0 || t.start + t.length > position; });
    if (found == tokens_.end() || found->type == 0) return false;
    token = *found;
    return true;
}

// What the buffer tells

void SourceViewModel::TextChanged(const TextChange& change)
{
    if (anchor_ == caret_) {
        caret_ = anchor_ = change.Map(caret_, true);
    } else {
        // A selection does not take in what another hand types at its edges.
        bool forwards = anchor_ < caret_;
        anchor_ = change.Map(anchor_, !forwards);
        caret_ = change.Map(caret_, forwards);
    }
    if (editing_ == 0) goal_ = -1;
    Tell();
    if (events_ && change.oldEnd.line != change.newEnd.line) events_->LinesChanged();
}

void SourceViewModel::TextReset()
{
    goal_ = -1;
    anchor_ = caret_ = {};
    toldAnchor_ = toldCaret_ = {-1, 0};
    Tell();
    if (events_) events_->LinesChanged();
    host_->EnsureCaretVisible();
}

void SourceViewModel::CaretRequested(Position caret)
{
    goal_ = -1;
    caret = SnapToUnit(caret);
    Place(caret, caret);
}

void SourceViewModel::ModifiedChanged(bool modified)
{
    if (events_) events_->ModifiedChanged(modified);
}

void SourceViewModel::FoldingChanged()
{
    if (!buffer_.IsHidden(caret_.line)) return;
    int32_t head = buffer_.VisibleLine(buffer_.VisibleIndex(caret_.line));
    goal_ = -1;
    anchor_ = caret_ = {std::min(caret_.col, buffer_.LineLength(head)), head};
    Tell();
}

} // namespace nib
