#include "text/SourceView.h"

#include "text/WordBreak.h"

#include <unicode/utf16.h>

#include <algorithm>
#include <utility>

namespace nib {

TokenStyle TokenStyleTable::Get(int32_t type) const
{
    auto found = styles_.find(type);
    return found == styles_.end() ? TokenStyle{} : found->second;
}

SourceView::SourceView(SourceDocument& document, Clipboard& clipboard) : document_(document), clipboard_(clipboard)
{
    document_.AddListener(this);
}

SourceView::~SourceView()
{
    document_.RemoveListener(this);
}

void SourceView::SetHost(ViewHost* host)
{
    host_ = host ? host : &noHost_;
}

void SourceView::SetEvents(ViewEvents* events)
{
    events_ = events;
}

// Caret and selection

void SourceView::Tell()
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

void SourceView::Place(Position anchor, Position caret)
{
    anchor_ = anchor;
    caret_ = caret;
    document_.Reveal(caret_.line);
    Tell();
    host_->EnsureCaretVisible();
}

Position SourceView::SnapToUnit(Position p)
{
    p = document_.Clamp(p);
    if (p.col <= 0) return p;
    TextView line = document_.LineText(p.line, scratch_);
    auto col = static_cast<size_t>(p.col);
    if (col < line.size() && U16_IS_TRAIL(line[col]) && U16_IS_LEAD(line[col - 1])) --p.col;
    return p;
}

Position SourceView::SnapToGrapheme(Position p)
{
    p = document_.Clamp(p);
    if (p.col > 0) p.col = GraphemeStart(document_.LineText(p.line, scratch_), p.col);
    return p;
}

void SourceView::SetCaret(Position caret)
{
    document_.BreakTyping();
    goal_ = -1;
    caret = SnapToGrapheme(caret);
    Place(caret, caret);
}

void SourceView::GetSelection(Position& start, Position& end) const
{
    start = anchor_;
    end = caret_;
}

void SourceView::SetSelection(Position anchor, Position caret)
{
    document_.BreakTyping();
    goal_ = -1;
    Place(SnapToUnit(anchor), SnapToUnit(caret));
}

void SourceView::SelectAll()
{
    document_.BreakTyping();
    goal_ = -1;
    anchor_ = {};
    caret_ = document_.End();
    document_.Reveal(caret_.line);
    Tell(); // and stay where the reader is
}

void SourceView::SelectWord(Position at)
{
    at = document_.Clamp(at);
    ColumnRange word = WordAt(document_.LineText(at.line, scratch_), at.col);
    SetSelection({word.first, at.line}, {word.last, at.line});
}

void SourceView::SelectLines(int32_t anchorLine, int32_t caretLine)
{
    constexpr int32_t behindAll = 0x7FFFFFFF;
    if (caretLine < anchorLine) {
        SetSelection({behindAll, anchorLine}, {0, caretLine});
    } else {
        SetSelection({0, anchorLine}, {behindAll, caretLine});
    }
}

Text SourceView::SelectedText() const
{
    auto [start, end] = Selection();
    return document_.GetRange(start, end);
}

// Appearance

void SourceView::SetFont(const SourceFont& font)
{
    font_ = font;
    host_->AppearanceChanged();
}

void SourceView::SetLineWrap(bool wrap)
{
    if (std::exchange(lineWrap_, wrap) != wrap) host_->AppearanceChanged();
}

void SourceView::SetOvertype(bool overtype)
{
    if (std::exchange(overtype_, overtype) == overtype) return;
    host_->SelectionChanged(caret_.line, caret_.line);
    if (events_) events_->OvertypeChanged(overtype);
}

void SourceView::SetBackColor(int32_t color)
{
    backColor_ = color;
    host_->AppearanceChanged();
}

void SourceView::SetMarginWidth(int32_t characters)
{
    characters = std::max(characters, 0);
    if (std::exchange(marginWidth_, characters) != characters) host_->AppearanceChanged();
}

void SourceView::SetShowBlocks(bool show)
{
    if (std::exchange(showBlocks_, show) != show) host_->AppearanceChanged();
}

bool SourceView::NextToken(int32_t line, int32_t position, Token& token)
{
    if (line < 0 || line >= document_.LineCount()) return false;
    document_.ScanLine(line, tokens_);
    auto found = std::find_if(tokens_.begin(), tokens_.end(),
                              [&](const Token& t) { return t.type == 0 || t.start + t.length > position; });
    if (found == tokens_.end() || found->type == 0) return false;
    token = *found;
    return true;
}

// What the document tells

void SourceView::TextChanged(const TextChange& change)
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

void SourceView::TextReset()
{
    goal_ = -1;
    anchor_ = caret_ = {};
    toldAnchor_ = toldCaret_ = {-1, 0};
    Tell();
    if (events_) events_->LinesChanged();
    host_->EnsureCaretVisible();
}

void SourceView::CaretRequested(Position caret)
{
    goal_ = -1;
    caret = SnapToUnit(caret);
    Place(caret, caret);
}

void SourceView::ModifiedChanged(bool modified)
{
    if (events_) events_->ModifiedChanged(modified);
}

void SourceView::FoldingChanged()
{
    if (!document_.IsHidden(caret_.line)) return;
    int32_t head = document_.VisibleLine(document_.VisibleIndex(caret_.line));
    goal_ = -1;
    anchor_ = caret_ = {std::min(caret_.col, document_.LineLength(head)), head};
    Tell();
}

} // namespace nib
