// Scrolling, by bars, wheel and caret; part of SourceViewWidget.

#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace nib {

void SourceViewWidget::GetFirstVisible(int32_t& line, int32_t& column)
{
    Settle();
    line = document_.VisibleLine(geometry_.TopIndex());
    column = static_cast<int32_t>(std::lround(geometry_.Left() / metrics_.CharWidth()));
}

void SourceViewWidget::SetFirstVisible(int32_t line, int32_t column)
{
    Settle();
    line = std::clamp(line, 0, document_.LineCount() - 1);
    geometry_.ScrollToIndex(document_.VisibleIndex(line));
    geometry_.SetLeft(std::min(column * metrics_.CharWidth(), geometry_.MaxLeft()));
    UpdateBars();
    viewport()->update();
}

void SourceViewWidget::UpdateVerticalBar()
{
    syncing_ = true;
    verticalScrollBar()->setRange(0, geometry_.MaxTopIndex());
    verticalScrollBar()->setPageStep(geometry_.PageLines());
    verticalScrollBar()->setValue(geometry_.BarIndex());
    syncing_ = false;
}

void SourceViewWidget::UpdateBars()
{
    barsStale_ = false;
    UpdateVerticalBar();
    syncing_ = true;
    const auto policy = model_.LineWrap() ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
    if (horizontalScrollBarPolicy() != policy) setHorizontalScrollBarPolicy(policy); // lays out, whatever it was
    horizontalScrollBar()->setRange(0, static_cast<int>(std::ceil(geometry_.MaxLeft())));
    horizontalScrollBar()->setPageStep(std::max(viewport()->width(), 1));
    horizontalScrollBar()->setSingleStep(static_cast<int>(std::ceil(metrics_.CharWidth() * 3)));
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(geometry_.Left())));
    syncing_ = false;
}

void SourceViewWidget::Scrolled(ViewGeometry::Place old)
{
    ViewGeometry::Place now = geometry_.TopPlace();
    UpdateBars();
    if (now == old) return;
    QRect text = viewport()->rect();
    bool sideways = now.left != old.left;
    if (sideways) text.setLeft(static_cast<int>(geometry_.Margin().width));
    std::optional<qreal> rows = geometry_.Distance(old);
    bool whole = rows && std::floor(*rows) == *rows && std::floor(now.left - old.left) == now.left - old.left;
    if (!whole || (sideways && *rows != 0) || std::abs(*rows) >= viewport()->height()) {
        viewport()->update();
    } else {
        viewport()->scroll(static_cast<int>(old.left - now.left), static_cast<int>(-*rows), text);
    }
    if (!glide_.IsUnderWay()) updateMicroFocus(); // who asks for the caret's place would end it
}

void SourceViewWidget::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    if (syncing_) return;
    glide_.Stop();
    caretWanted_ = false; // the user wants to see something else
    auto old = geometry_.TopPlace();
    if (verticalScrollBar()->value() != geometry_.BarIndex()) geometry_.ScrollToIndex(verticalScrollBar()->value());
    geometry_.SetLeft(horizontalScrollBar()->value());
    Scrolled(old);
}

void SourceViewWidget::ScrollRows(int32_t rows)
{
    ScrollPixels({0, rows * metrics_.LineHeight()});
}

void SourceViewWidget::ScrollPixels(QPointF delta)
{
    Settle();
    auto old = geometry_.TopPlace();
    geometry_.ScrollBy(delta.y());
    geometry_.SetLeft(std::clamp(geometry_.Left() + delta.x(), 0.0, geometry_.MaxLeft()));
    Scrolled(old);
}

void SourceViewWidget::RevealPlace(Position p, int32_t beyond)
{
    document_.Reveal(p.line);
    Settle();
    auto old = geometry_.TopPlace();
    geometry_.Reveal(p, beyond);
    Scrolled(old);
}

void SourceViewWidget::EnsureCaretVisible()
{
    RevealPlace(model_.Caret(), model_.CaretBeyond());
    RestartBlink();
}

void SourceViewWidget::EnsureCaretVisibleSoon()
{
    caretWanted_ = true;
    SettleSoon();
    RestartBlink();
}

void SourceViewWidget::SettleSoon()
{
    if (std::exchange(settling_, true)) return;
    const auto settle = [this] {
        settling_ = false;
        Settle();
    };
    QMetaObject::invokeMethod(this, settle, Qt::QueuedConnection); // before the next paint, which Qt puts behind it
}

void SourceViewWidget::Settle()
{
    glide_.Finish();
    if (!caretWanted_ && !barsStale_) return;
    auto old = geometry_.TopPlace();
    if (std::exchange(caretWanted_, false)) geometry_.Reveal(model_.Caret(), model_.CaretBeyond());
    Scrolled(old);
}

void SourceViewWidget::wheelEvent(QWheelEvent* event)
{
    event->accept();
    QPointF pixels = event->pixelDelta();
    QPointF steps = QPointF(event->angleDelta()) / 120.0;
    if (event->modifiers() & Qt::ControlModifier) {
        wheelRest_ += steps;
        auto whole = static_cast<int>(wheelRest_.y());
        wheelRest_ -= QPointF(0, whole);
        if (whole != 0) SetZoom(zoom_ + whole);
        return;
    }
    if (pixels.isNull()) pixels = steps * QApplication::wheelScrollLines() * metrics_.LineHeight();
    if (event->modifiers() & Qt::ShiftModifier) pixels = {pixels.y() + pixels.x(), 0};
    // Fractions of a pixel would blur the text; they wait for the next turn.
    wheelRest_ += pixels;
    QPointF whole(std::trunc(wheelRest_.x()), std::trunc(wheelRest_.y()));
    wheelRest_ -= whole;
    if (event->pixelDelta().isNull())
        ScrollSmoothly([&] { ScrollPixels(-whole); });
    else
        ScrollPixels(-whole);
}

void SourceViewWidget::ScrollSmoothly(const std::function<void()>& scroll)
{
    const bool shows = model_.Marks().smoothScrolling && Glide::IsWelcome(*this);
    // One that is under way goes on from where it is.
    const ViewGeometry::Place from = geometry_.TopPlace();
    scroll();
    if (!shows) return;
    Settle();
    const ViewGeometry::Place to = geometry_.TopPlace();
    const std::optional<qreal> pixels = geometry_.Distance(from);
    if (pixels && *pixels != 0 && to.left == from.left) glide_.Start(from, to, *pixels);
}

} // namespace nib
