#include "text/widget/MouseHandler.h"

#include "text/TextSearch.h"
#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <memory>

namespace nib {

namespace {

constexpr int kScrollInterval = 40;

bool InSelection(const SourceView& model, Position p)
{
    auto [start, end] = model.Selection();
    return start <= p && p < end;
}

/// Selecting whole lines puts the caret at their end, which may be far to the right: the view stays where it is.
void SelectLines(SourceViewWidget& widget, int32_t anchorLine, int32_t line)
{
    int left = widget.horizontalScrollBar()->value();
    widget.Model().SelectLines(anchorLine, line);
    widget.horizontalScrollBar()->setValue(left);
}

} // namespace

MouseHandler::MouseHandler(SourceViewWidget& widget) : widget_(widget)
{
    scrollTimer_.setInterval(kScrollInterval);
    QObject::connect(&scrollTimer_, &QTimer::timeout, &widget, [this] { ScrollOn(); });
    tripleTimer_.setSingleShot(true);
}

void MouseHandler::Press(const QMouseEvent& event)
{
    QPointF at = event.position();
    if (event.button() == Qt::LeftButton) {
        PressLeft(at, event.modifiers());
    } else if (event.button() == Qt::MiddleButton) {
        widget_.PastePrimary(widget_.PositionAt(at));
    } else if (event.button() == Qt::RightButton && !widget_.Model().AnySelection()) {
        widget_.Model().SetCaret(widget_.PositionAt(at));
    }
}

void MouseHandler::PressLeft(QPointF at, Qt::KeyboardModifiers held)
{
    const bool extend = held & Qt::ShiftModifier;
    SourceView& model = widget_.Model();
    Position p = widget_.PositionAt(at);
    auto zone = widget_.ZoneAt(at);
    bool third = tripleTimer_.isActive() && (at - pressed_).manhattanLength() < QApplication::startDragDistance();
    tripleTimer_.stop();
    pressed_ = last_ = at;
    unit_ = Unit::Character;
    selecting_ = true;
    if (zone == SourceViewWidget::Zone::Margin || third) {
        unit_ = Unit::Line;
        if (!extend) anchorLine_ = p.line;
        SelectLines(widget_, anchorLine_, p.line);
    } else if (zone == SourceViewWidget::Zone::Blocks) {
        selecting_ = false;
        widget_.ToggleBlock(p.line);
    } else if (held & Qt::AltModifier) {
        unit_ = Unit::Column;
        columnAnchor_ = extend ? model.ColumnAnchor() : widget_.CellAt(at);
        model.SelectColumn(columnAnchor_, widget_.CellAt(at));
    } else if (!extend && model.HasSelection() && InSelection(model, widget_.PositionAt(at, true))) {
        selecting_ = false;
        mayDrag_ = true;
    } else if ((held & Qt::ControlModifier) && !extend) {
        PressToAdd(p);
    } else if (extend) {
        model.SetSelection(model.Anchor(), p);
    } else {
        anchorLine_ = p.line;
        model.SetCaret(p);
    }
}

void MouseHandler::PressToAdd(Position at)
{
    SourceView& model = widget_.Model();
    const Carets& carets = model.AllCarets();
    others_ = model.CaretSpans();
    const size_t there = carets.Find(at);
    if (model.HasSeveral() && there < others_.size()) {
        selecting_ = false;
        others_.erase(others_.begin() + static_cast<std::ptrdiff_t>(there));
        return model.SetCarets(others_, carets.MainIndex() - (there < carets.MainIndex() ? 1 : 0));
    }
    unit_ = Unit::Added;
    unitStart_ = at;
    Add(at, at);
}

void MouseHandler::Add(Position anchor, Position caret)
{
    std::vector<CaretSpan> spans = others_;
    spans.push_back({anchor, caret});
    widget_.Model().SetCarets(std::move(spans), others_.size());
}

void MouseHandler::DoubleClick(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton || widget_.ZoneAt(event.position()) != SourceViewWidget::Zone::Content) {
        Press(event);
        return;
    }
    mayDrag_ = false;
    pressed_ = last_ = event.position();
    tripleTimer_.start(QApplication::doubleClickInterval());
    SourceView& model = widget_.Model();
    if (event.modifiers() & Qt::ControlModifier) {
        const Position at = widget_.PositionAt(event.position(), true);
        Text scratch;
        const ColumnRange word = WordAt(model.Document().LineText(at.line, scratch), at.col);
        return Add({word.first, at.line}, {word.last, at.line});
    }
    model.SelectWord(widget_.PositionAt(event.position(), true));
    model.GetSelection(unitStart_, unitEnd_);
    anchorLine_ = unitStart_.line;
    unit_ = Unit::Word;
    selecting_ = true;
}

void MouseHandler::Move(const QMouseEvent& event)
{
    last_ = event.position();
    if (mayDrag_ && (last_ - pressed_).manhattanLength() >= QApplication::startDragDistance()) {
        mayDrag_ = false;
        StartDrag();
    } else if (selecting_ && (event.buttons() & Qt::LeftButton)) {
        ExtendTo(last_);
        bool outside = !QRectF(widget_.viewport()->rect()).contains(last_);
        if (outside && !scrollTimer_.isActive()) scrollTimer_.start();
        if (!outside) scrollTimer_.stop();
    } else if (!event.buttons()) {
        UpdateCursor(last_);
    }
}

void MouseHandler::Release(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton) return;
    scrollTimer_.stop();
    if (mayDrag_) {
        const Position at = widget_.PositionAt(event.position());
        if ((event.modifiers() & Qt::ControlModifier) && widget_.Model().HasSeveral())
            PressToAdd(at);
        else
            widget_.Model().SetCaret(at);
    }
    mayDrag_ = selecting_ = false;
    widget_.PublishSelection();
}

void MouseHandler::ExtendTo(QPointF at)
{
    SourceView& model = widget_.Model();
    Position p = widget_.PositionAt(at);
    if (unit_ == Unit::Line) {
        SelectLines(widget_, anchorLine_, p.line);
    } else if (unit_ == Unit::Word) {
        SelectUnits(widget_.PositionAt(at, true));
    } else if (unit_ == Unit::Column) {
        model.SelectColumn(columnAnchor_, widget_.CellAt(at));
    } else if (unit_ == Unit::Added) {
        if (p != model.Caret()) Add(unitStart_, p);
    } else if (p != model.Caret()) {
        model.SetSelection(model.Anchor(), p);
    }
}

void MouseHandler::SelectUnits(Position at)
{
    SourceView& model = widget_.Model();
    Text scratch;
    ColumnRange word = WordAt(model.Document().LineText(at.line, scratch), at.col);
    Position start{word.first, at.line};
    Position end{word.last, at.line};
    if (start < unitStart_) {
        model.SetSelection(unitEnd_, start);
    } else {
        model.SetSelection(unitStart_, std::max(end, unitEnd_));
    }
}

/// While the pointer rests beyond an edge; the farther, the faster.
void MouseHandler::ScrollOn()
{
    QRectF room = widget_.viewport()->rect();
    if (selecting_) return ExtendTo(last_);
    if (!dropping_) return scrollTimer_.stop();
    qreal edge = widget_.LineHeight();
    if (last_.y() < room.top() + edge) widget_.ScrollRows(-1);
    if (last_.y() > room.bottom() - edge) widget_.ScrollRows(1);
    widget_.ShowDropCaret(widget_.PositionAt(last_));
}

void MouseHandler::UpdateCursor(QPointF at) const
{
    auto zone = widget_.ZoneAt(at);
    bool arrow = zone != SourceViewWidget::Zone::Content ||
                 (widget_.Model().HasSelection() && InSelection(widget_.Model(), widget_.PositionAt(at, true)));
    Qt::CursorShape shape = arrow ? Qt::ArrowCursor : Qt::IBeamCursor;
    if (zone == SourceViewWidget::Zone::Blocks &&
        widget_.Model().Document().BlockAt(widget_.PositionAt(at).line).IsHead())
        shape = Qt::PointingHandCursor;
    widget_.viewport()->setCursor(shape);
}

// Drag and drop

void MouseHandler::StartDrag()
{
    auto data = std::make_unique<QMimeData>();
    data->setText(QString::fromStdU16String(Replace(widget_.Model().SelectedText(), u"\r\n", u"\n")));
    // The drag belongs to Qt, which ends it after the drop.
    QDrag* drag = std::make_unique<QDrag>(&widget_).release();
    drag->setMimeData(data.release());
    dropHere_ = false;
    const bool copies = widget_.Model().ReadOnly();
    Qt::DropAction done = copies ? drag->exec(Qt::CopyAction, Qt::CopyAction)
                                 : drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    if (done == Qt::MoveAction && !dropHere_) widget_.Model().Delete();
}

bool MouseHandler::Accepts(const QDropEvent& event)
{
    return event.mimeData()->hasText() && !event.mimeData()->hasUrls();
}

void MouseHandler::DragMove(QPointF at)
{
    last_ = at;
    dropping_ = true;
    if (!scrollTimer_.isActive()) scrollTimer_.start();
    widget_.ShowDropCaret(widget_.PositionAt(at));
}

void MouseHandler::DragEnd()
{
    dropping_ = false;
    scrollTimer_.stop();
    widget_.ShowDropCaret(std::nullopt);
}

void MouseHandler::Drop(QDropEvent& event)
{
    DragEnd();
    SourceView& model = widget_.Model();
    if (!model.MayEdit()) return event.ignore(); // what is dragged stays where it comes from
    Position target = widget_.PositionAt(event.position());
    auto* from = qobject_cast<SourceViewWidget*>(event.source());
    if (from && &from->Model().Document() == &model.Document()) { // perhaps the other pane
        from->mouse_.dropHere_ = true;
        Position anchor;
        Position caret;
        from->Model().GetSelection(anchor, caret);
        if (from != &widget_) model.SetSelection(anchor, caret);
        model.MoveSelection(target, event.dropAction() == Qt::CopyAction);
    } else {
        model.SetCaret(target);
        Position start = model.Caret();
        model.Insert(event.mimeData()->text().toStdU16String());
        model.SetSelection(start, model.Caret());
    }
    event.acceptProposedAction();
    widget_.setFocus(Qt::MouseFocusReason);
}

} // namespace nib
