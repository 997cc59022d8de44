#include "text/SourceView.h"

#include "text/TextSearch.h"

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
    if (editing_ > 0) return;
    if (HasSeveral() || toldLast_ >= 0) return TellAll();
    if (anchor_ == toldAnchor_ && caret_ == toldCaret_) return;
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
    DropCarets();
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
    const UnitSpan line = document_.LineUnits(p.line);
    auto col = static_cast<size_t>(p.col);
    if (col < line.length && U16_IS_TRAIL(line[col]) && U16_IS_LEAD(line[col - 1])) --p.col;
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
    DropCarets();
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

// Where the movement keys take the caret

void SourceView::MoveCaret(Move move, bool extendSelection)
{
    document_.BreakTyping();
    if (HasSeveral()) return MoveAll(move, extendSelection);
    Position to = TargetOf(move, extendSelection);
    Place(extendSelection ? anchor_ : to, to);
}

Position SourceView::TargetOf(Move move, bool extendSelection)
{
    bool vertical = move == Move::Up || move == Move::Down || move == Move::PageUp || move == Move::PageDown;
    if (vertical) return VerticalTarget(move);
    goal_ = -1;
    return HorizontalTarget(move, extendSelection);
}

Position SourceView::StepLeft(Position from, bool word)
{
    if (from.col > 0) {
        TextView line = document_.LineText(from.line, scratch_);
        return {word ? PreviousWord(line, from.col) : PreviousGrapheme(line, from.col), from.line};
    }
    int32_t index = document_.VisibleIndex(from.line);
    if (index == 0) return from;
    int32_t line = document_.VisibleLine(index - 1);
    return {document_.LineLength(line), line};
}

Position SourceView::StepRight(Position from, bool word)
{
    TextView line = document_.LineText(from.line, scratch_);
    if (from.col < static_cast<int32_t>(line.size())) {
        return {word ? NextWord(line, from.col) : NextGrapheme(line, from.col), from.line};
    }
    int32_t index = document_.VisibleIndex(from.line) + 1;
    return index < document_.VisibleCount() ? Position{0, document_.VisibleLine(index)} : from;
}

Position SourceView::HomeOf(Position from)
{
    int32_t first = 0;
    int32_t last = 0;
    if (host_->RowOf(from, first, last) && first > 0 && from.col != first) return {first, from.line};
    int32_t indent = IndentOf(document_.LineText(from.line, scratch_));
    return {from.col == indent ? 0 : indent, from.line};
}

Position SourceView::EndOf(Position from)
{
    int32_t first = 0;
    int32_t last = 0;
    if (host_->RowOf(from, first, last) && from.col != last) return {last, from.line};
    return {document_.LineLength(from.line), from.line};
}

Position SourceView::HorizontalTarget(Move move, bool extendSelection)
{
    bool collapse = HasSelection() && !extendSelection;
    switch (move) {
    case Move::Left: return collapse ? std::min(anchor_, caret_) : StepLeft(caret_, false);
    case Move::Right: return collapse ? std::max(anchor_, caret_) : StepRight(caret_, false);
    case Move::WordLeft: return StepLeft(caret_, true);
    case Move::WordRight: return StepRight(caret_, true);
    case Move::LineStart: return HomeOf(caret_);
    case Move::LineEnd: return EndOf(caret_);
    case Move::TextStart: return {};
    case Move::TextEnd: return document_.End();
    default: return caret_;
    }
}

Position SourceView::VerticalTarget(Move move)
{
    // A page keeps one line of the one before in sight.
    bool page = move == Move::PageUp || move == Move::PageDown;
    int32_t rows = page ? std::max(host_->PageLines() - 1, 1) : 1;
    if (move == Move::Up || move == Move::PageUp) rows = -rows;

    Position to = caret_;
    if (host_->MoveRows(to, rows, goal_)) return SnapToGrapheme(to);
    if (goal_ < 0) goal_ = caret_.col;
    int32_t last = document_.VisibleCount() - 1;
    to.line = document_.VisibleLine(std::clamp(document_.VisibleIndex(caret_.line) + rows, 0, last));
    to.col = static_cast<int32_t>(goal_);
    return SnapToGrapheme(to);
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
    if (HasSeveral())
        host_->SelectionChanged(carets_.Spans().front().Start().line, carets_.Spans().back().End().line);
    else
        host_->SelectionChanged(caret_.line, caret_.line);
    if (events_) events_->OvertypeChanged(overtype);
}

void SourceView::SetBackColor(int32_t color)
{
    backColor_ = color;
    host_->AppearanceChanged();
}

void SourceView::SetMarks(const ViewMarks& marks)
{
    if (!(std::exchange(marks_, marks) == marks)) host_->AppearanceChanged();
}

void SourceView::SetReadOnly(bool readOnly)
{
    if (std::exchange(readOnly_, readOnly) != readOnly) host_->AppearanceChanged();
}

void SourceView::TakeLook(const SourceView& other)
{
    tabSize_ = other.tabSize_;
    font_ = other.font_;
    screenStyles_ = other.screenStyles_;
    printStyles_ = other.printStyles_;
    backColor_ = other.backColor_;
    marks_ = other.marks_;
    marginWidth_ = other.marginWidth_;
    showBlocks_ = other.showBlocks_;
    lineWrap_ = other.lineWrap_;
    indentsByBlocks_ = other.indentsByBlocks_;
    marks_ = other.marks_;
    overtype_ = other.overtype_;
    readOnly_ = other.readOnly_;
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
    if (editing_ == 0) {
        goal_ = -1;
        FollowChange(change);
    }
    Tell();
    if (events_ && change.oldEnd.line != change.newEnd.line) events_->LinesChanged();
}

void SourceView::TextReset()
{
    goal_ = -1;
    DropCarets();
    anchor_ = caret_ = {};
    toldAnchor_ = toldCaret_ = {-1, 0};
    Tell();
    if (events_) events_->LinesChanged();
    host_->EnsureCaretVisible();
}

void SourceView::CaretRequested(Position caret)
{
    if (!leads_) return;
    goal_ = -1;
    DropCarets();
    anchor_ = caret_ = SnapToUnit(caret);
    document_.Reveal(caret_.line);
    Tell();
    host_->EnsureCaretVisibleSoon();
}

void SourceView::ModifiedChanged(bool modified)
{
    if (events_) events_->ModifiedChanged(modified);
}

void SourceView::FoldingChanged()
{
    // What is not in sight is not edited.
    const auto hidden = [this](const CaretSpan& span) { return document_.IsHidden(span.caret.line); };
    if (HasSeveral() && std::any_of(carets_.Spans().begin(), carets_.Spans().end(), hidden)) DropCarets();
    if (!document_.IsHidden(caret_.line)) return;
    int32_t head = document_.VisibleLine(document_.VisibleIndex(caret_.line));
    goal_ = -1;
    anchor_ = caret_ = {std::min(caret_.col, document_.LineLength(head)), head};
    Tell();
}

} // namespace nib
