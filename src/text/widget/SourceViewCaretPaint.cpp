// Where carets and selections show; part of SourceViewWidget.

#include "text/widget/SourceViewWidget.h"

#include <algorithm>
#include <cmath>

namespace nib {

QRectF SourceViewWidget::CaretBox()
{
    return CaretBoxAt(model_.Caret(), model_.CaretBeyond(), preedit_.isEmpty() ? 0 : preeditCursor_);
}

QRectF SourceViewWidget::CaretBoxAt(Position caret, int32_t beyond, int32_t shownOffset)
{
    const qreal right = beyond * metrics_.CharWidth();
    if (model_.Overtype() && preedit_.isEmpty()) return geometry_.CellOf(caret).translated(right, 0);
    std::optional<QPointF> at = geometry_.CaretAt(caret, shownOffset);
    if (!at) return {};
    constexpr qreal bar = 2;
    const qreal x = at->x() + right;
    // Between the characters, but whole in sight at the left edge.
    qreal left = std::max(std::round(x) - 1, std::min(x, geometry_.Margin().width));
    return {left, at->y(), bar, metrics_.LineHeight()};
}

template <typename Visit>
void SourceViewWidget::ForEachCaret(Visit&& visit)
{
    visit(CaretBox());
    if (!model_.HasSeveral()) return;
    const Carets& carets = model_.AllCarets();
    geometry_.ForEach(0, viewport()->height(), [&](int32_t line, qreal) {
        for (const CaretSpan& span : carets.InLines(line, line)) {
            if (span.caret.line == line && &span != &carets.Main()) visit(CaretBoxAt(span.caret, span.caretBeyond, 0));
        }
    });
}

void SourceViewWidget::UpdateCaret()
{
    ForEachCaret([&](const QRectF& caret) {
        if (!caret.isEmpty()) viewport()->update(caret.adjusted(-1, -1, 1, 1).toAlignedRect());
    });
}

void SourceViewWidget::PaintCarets(QPainter& painter)
{
    QRectF room = viewport()->rect();
    room.setLeft(std::max(geometry_.Margin().width - 1, 0.0));
    painter.setClipRect(room, Qt::IntersectClip);
    if (hasFocus() && caretOn_) {
        QColor color = colors_.text;
        // A block leaves the character under it readable.
        if (model_.Overtype() && preedit_.isEmpty()) color.setAlpha(110);
        ForEachCaret([&](const QRectF& caret) { painter.fillRect(caret, color); });
    }
    if (!dropCaret_) return;
    if (std::optional<QPointF> at = geometry_.CaretAt(*dropCaret_)) {
        painter.fillRect(QRectF(std::round(at->x()) - 1, at->y(), 2, metrics_.LineHeight()), colors_.highlight);
    }
}

void SourceViewWidget::DescribeSelections(int32_t line, PaintedLine& painted)
{
    selections_.clear();
    auto add = [&](Position start, Position end) {
        if (start == end || line < start.line || line > end.line) return;
        const int32_t first = line == start.line ? painted.entry->ToShown(start.col) : 0;
        const int32_t last =
            line == end.line ? painted.entry->ToShown(end.col) : static_cast<int32_t>(painted.text.size());
        if (first < last) selections_.push_back({first, last});
        painted.selectsBreak = painted.selectsBreak || line < end.line;
    };
    if (!model_.HasSeveral()) {
        auto [start, end] = model_.Selection();
        add(start, end);
    }
    for (const CaretSpan& span : model_.AllCarets().InLines(line, line)) {
        add(span.Start(), span.End());
        // A column is within its line.
        const int32_t length = span.End().col;
        if (const int32_t last = span.LastCell().col - length; last > 0)
            painted.selectedBeyond = {std::max(span.FirstCell().col - length, 0), last};
    }
    painted.selections = selections_;
}

} // namespace nib
