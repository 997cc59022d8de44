#include "text/widget/Underlines.h"

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

constexpr int kThick = 2;  ///< of a wave's line
constexpr int kAcross = 2; ///< of one of its steps
constexpr int kBar = 3;    ///< in the margin
/// Nobody looks at more of one wave.
constexpr qreal kLongest = 8000;

bool BeforeLine(const Underline& underline, int32_t line)
{
    return underline.range.start.line < line;
}

} // namespace

QColor Underlines::ColorOf(Severity severity) const
{
    switch (severity) {
    case Severity::Error: return colors_.hidden;
    case Severity::Warning: return colors_.unsaved;
    default: return colors_.faint;
    }
}

std::optional<std::pair<int32_t, int32_t>> Underlines::Set(std::vector<Underline> underlines)
{
    all_.swap(underlines);
    const auto [a, b] = std::mismatch(all_.begin(), all_.end(), underlines.begin(), underlines.end());
    if (a == all_.end() && b == underlines.end()) return std::nullopt;
    const auto lines = [](auto from, const auto& in) {
        return from == in.end() ? std::pair(INT32_MAX, -1)
                                : std::pair(from->range.start.line, in.back().range.start.line);
    };
    const auto now = lines(a, all_);
    const auto before = lines(b, underlines);
    return std::pair(std::min(now.first, before.first), std::max(now.second, before.second));
}

std::optional<std::pair<int32_t, int32_t>> Underlines::SetMarked(std::vector<int32_t> lines)
{
    if (lines == marked_) return std::nullopt;
    marked_.swap(lines);
    lines.insert(lines.end(), marked_.begin(), marked_.end());
    const auto [first, last] = std::minmax_element(lines.begin(), lines.end());
    return std::pair(*first, *last);
}

void Underlines::Follow(const TextChange& change)
{
    std::erase_if(marked_, [&](int32_t& marked) {
        const std::optional<int32_t> line = marked < change.start.line ? marked : change.LineAfter(marked);
        marked = line.value_or(0);
        return !line;
    });
    const auto first =
        std::partition_point(all_.begin(), all_.end(), [&](const Underline& u) { return u.range.end < change.start; });
    std::for_each(first, all_.end(), [&](Underline& underline) {
        TextRange& range = underline.range;
        range = {change.Map(range.start), change.Map(range.end, true)};
        if (range.end < range.start || range.end.line != range.start.line) range.end = range.start;
    });
    if (change.IsScattered())
        std::stable_sort(first, all_.end(),
                         [](const Underline& a, const Underline& b) { return a.range.start < b.range.start; });
}

std::vector<int32_t> Underlines::Lines(Severity severity) const
{
    std::vector<int32_t> lines;
    for (const Underline& underline : all_) {
        const int32_t line = underline.range.start.line;
        if (underline.severity == severity && (lines.empty() || lines.back() != line)) lines.push_back(line);
    }
    if (severity != Severity::Error || marked_.empty()) return lines;
    std::vector<int32_t> both;
    std::set_union(lines.begin(), lines.end(), marked_.begin(), marked_.end(), std::back_inserter(both));
    return both;
}

template <typename Visit>
void Underlines::ForEachInSight(const QRectF& area, Visit&& visit)
{
    if (all_.empty()) return;
    auto next = all_.end();
    bool begun = false;
    geometry_.ForEach(area.top(), area.bottom(), [&](int32_t line, qreal y) {
        if (!std::exchange(begun, true)) next = std::lower_bound(all_.begin(), all_.end(), line, BeforeLine);
        while (next != all_.end() && BeforeLine(*next, line)) ++next; // in lines that are hidden
        for (; next != all_.end() && next->range.start.line == line; ++next) visit(*next, y);
    });
}

void Underlines::AddWave(const Underline& underline, qreal y)
{
    const LineEntry& entry = cache_.Styled(underline.range.start.line);
    const LineLayout& layout = entry.layout;
    const int32_t from = entry.ToShown(underline.range.start.col);
    const int32_t to = std::max(entry.ToShown(underline.range.end.col), from);
    std::vector<QRect>& rects = waves_[static_cast<size_t>(underline.severity)];
    const int32_t first = layout.RowOf(from);
    for (int32_t row = first; row < layout.RowCount() && (row == first || layout.RowStart(row) < to); ++row) {
        const qreal a = layout.XIn(row, std::max(from, layout.RowStart(row)));
        const qreal b = layout.XIn(row, std::min(to, layout.RowEnd(row)));
        const qreal wide = std::clamp(std::abs(b - a), metrics_.CharWidth(), kLongest);
        const auto left = static_cast<int>(std::lround(geometry_.TextX() + std::min(a, b)));
        const auto right = left + static_cast<int>(std::lround(wide));
        const auto low = static_cast<int>(y + (row + 1) * metrics_.LineHeight()) - kThick;
        for (int x = left; x < right; x += kAcross)
            rects.emplace_back(x, low - ((x - left) / kAcross % 2 != 0 ? 0 : kThick - 1), std::min(kAcross, right - x),
                               kThick);
    }
}

void Underlines::PaintWaves(QPainter& painter, const QRectF& area)
{
    ForEachInSight(area, [&](const Underline& underline, qreal y) { AddWave(underline, y); });
    painter.setPen(Qt::NoPen);
    for (const Severity severity : {Severity::Hint, Severity::Warning, Severity::Error}) {
        std::vector<QRect>& rects = waves_[static_cast<size_t>(severity)];
        if (rects.empty()) continue;
        painter.setBrush(ColorOf(severity));
        painter.drawRects(rects.data(), static_cast<int>(rects.size()));
        rects.clear();
    }
}

void Underlines::PaintMargin(QPainter& painter, const QRectF& area)
{
    if (geometry_.Margin().width <= 0) return;
    int32_t painted = -1;
    Severity worst = Severity::Hint;
    ForEachInSight(area, [&](const Underline& underline, qreal y) {
        const int32_t line = underline.range.start.line;
        if (line == painted && underline.severity >= worst) return;
        painted = line;
        worst = underline.severity;
        const auto top = static_cast<int>(std::lround(y));
        painter.fillRect(0, top + 1, kBar, static_cast<int>(geometry_.HeightOf(line)) - 2, ColorOf(worst));
    });
}

} // namespace nib
