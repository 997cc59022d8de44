#include "text/widget/SourceViewWidget.h"

#include "text/widget/SourceViewAccessible.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

constexpr int kLeastZoom = -20;
constexpr int kMostZoom = 60;
/// The selection rests that long before other programs can fetch it.
constexpr int kPrimaryDelay = 150;

} // namespace

SourceViewWidget::SourceViewWidget(SourceDocument& document, Clipboard& clipboard, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document), clipboard_(clipboard), model_(document, clipboard),
      cache_(document_, metrics_, colors_), geometry_(model_, cache_, metrics_),
      lights_(model_, cache_, geometry_, metrics_, colors_), underlines_(cache_, geometry_, metrics_, colors_),
      notes_(geometry_, metrics_, colors_), scrollMarks_(std::make_unique<ScrollMarks>(model_, colors_).release()),
      glide_([this](const ViewGeometry::Place& place, qreal pixels) {
          const auto old = geometry_.TopPlace();
          geometry_.ScrollToIndex(place.index);
          geometry_.ScrollBy(place.offset + pixels);
          Scrolled(old);
      }),
      linePainter_(metrics_, colors_, signs_), marginPainter_(metrics_, colors_), mouse_(*this),
      forTools_(model_, *this)
{
    InstallSourceViewAccessible();
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setAttribute(Qt::WA_KeyCompression);
    setAcceptDrops(true);
    setVerticalScrollBar(scrollMarks_);
    verticalScrollBar()->setAccessibleName(tr("Vertical scroll bar"));
    horizontalScrollBar()->setAccessibleName(tr("Horizontal scroll bar"));
    viewport()->setAcceptDrops(true);
    viewport()->setMouseTracking(true);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAttribute(Qt::WA_StaticContents);
    connect(&blinkTimer_, &QTimer::timeout, this, [this] { Blink(); });
    connect(&scanTimer_, &QTimer::timeout, this, [this] { ScanIdle(); });
    scanTimer_.setSingleShot(true);
    connect(&primaryTimer_, &QTimer::timeout, this, [this] { PublishSelection(); });
    primaryTimer_.setSingleShot(true);
    connect(&nameTimer_, &QTimer::timeout, this, [this] { TakeName(); });
    nameTimer_.setSingleShot(true);
    model_.SetHost(this);
    document_.AddListener(this);
    AppearanceChanged();
}

SourceViewWidget::~SourceViewWidget()
{
    document_.RemoveListener(this);
    model_.SetHost(nullptr);
}

void SourceViewWidget::BuildColors()
{
    QPalette shown = palette();
    shown.setCurrentColorGroup(hasFocus() ? QPalette::Active : QPalette::Inactive);
    colors_.Build(shown, model_);
}

void SourceViewWidget::AppearanceChanged()
{
    metrics_.Build(model_.Font(), zoom_);
    signs_.Build(metrics_.StyledFont(0), metrics_.Ascent());
    BuildColors();
    cache_.Clear();
    geometry_.Measure(viewport()->size(), maximumViewportSize().height());
    UpdateBars();
    viewport()->update();
    LightsStale();
    scrollMarks_->Stale();
    updateMicroFocus();
    emit lookChanged();
}

void SourceViewWidget::SetZoom(int steps)
{
    steps = std::clamp(steps, kLeastZoom, kMostZoom);
    if (std::exchange(zoom_, steps) == steps) return;
    AppearanceChanged();
    emit zoomChanged(zoom_);
}

void SourceViewWidget::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) AppearanceChanged();
}

void SourceViewWidget::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    geometry_.Measure(viewport()->size(), maximumViewportSize().height());
    UpdateBars();
    if (model_.LineWrap()) viewport()->update();
}

// Places

SourceViewWidget::Zone SourceViewWidget::ZoneAt(QPointF point) const
{
    const MarginPlaces& margin = geometry_.Margin();
    if (point.x() < margin.select) return Zone::Margin;
    return margin.blocks && point.x() < margin.width ? Zone::Blocks : Zone::Content;
}

int32_t SourceViewWidget::LineHeight() const
{
    return static_cast<int32_t>(metrics_.LineHeight());
}

int32_t SourceViewWidget::PageLines() const
{
    return geometry_.PageLines();
}

bool SourceViewWidget::MoveRows(Position& at, int32_t rows, double& goal) const
{
    return geometry_.MoveRows(at, rows, goal);
}

bool SourceViewWidget::RowOf(Position at, int32_t& first, int32_t& last) const
{
    if (!model_.LineWrap()) return false;
    geometry_.RowOf(at, first, last);
    return true;
}

int32_t SourceViewWidget::CellsBefore(Position at) const
{
    return geometry_.CellsBefore(at);
}

int32_t SourceViewWidget::ColumnAtCell(int32_t line, int32_t cell) const
{
    return geometry_.ColumnAtCell(line, cell);
}

ScreenStyle SourceViewWidget::StyleAt(Position p, int32_t& start, int32_t& end)
{
    Token token;
    start = 0;
    end = document_.LineLength(p.line);
    if (!model_.NextToken(p.line, p.col, token)) return colors_.Style(kPlainToken);
    start = token.start;
    end = token.start + token.length;
    return colors_.Style(token.type);
}

// Mouse

void SourceViewWidget::mousePressEvent(QMouseEvent* event)
{
    CommitPreedit();
    glide_.Finish();
    mouse_.Press(*event);
    emit mousePressed(event->button(), event->modifiers(), event->position());
}

void SourceViewWidget::mouseMoveEvent(QMouseEvent* event)
{
    mouse_.Move(*event);
}

void SourceViewWidget::mouseReleaseEvent(QMouseEvent* event)
{
    mouse_.Release(*event);
    emit mouseReleased(event->button(), event->modifiers(), event->position());
}

void SourceViewWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    mouse_.DoubleClick(*event);
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return; // it selects
    if (event->button() == Qt::LeftButton && ZoneAt(event->position()) == Zone::Content) {
        emit mouseDoubleClicked(event->position());
    }
}

void SourceViewWidget::contextMenuEvent(QContextMenuEvent* event)
{
    // The mouse tells of itself when its button is released, on every desktop.
    if (event->reason() == QContextMenuEvent::Mouse) return;
    if (event->reason() == QContextMenuEvent::Keyboard) return AskForMenu();
    emit contextMenuRequested(event->globalPos());
}

void SourceViewWidget::AskForMenu()
{
    emit contextMenuRequested(viewport()->mapToGlobal(CaretRect().bottomRight().toPoint()));
}

void SourceViewWidget::ToggleBlock(int32_t line)
{
    BlockPart block = document_.BlockAt(line);
    if (block.IsCollapsed())
        document_.ExpandBlock(line);
    else if (block.IsHead())
        document_.CollapseBlock(line);
}

void SourceViewWidget::dragEnterEvent(QDragEnterEvent* event)
{
    event->setAccepted(MouseHandler::Accepts(*event));
    if (event->isAccepted()) event->acceptProposedAction();
}

void SourceViewWidget::dragMoveEvent(QDragMoveEvent* event)
{
    if (!MouseHandler::Accepts(*event)) return event->ignore();
    mouse_.DragMove(event->position());
    event->acceptProposedAction();
}

void SourceViewWidget::dragLeaveEvent(QDragLeaveEvent* /*event*/)
{
    mouse_.DragEnd();
}

void SourceViewWidget::dropEvent(QDropEvent* event)
{
    if (!MouseHandler::Accepts(*event)) return event->ignore();
    CommitPreedit();
    mouse_.Drop(*event);
}

void SourceViewWidget::PastePrimary(Position at)
{
    PublishSelection();
    Text text = clipboard_.GetPrimary();
    model_.SetCaret(at);
    model_.Insert(text);
}

void SourceViewWidget::PublishSelection()
{
    primaryTimer_.stop();
    if (model_.HasSelection()) clipboard_.SetPrimary(model_.SelectedText());
}

void SourceViewWidget::SelectionChanged(int32_t firstLine, int32_t lastLine)
{
    UpdateLines(firstLine, lastLine);
    if (model_.HasSelection()) primaryTimer_.start(kPrimaryDelay);
    LightsStale();
    RestartBlink();
    updateMicroFocus();
    forTools_.CaretMoved();
}

} // namespace nib
