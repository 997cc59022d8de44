#include "compare/QtCompareView.h"

#include "compare/QtCompareBar.h"

#include "platform/qt/QtText.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace nib {

QtCompareView::QtCompareView(CompareModel& model, QWidget* parent)
    : QAbstractScrollArea(parent), model_(model), painter_(model), bar_(new CompareBar(model, painter_))
{
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBar(bar_);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the changes are marked on it
    setFrameShape(QFrame::NoFrame);
    verticalScrollBar()->setAccessibleName(tr("Vertical scroll bar"));
    horizontalScrollBar()->setAccessibleName(tr("Horizontal scroll bar"));
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Two texts side by side"));
    BuildLook();
}

void QtCompareView::BuildLook()
{
    if (!model_.IsThere()) return;
    QPalette shown = palette();
    shown.setCurrentColorGroup(hasFocus() ? QPalette::Active : QPalette::Inactive);
    painter_.Build(shown);
    UpdateBars();
    viewport()->update();
}

void QtCompareView::Refresh()
{
    if (!model_.IsThere()) return viewport()->update();
    painter_.Forget();
    hot_.reset();
    // The line that the keys went to stays where it is in the window.
    const int32_t above = row_ - verticalScrollBar()->value();
    row_ = std::clamp(row_, 0, std::max(model_.Rows().Count() - 1, 0));
    if (line_ >= 0 && line_ != Line()) row_ = model_.Rows().RowOfLine(line_, side_ == Beside::Right);
    UpdateBars();
    verticalScrollBar()->setValue(row_ - above);
    bar_->update();
    viewport()->update();
    if (!begun_ && model_.Rows().Count() > 0) {
        begun_ = true;
        if (Change() < 0) Step(false);
    }
    Tell();
}

int QtCompareView::PageRows() const
{
    return std::max(static_cast<int>(viewport()->height() / painter_.LineHeight()), 1);
}

void QtCompareView::UpdateBars()
{
    verticalScrollBar()->setPageStep(PageRows());
    verticalScrollBar()->setRange(0, std::max(model_.Rows().Count() - PageRows(), 0));
    const ComparePlaces places = painter_.Places(viewport()->width());
    const qreal room = places.PaneWidth() - std::max(places.margin[0], places.margin[1]) - painter_.CharWidth();
    const int wanted = static_cast<int>(std::ceil(std::max(painter_.Widest() - room, 0.0)));
    horizontalScrollBar()->setPageStep(std::max(static_cast<int>(room), 1));
    horizontalScrollBar()->setSingleStep(static_cast<int>(painter_.CharWidth()) * 2);
    // One that is in use does not shrink under the hand.
    horizontalScrollBar()->setMaximum(std::max(wanted, horizontalScrollBar()->value()));
}

// Painting

void QtCompareView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), model_.IsThere() ? painter_.Ground() : palette().color(QPalette::Base));
    if (!model_.IsThere()) return;
    const ComparePlaces places = painter_.Places(viewport()->width());
    const qreal height = painter_.LineHeight();
    const qreal before = painter_.Widest();
    const int32_t change = Change();
    int32_t row = verticalScrollBar()->value();
    for (qreal y = 0; y < viewport()->height() && row < model_.Rows().Count(); y += height, ++row) {
        CompareRowLook look;
        look.row = row;
        look.top = y;
        look.left = horizontalScrollBar()->value();
        look.current = row == row_ && hasFocus();
        look.ofCurrent = change >= 0 && model_.Rows().ChangeAt(row) == change;
        look.side = side_;
        if (hot_ && model_.Rows().ChangeAt(row) == hot_->change) look.hot = hot_->into;
        painter_.Paint(painter, places, look);
    }
    if (painter_.Widest() > before)
        QMetaObject::invokeMethod(
            this, [this] { UpdateBars(); }, Qt::QueuedConnection);
}

void QtCompareView::scrollContentsBy(int, int)
{
    viewport()->update();
}

void QtCompareView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (model_.IsThere()) UpdateBars();
}

void QtCompareView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) BuildLook();
}

void QtCompareView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    BuildLook();
}

void QtCompareView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    BuildLook();
}

// Places

int32_t QtCompareView::RowAt(qreal y) const
{
    const int32_t row = verticalScrollBar()->value() + static_cast<int32_t>(y / painter_.LineHeight());
    return y >= 0 && row < model_.Rows().Count() ? row : -1;
}

std::optional<QtCompareView::Arrow> QtCompareView::ArrowAt(QPointF point) const
{
    if (!model_.IsThere()) return std::nullopt;
    const int32_t row = RowAt(point.y());
    const int32_t change = row < 0 ? -1 : model_.Rows().ChangeAt(row);
    if (change < 0 || model_.Rows().RowsOf(change).first != row) return std::nullopt;
    const ComparePlaces places = painter_.Places(viewport()->width());
    const qreal top = (row - verticalScrollBar()->value()) * painter_.LineHeight();
    for (Beside into : {Beside::Left, Beside::Right})
        if (model_.Side(into).CanEdit() && places.Arrow(into, top, painter_.LineHeight()).contains(point))
            return Arrow{change, into};
    return std::nullopt;
}

int32_t QtCompareView::Change() const
{
    return model_.Rows().ChangeAt(row_);
}

int32_t QtCompareView::Line() const
{
    if (row_ >= model_.Rows().Count()) return -1;
    const CompareRow& row = model_.Rows().At(row_);
    return side_ == Beside::Left ? row.left : row.right;
}

void QtCompareView::GoTo(int32_t row, bool wholeChange)
{
    const int32_t count = model_.Rows().Count();
    if (count == 0) return;
    row_ = std::clamp(row, 0, count - 1);
    line_ = Line();
    const int32_t change = Change();
    const int32_t page = PageRows();
    int32_t top = verticalScrollBar()->value();
    if (wholeChange && change >= 0) {
        const RowRange range = model_.Rows().RowsOf(change);
        if (range.first < top || range.last > top + page) top = range.first - std::min(3, page / 4);
    }
    top = std::clamp(top, row_ - page + 1, row_);
    verticalScrollBar()->setValue(top);
    viewport()->update();
    Tell();
}

bool QtCompareView::Step(bool backward)
{
    const int32_t next = model_.Rows().NextChange(row_, backward);
    if (next < 0) return false;
    GoTo(model_.Rows().RowsOf(next).first, true);
    return true;
}

void QtCompareView::Take(Beside into)
{
    const int32_t change = Change();
    if (change >= 0 && model_.CanTake(into)) model_.Take(change, into);
}

void QtCompareView::Tell()
{
    setAccessibleDescription(Spoken());
    if (onMove) onMove();
}

/// The present row for those who hear it.
QString QtCompareView::Spoken() const
{
    if (!model_.IsThere() || row_ >= model_.Rows().Count()) return {};
    const CompareRow& row = model_.Rows().At(row_);
    if (row.folded > 0) return QtComparePainter::FoldText(row.folded);
    const auto line = [&](Beside side, int32_t number) {
        if (number < 0) return tr("nothing");
        return tr("line %1: %2").arg(number + 1).arg(ToQString(model_.Side(side).Lines().GetLine(number)));
    };
    if (!model_.Rows().BlockOf(row_).IsChange()) return line(side_, Line());
    return tr("Changed. Left %1. Right %2.").arg(line(Beside::Left, row.left), line(Beside::Right, row.right));
}

// Mouse

void QtCompareView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !model_.IsThere()) return;
    const int32_t row = RowAt(event->position().y());
    if (row < 0) return;
    if (const auto arrow = ArrowAt(event->position())) {
        GoTo(row);
        return Take(arrow->into);
    }
    side_ = event->position().x() < viewport()->width() / 2.0 ? Beside::Left : Beside::Right;
    GoTo(row);
    if (model_.Rows().At(row).folded > 0) OpenRow();
}

void QtCompareView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !model_.IsThere() || ArrowAt(event->position())) return;
    if (RowAt(event->position().y()) == row_) OpenRow();
}

void QtCompareView::mouseMoveEvent(QMouseEvent* event)
{
    const auto arrow = ArrowAt(event->position());
    const int32_t row = model_.IsThere() ? RowAt(event->position().y()) : -1;
    const bool hand = arrow || (row >= 0 && model_.Rows().At(row).folded > 0);
    viewport()->setCursor(hand ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (arrow == hot_) return;
    hot_ = arrow;
    viewport()->setToolTip(!arrow                         ? QString()
                           : arrow->into == Beside::Right ? tr("Takes this over to the right (Alt+Right)")
                                                          : tr("Takes this over to the left (Alt+Left)"));
    viewport()->update();
}

void QtCompareView::leaveEvent(QEvent* event)
{
    QAbstractScrollArea::leaveEvent(event);
    if (std::exchange(hot_, std::nullopt)) viewport()->update();
}

} // namespace nib
