// Painting, and what must be painted again; part of SourceViewWidget.

#include "text/widget/SourceViewWidget.h"

#include <QPaintEvent>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace nib {

namespace {

constexpr int32_t kToTheEnd = std::numeric_limits<int32_t>::max();
constexpr int kNameRests = 250;      ///< milliseconds before the places of a name are lit
constexpr int64_t kScanSlice = 8000; ///< microseconds, short enough for the next key not to wait

} // namespace

// What the document tells

void SourceViewWidget::TextChanged(const TextChange& change)
{
    glide_.Stop();
    LightsStale();
    scrollMarks_->Stale();
    underlines_.Follow(change);
    if (notes_.Columns() > 0) {
        notes_.Follow(change);
        UpdateMargin();
    }
    bool sameLines = change.oldEnd.line == change.newEnd.line;
    if (!sameLines && underlines_.HasMarked()) TellBar();
    if (sameLines) {
        cache_.Invalidate(change.start.line, change.newEnd.line);
    } else {
        cache_.Clear();
    }
    auto old = geometry_.TopPlace();
    geometry_.TextMoved(&change);
    if (!(old == geometry_.TopPlace())) changed_.scrolled = true;
    changed_.first = changed_.first < 0 ? change.start.line : std::min(changed_.first, change.start.line);
    changed_.last = std::max(changed_.last, sameLines && !model_.LineWrap() ? change.newEnd.line : kToTheEnd);
    forTools_.TextChanged(change);
}

/// Once for all edits of a step: an operation makes as many as the text has lines.
void SourceViewWidget::ShowChange(int32_t first, int32_t last)
{
    Change change = std::exchange(changed_, {});
    UpdateVerticalBar();
    barsStale_ = true;
    SettleSoon();
    if (change.last == kToTheEnd && model_.Marks().changeBars) UpdateMargin(); // lines above may be as they were again
    if (change.scrolled)
        viewport()->update();
    else
        UpdateLines(std::min(first, change.first), std::max(last, change.last));
    scanTimer_.start(0);
}

void SourceViewWidget::TextReset()
{
    glide_.Stop();
    LightsStale();
    scrollMarks_->Stale();
    underlines_.Clear();
    notes_.Clear();
    changed_ = {};
    cache_.Clear();
    geometry_.ScrollToIndex(0);
    geometry_.SetLeft(0);
    UpdateBars();
    viewport()->update();
    scanTimer_.start(0);
    forTools_.TextReset();
}

void SourceViewWidget::LinesRepaint(int32_t first, int32_t last)
{
    cache_.Invalidate(first, last);
    scrollMarks_->Stale();
    if (painting_) {
        // Scanning for this paint: what it does not paint itself follows after it.
        scannedFirst_ = scannedLast_ < 0 ? first : std::min(scannedFirst_, first);
        scannedLast_ = std::max(scannedLast_, last);
    } else if (changed_.first >= 0) {
        ShowChange(first, last);
    } else {
        UpdateLines(first, last);
    }
}

void SourceViewWidget::FoldingChanged()
{
    glide_.Stop();
    scrollMarks_->Stale();
    geometry_.TextMoved(nullptr);
    UpdateBars();
    viewport()->update();
}

void SourceViewWidget::ModifiedChanged(bool /*modified*/)
{
    if (!model_.Marks().changeBars) return;
    UpdateMargin();
    scrollMarks_->Stale();
}

void SourceViewWidget::UpdateMargin()
{
    viewport()->update(0, 0, static_cast<int>(geometry_.Margin().width) + 1, viewport()->height());
}

// Lights

void SourceViewWidget::LightsStale()
{
    lights_.Stale();
    if (!model_.Marks().matches && lights_.Name().empty()) return;
    // With each key: a timer that runs is left alone.
    if (nameTimer_.isActive())
        nameMoved_ = true;
    else
        nameTimer_.start(kNameRests);
}

void SourceViewWidget::TakeName()
{
    if (std::exchange(nameMoved_, false)) return nameTimer_.start(kNameRests);
    if (!lights_.TakeName()) return;
    scrollMarks_->SetName(lights_.Name());
    viewport()->update();
}

void SourceViewWidget::SetUnderlines(std::vector<Underline> underlines)
{
    const auto changed = underlines_.Set(std::move(underlines));
    // Also where none has changed: they have moved with the text, which the bar does not follow.
    TellBar();
    if (changed) UpdateLines(changed->first, changed->second);
}

void SourceViewWidget::SetMarkedLines(std::vector<int32_t> lines)
{
    const auto changed = underlines_.SetMarked(std::move(lines));
    if (!changed) return;
    TellBar();
    UpdateLines(changed->first, changed->second);
}

void SourceViewWidget::TellBar()
{
    scrollMarks_->SetFindings(ScrollMarks::Kind::Error, underlines_.Lines(Severity::Error));
    scrollMarks_->SetFindings(ScrollMarks::Kind::Warning, underlines_.Lines(Severity::Warning));
}

void SourceViewWidget::SetNotes(std::vector<MarginNote> notes)
{
    const int32_t columns = notes_.Columns();
    notes_.Set(std::move(notes));
    if (notes_.Columns() == columns) return UpdateMargin();
    geometry_.SetNoteColumns(notes_.Columns());
    AppearanceChanged();
}

void SourceViewWidget::UpdateLines(int32_t first, int32_t last)
{
    geometry_.ForEach(0, viewport()->height(), [&](int32_t line, qreal y) {
        if (line < first || line > last) return;
        QRectF row(0, y, viewport()->width(), geometry_.HeightOf(line));
        viewport()->update(row.toAlignedRect());
    });
    if (last >= document_.LineCount()) {
        // Lines may have gone: what they leave behind the end is cleared too.
        int32_t bottom = document_.VisibleLine(document_.VisibleCount() - 1);
        if (std::optional<qreal> y = geometry_.TopOf(bottom)) {
            QRectF rest(0, *y, viewport()->width(), viewport()->height() - *y);
            viewport()->update(rest.toAlignedRect());
        }
    }
}

// Painting

void SourceViewWidget::paintEvent(QPaintEvent* event)
{
    QRectF dirty = event->rect();
    BuildColors();
    if (std::exchange(caretWanted_, false)) { // painted without a word before: the bars follow after it
        auto old = geometry_.TopPlace();
        geometry_.Reveal(model_.Caret(), model_.CaretBeyond());
        if (!(old == geometry_.TopPlace())) viewport()->update();
        barsStale_ = true;
    }
    painting_ = true;
    ScanVisible(dirty);
    const std::vector<int32_t> lit = lights_.Refresh(viewport()->height());
    {
        QPainter painter(viewport());
        painter.setClipRegion(event->region());
        painter.fillRect(dirty, colors_.base);
        lights_.PaintBehind(painter, dirty);
        PaintText(painter, dirty);
        PaintMargin(painter, dirty);
        lights_.PaintChanges(painter, dirty);
        underlines_.PaintMargin(painter, dirty);
        if (dirty.left() < geometry_.Margin().notes) notes_.Paint(painter, dirty);
        PaintCarets(painter);
    }
    painting_ = false;
    int32_t first = std::exchange(scannedFirst_, 0);
    int32_t last = std::exchange(scannedLast_, -1);
    geometry_.ForEach(0, viewport()->height(), [&](int32_t line, qreal y) {
        QRectF row(0, y, viewport()->width(), geometry_.HeightOf(line));
        if (line >= first && line <= last && !dirty.intersects(row)) viewport()->update(row.toAlignedRect());
    });
    for (int32_t line : lit) UpdateLines(line, line);
    if (!scanTimer_.isActive()) scanTimer_.start(0);
}

void SourceViewWidget::ScanVisible(const QRectF& dirty)
{
    geometry_.ForEach(dirty.top(), dirty.bottom(), [&](int32_t line, qreal) { cache_.Styled(line); });
}

PaintedLine SourceViewWidget::Describe(int32_t line, qreal y, const QRectF& clip)
{
    PaintedLine painted;
    painted.entry = &cache_.Styled(line);
    painted.text = cache_.ShownText(line);
    painted.origin = {geometry_.TextX(), y};
    painted.clip = clip;
    painted.collapsed = document_.BlockAt(line).IsCollapsed();
    DescribeSelections(line, painted);
    return painted;
}

void SourceViewWidget::PaintText(QPainter& painter, const QRectF& dirty)
{
    QRectF area = dirty;
    area.setLeft(std::max(area.left(), geometry_.Margin().width));
    if (area.isEmpty()) return;
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    geometry_.ForEach(area.top(), area.bottom(),
                      [&](int32_t line, qreal y) { linePainter_.Paint(painter, Describe(line, y, area)); });
    lights_.PaintBlanks(painter, area);
    underlines_.PaintWaves(painter, area);
    painter.restore();
}

void SourceViewWidget::PaintMargin(QPainter& painter, const QRectF& dirty)
{
    if (dirty.left() >= geometry_.Margin().width) return;
    geometry_.ForEach(dirty.top(), dirty.bottom(), [&](int32_t line, qreal y) {
        MarginLine margin;
        margin.line = line;
        margin.y = y;
        margin.height = geometry_.HeightOf(line);
        margin.bookmark = document_.HasBookmark(line);
        margin.block = document_.BlockAt(line);
        margin.current = line == model_.Caret().line;
        margin.wrong = underlines_.IsMarked(line);
        marginPainter_.Paint(painter, geometry_.Margin(), margin);
    });
    marginPainter_.PaintSeparator(painter, geometry_.Margin(), dirty.top(), dirty.bottom());
}

void SourceViewWidget::ShowDropCaret(std::optional<Position> at)
{
    for (const std::optional<Position>& place : {std::exchange(dropCaret_, at), at}) {
        if (place) UpdateLines(place->line, place->line);
    }
}

void SourceViewWidget::ScanIdle()
{
    const int32_t before = document_.ScannedTo();
    if (document_.ScanSlice(kScanSlice)) return scanTimer_.start(0);
    if (document_.ScannedTo() == before || !model_.Marks().matches) return;
    lights_.Stale(); // a block's end may be known now
    UpdateLines(model_.CaretLine(), model_.CaretLine());
}

} // namespace nib
