#include "text/widget/ViewGeometry.h"

#include <algorithm>
#include <cmath>

namespace nib {

void ViewGeometry::Measure(QSizeF viewport, qreal tallest)
{
    size_ = viewport;
    tallest_ = tallest;
    margin_ = MarginPlaces::Of(model_, metrics_, noteColumns_);
    // The caret behind a full row still needs its place.
    qreal room = size_.width() - margin_.width - metrics_.CharWidth();
    cache_.SetWrapWidth(model_.LineWrap() ? std::max(room, metrics_.CharWidth() * 4) : 0);
    if (model_.LineWrap()) left_ = 0;
    SetTop({topIndex_, topOffset_});
}

void ViewGeometry::TextMoved(const TextChange* change)
{
    int32_t line = topLine_;
    if (change && change->ranges) {
        line = change->Map({0, line}, true).line;
    } else if (change && change->oldEnd.line <= line && change->start.line < line) {
        line = std::max(line + change->newEnd.line - change->oldEnd.line, change->start.line);
    }
    line = std::clamp(line, 0, Buffer().LineCount() - 1);
    SetTop({Buffer().VisibleIndex(line), topOffset_});
}

// Scrolling

qreal ViewGeometry::HeightOf(int32_t line)
{
    int32_t rows = cache_.WrapWidth() > 0 ? cache_.Measured(line).layout.RowCount() : 1;
    return rows * metrics_.LineHeight();
}

ViewGeometry::Top ViewGeometry::MaxTop()
{
    int32_t index = Buffer().VisibleCount();
    if (cache_.WrapWidth() <= 0) {
        qreal all = index * metrics_.LineHeight();
        qreal hidden = std::max(all - size_.height(), 0.0);
        Top top;
        top.index = static_cast<int32_t>(hidden / metrics_.LineHeight());
        top.offset = hidden - top.index * metrics_.LineHeight();
        return top;
    }
    qreal height = 0;
    while (index > 0 && height < size_.height()) height += HeightOf(Buffer().VisibleLine(--index));
    return {index, std::max(height - size_.height(), 0.0)};
}

void ViewGeometry::Normalize(Top& top)
{
    int32_t count = Buffer().VisibleCount();
    top.index = std::clamp(top.index, 0, count - 1);
    while (top.offset < 0 && top.index > 0) top.offset += HeightOf(Buffer().VisibleLine(--top.index));
    top.offset = std::max(top.offset, 0.0);
    for (qreal height = 0; top.index + 1 < count; ++top.index, top.offset -= height) {
        height = HeightOf(Buffer().VisibleLine(top.index));
        if (top.offset < height) break;
    }
}

void ViewGeometry::SetTop(Top top)
{
    Normalize(top);
    Top lowest = MaxTop();
    if (top.index > lowest.index || (top.index == lowest.index && top.offset > lowest.offset)) top = lowest;
    topIndex_ = top.index;
    topOffset_ = top.offset;
    topLine_ = Buffer().VisibleLine(topIndex_);
}

int32_t ViewGeometry::MaxTopIndex()
{
    Top lowest = MaxTop();
    return lowest.index + (lowest.offset > 0 ? 1 : 0);
}

int32_t ViewGeometry::BarIndex()
{
    Top lowest = MaxTop();
    bool atEnd = topIndex_ == lowest.index && topOffset_ >= lowest.offset;
    return atEnd ? MaxTopIndex() : topIndex_;
}

int32_t ViewGeometry::PageLines() const
{
    return std::max(static_cast<int32_t>(size_.height() / metrics_.LineHeight()), 1);
}

void ViewGeometry::ScrollToIndex(int32_t index)
{
    SetTop({index, 0});
}

void ViewGeometry::ScrollBy(qreal pixels)
{
    // Far jumps over lines of one height need not be walked.
    Top top{topIndex_, topOffset_ + pixels};
    if (cache_.WrapWidth() <= 0) {
        qreal all = std::max(topIndex_ * metrics_.LineHeight() + top.offset, 0.0);
        top.index = static_cast<int32_t>(all / metrics_.LineHeight());
        top.offset = all - top.index * metrics_.LineHeight();
    }
    SetTop(top);
}

qreal ViewGeometry::MaxLeft()
{
    if (cache_.WrapWidth() > 0) return 0;
    // The widest line is known only as far as it was seen; back at the left edge the measure starts anew.
    if (left_ <= 0) widest_ = 0;
    // With what a bar below covers: the bar would go again, as the line that it is for is out of sight, and come back.
    ForEach(0, std::max(tallest_, size_.height()),
            [&](int32_t line, qreal) { widest_ = std::max(widest_, cache_.Measured(line).layout.Width()); });
    qreal room = size_.width() - margin_.width - 2 * metrics_.CharWidth();
    return std::max({widest_ - room, left_ > 0 ? std::min(left_, widest_) : 0.0, 0.0});
}

void ViewGeometry::SetLeft(qreal left)
{
    left_ = cache_.WrapWidth() > 0 ? 0 : std::max(left, 0.0);
}

void ViewGeometry::Reveal(Position p, int32_t beyond)
{
    const LineEntry& entry = cache_.Measured(p.line);
    const LineLayout& layout = entry.layout;
    int32_t column = entry.ToShown(p.col);
    int32_t row = layout.RowOf(column);
    qreal x = layout.XOf(column) + beyond * metrics_.CharWidth();
    qreal height = metrics_.LineHeight();
    int32_t index = Buffer().VisibleIndex(p.line);
    qreal rowTop = row * height;
    if (index < topIndex_ || (index == topIndex_ && rowTop < topOffset_)) {
        SetTop({index, rowTop});
    } else {
        // Below the lower edge: so that the row ends there.
        Top lowest{index, rowTop + height - size_.height()};
        bool below = index > topIndex_ + size_.height() / height + 1;
        if (!below) {
            qreal y = rowTop - topOffset_;
            for (int32_t i = topIndex_; i < index; ++i) y += HeightOf(Buffer().VisibleLine(i));
            below = y + height > size_.height();
        }
        if (below) SetTop(lowest);
    }
    if (cache_.WrapWidth() > 0) return;
    qreal room = size_.width() - margin_.width;
    qreal edge = std::min(metrics_.CharWidth() * 4, room / 4);
    if (x < left_) {
        SetLeft(x - edge < 0 ? 0 : x - edge);
    } else if (x > left_ + room - metrics_.CharWidth()) {
        SetLeft(x - room + edge);
    }
    widest_ = std::max(widest_, x);
}

std::optional<qreal> ViewGeometry::Distance(const Place& old)
{
    int32_t first = std::min(old.index, topIndex_);
    int32_t last = std::max(old.index, topIndex_);
    if (last - first > PageLines()) return {};
    qreal between = 0;
    for (int32_t index = first; index < last; ++index) between += HeightOf(Buffer().VisibleLine(index));
    return (old.index <= topIndex_ ? between : -between) + topOffset_ - old.offset;
}

// Places

std::optional<qreal> ViewGeometry::TopOf(int32_t line)
{
    std::optional<qreal> top;
    if (line < topLine_) return top;
    ForEach(0, size_.height(), [&](int32_t seen, qreal y) {
        if (seen == line) top = y;
    });
    return top;
}

Position ViewGeometry::PositionAt(QPointF point, bool covering)
{
    Position result;
    bool found = false;
    auto visit = [&](int32_t line, qreal y) {
        const LineEntry& entry = cache_.Measured(line);
        auto row = static_cast<int32_t>(std::max(point.y() - y, 0.0) / metrics_.LineHeight());
        result = {entry.FromShown(entry.layout.ColumnAt(row, point.x() - TextX(), covering)), line};
        found = true;
    };
    ForEach(point.y(), point.y() + 0.01, visit);
    if (found) return result;
    if (point.y() < 0) {
        visit(Buffer().VisibleLine(std::max(topIndex_ - 1, 0)), point.y());
    } else {
        int32_t last = Buffer().VisibleLine(Buffer().VisibleCount() - 1);
        visit(last, point.y() - HeightOf(last) + metrics_.LineHeight() / 2);
    }
    return result;
}

QRectF ViewGeometry::CellOf(Position p)
{
    std::optional<qreal> top = TopOf(p.line);
    if (!top) return {};
    const LineEntry& entry = cache_.Measured(p.line);
    int32_t column = entry.ToShown(p.col);
    int32_t row = entry.layout.RowOf(column);
    auto [left, width] = entry.layout.SpanOf(row, column);
    if (width < 1) width = metrics_.CharWidth();
    return {TextX() + left, *top + row * metrics_.LineHeight(), width, metrics_.LineHeight()};
}

std::optional<QPointF> ViewGeometry::CaretAt(Position p, int32_t shownOffset)
{
    std::optional<qreal> top = TopOf(p.line);
    if (!top) return {};
    const LineLayout& layout = cache_.Measured(p.line).layout;
    int32_t column = p.col + shownOffset;
    return QPointF(TextX() + layout.XOf(column), *top + layout.RowOf(column) * metrics_.LineHeight());
}

int32_t ViewGeometry::CellsBefore(Position p)
{
    if (cache_.WrapWidth() > 0 || IsOnGrid(p.line)) return p.col;
    const LineEntry& entry = cache_.Measured(p.line);
    return static_cast<int32_t>(std::lround(entry.layout.XOf(entry.ToShown(p.col)) / metrics_.CharWidth()));
}

int32_t ViewGeometry::ColumnAtCell(int32_t line, int32_t cell)
{
    if (cache_.WrapWidth() > 0 || IsOnGrid(line)) return cell;
    const LineEntry& entry = cache_.Measured(line);
    return entry.FromShown(entry.layout.ColumnAt(0, cell * metrics_.CharWidth()));
}

CellPlace ViewGeometry::CellAt(QPointF point)
{
    const Position p = PositionAt(point);
    if (cache_.WrapWidth() > 0) return {p.line, p.col};
    return {p.line, std::max(static_cast<int32_t>(std::lround((point.x() - TextX()) / metrics_.CharWidth())), 0)};
}

void ViewGeometry::RowOf(Position at, int32_t& first, int32_t& last)
{
    const LineEntry& entry = cache_.Measured(at.line);
    int32_t row = entry.layout.RowOf(entry.ToShown(at.col));
    first = entry.FromShown(entry.layout.RowStart(row));
    last = entry.FromShown(entry.layout.ColumnAt(row, 1e9));
}

bool ViewGeometry::MoveRows(Position& at, int32_t rows, double& goal)
{
    int32_t index = Buffer().VisibleIndex(at.line);
    if (cache_.WrapWidth() <= 0 && IsOnGrid(at.line)) {
        // Of many carets most are out of sight, where no line is worth its layout.
        const int32_t to = Buffer().VisibleLine(std::clamp(index + rows, 0, Buffer().VisibleCount() - 1));
        if (goal < 0) goal = at.col * metrics_.CharWidth();
        if (IsOnGrid(to)) {
            const auto column = static_cast<int32_t>(std::ceil(goal / metrics_.CharWidth() - 0.5));
            at = {std::clamp(column, 0, Buffer().LineLength(to)), to};
            return true;
        }
    }
    const LineEntry* entry = &cache_.Measured(at.line);
    int32_t row = entry->layout.RowOf(entry->ToShown(at.col));
    if (goal < 0) goal = entry->layout.XOf(entry->ToShown(at.col));
    int32_t line = at.line;
    for (int32_t step = rows < 0 ? -1 : 1; rows != 0; rows -= step) {
        if (row + step >= 0 && row + step < entry->layout.RowCount()) {
            row += step;
            continue;
        }
        if (index + step < 0 || index + step >= Buffer().VisibleCount()) break;
        index += step;
        line = Buffer().VisibleLine(index);
        entry = &cache_.Measured(line);
        row = step > 0 ? 0 : entry->layout.RowCount() - 1;
    }
    at = {entry->FromShown(entry->layout.ColumnAt(row, goal)), line};
    return true;
}

} // namespace nib
