#include "text/widget/ViewLights.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nib {

namespace {

/// Lines that are looked at for the indent round an empty one.
constexpr int32_t kLookAround = 200;

/// Half the height of the notch where lines have gone.
constexpr int kNotch = 3;

QRect Whole(const QRectF& rect)
{
    const int left = static_cast<int>(std::lround(rect.left()));
    const int top = static_cast<int>(std::lround(rect.top()));
    return {left, top, static_cast<int>(std::lround(rect.right())) - left,
            static_cast<int>(std::lround(rect.bottom())) - top};
}

} // namespace

std::vector<TextRange> ViewLights::WordsAtCaret()
{
    block_.reset();
    if (!model_.Marks().matches || model_.HasSelection()) return {};
    if (const auto brackets = MatchBrackets(Document(), model_.Caret())) return {brackets->first, brackets->second};
    block_ = MatchBlock(Document(), model_.Caret());
    return block_ ? block_->words : std::vector<TextRange>();
}

std::vector<int32_t> ViewLights::Refresh(qreal height)
{
    if (!std::exchange(stale_, false)) return {};
    const std::optional<BlockMatch> oldBlock = std::exchange(block_, std::nullopt);
    const std::vector<TextRange> old = std::exchange(words_, WordsAtCaret());
    std::vector<int32_t> lines;
    if (old == words_) return lines;
    for (const std::vector<TextRange>* ranges : {&old, &std::as_const(words_)})
        for (const TextRange& range : *ranges) lines.push_back(range.start.line);
    // Between the ends of a block some of its words may be in sight.
    const auto addBlock = [&](const std::optional<BlockMatch>& block) {
        if (!block) return;
        geometry_.ForEach(0, height, [&](int32_t line, qreal) {
            const auto& tokens = cache_.Measured(line).tokens;
            if (std::any_of(tokens.begin(), tokens.end(), [](auto& t) { return t.role == WordRole::Continues; }))
                lines.push_back(line);
        });
    };
    addBlock(oldBlock);
    addBlock(block_);
    return lines;
}

bool ViewLights::TakeName()
{
    const TextRange selection = model_.Selection();
    Text name = model_.Marks().matches ? NameAt(Document(), model_.Caret()) : Text();
    if (model_.HasSelection() && !EqualsNoCase(Document().GetRange(selection.start, selection.end), name)) name.clear();
    if (EqualsNoCase(name, name_)) return false;
    name_ = std::move(name);
    occurrences_.reset();
    if (!name_.empty()) occurrences_.emplace(name_);
    return true;
}

void ViewLights::Flush(QPainter& painter, const QColor& color)
{
    if (rects_.empty()) return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRects(rects_.data(), static_cast<int>(rects_.size()));
    rects_.clear();
}

void ViewLights::PaintBehind(QPainter& painter, const QRectF& area)
{
    const ViewMarks& marks = model_.Marks();
    const int32_t caretLine = model_.Caret().line;
    if (marks.currentLine && !model_.HasSelection()) {
        geometry_.ForEach(area.top(), area.bottom(), [&](int32_t line, qreal y) {
            if (line != caretLine) return;
            painter.fillRect(Whole({area.left(), y, area.width(), geometry_.HeightOf(line)}), colors_.currentLine);
        });
    }
    QRectF text = area;
    text.setLeft(std::max(area.left(), geometry_.Margin().width));
    if (text.isEmpty()) return;
    painter.save();
    painter.setClipRect(text, Qt::IntersectClip);
    if (marks.indentGuides) PaintGuides(painter, text);
    if (marks.matches && (occurrences_ || !words_.empty())) {
        geometry_.ForEach(text.top(), text.bottom(), [&](int32_t line, qreal y) { PaintMatches(painter, line, y); });
    }
    // Over the other places of a name, which a hit often is.
    if (Document().Lit().pattern) PaintFound(painter, text);
    painter.restore();
}

int32_t ViewLights::IndentAt(int32_t line)
{
    const UnitSpan units = Document().LineUnits(line);
    size_t at = 0;
    while (at < std::min<size_t>(units.length, kLongestRead) && units[at] == u' ') ++at;
    return at < units.length ? static_cast<int32_t>(at) : -1;
}

/// Of an empty line the lesser of those round it, so that guides go on through it.
int32_t ViewLights::GuideIndent(int32_t line)
{
    if (const int32_t indent = IndentAt(line); indent >= 0) return indent;
    if (std::exchange(blankLine_, line) == line - 1 && line > 0) return blankIndent_;
    const auto seek = [&](int32_t step) {
        const int32_t end = std::clamp(line + step * kLookAround, -1, Document().LineCount());
        int32_t indent = -1;
        for (int32_t at = line; at != end && indent < 0; at += step) indent = IndentAt(at);
        return indent;
    };
    return blankIndent_ = std::min(seek(-1), seek(1));
}

void ViewLights::PaintGuides(QPainter& painter, const QRectF& area)
{
    const int32_t first = model_.Marks().firstGuide;
    const qreal cell = metrics_.CharWidth();
    const qreal left = area.left() - geometry_.TextX() - cell;
    blankLine_ = -1;
    geometry_.ForEach(area.top(), area.bottom(), [&](int32_t line, qreal y) {
        const int32_t indent = GuideIndent(line);
        const auto height = static_cast<int>(geometry_.HeightOf(line));
        for (int32_t column = first; column < indent; column += model_.TabSize()) {
            if (column * cell < left) continue;
            const qreal x = geometry_.TextX() + column * cell;
            if (x > area.right()) break;
            rects_.emplace_back(static_cast<int>(x), static_cast<int>(std::lround(y)), 1, height);
        }
    });
    Flush(painter, colors_.guide);
}

void ViewLights::PaintFound(QPainter& painter, const QRectF& area)
{
    const LitText& lit = Document().Lit();
    // An expression that takes too long is given up, and whoever searches for it says so.
    IgnoringErrors([&] {
        geometry_.ForEach(area.top(), area.bottom(), [&](int32_t line, qreal y) {
            if (Document().LineLength(line) > kLongestRead) return;
            const TextView text = Document().LineText(line, scratch_);
            lit.pattern->ForEach(text, [&](ColumnRange hit) {
                if (hit.first == hit.last || !lit.Holds(line, hit)) return;
                const LineEntry& entry = cache_.Styled(line);
                PaintRange(painter, entry, y, {entry.ToShown(hit.first), entry.ToShown(hit.last)}, colors_.found);
            });
        });
    });
}

void ViewLights::PaintMatches(QPainter& painter, int32_t line, qreal y)
{
    const LineEntry& entry = cache_.Styled(line);
    if (occurrences_ && Document().LineLength(line) <= kLongestRead) {
        occurrences_->InLine(cache_.ShownText(line), entry.tokens,
                             [&](ColumnRange range) { PaintRange(painter, entry, y, range, colors_.occurrence); });
    }
    middles_.clear();
    if (block_) AddMiddles(Document(), *block_, line, entry.tokens, middles_);
    for (const auto* ranges : {&words_, &middles_}) {
        for (const TextRange& range : *ranges) {
            if (range.start.line != line) continue;
            PaintRange(painter, entry, y, {entry.ToShown(range.start.col), entry.ToShown(range.end.col)}, colors_.match,
                       true);
        }
    }
}

void ViewLights::PaintRange(QPainter& painter, const LineEntry& entry, qreal y, ColumnRange range, const QColor& color,
                            bool framed)
{
    const LineLayout& layout = entry.layout;
    for (int32_t row = layout.RowOf(range.first); row < layout.RowCount() && layout.RowStart(row) < range.last; ++row) {
        const qreal from = layout.XIn(row, std::max(range.first, layout.RowStart(row)));
        const qreal to = layout.XIn(row, std::min(range.last, layout.RowEnd(row)));
        const QRectF box(geometry_.TextX() + std::min(from, to), y + row * metrics_.LineHeight(), std::abs(to - from),
                         metrics_.LineHeight());
        const QRect whole = Whole(box);
        if (framed) painter.fillRect(whole, colors_.matchFrame);
        painter.fillRect(framed ? whole.adjusted(1, 1, -1, -1) : whole, color);
    }
}

void ViewLights::PaintBlanks(QPainter& painter, const QRectF& area)
{
    if (!model_.Marks().visibleBlanks) return;
    const qreal cell = metrics_.CharWidth();
    const int side = std::max(static_cast<int>(std::lround(cell * 0.2)), 1);
    geometry_.ForEach(area.top(), area.bottom(), [&](int32_t line, qreal y) {
        if (Document().LineLength(line) > kLongestRead) return;
        const LineLayout& layout = cache_.Styled(line).layout;
        const TextView text = cache_.ShownText(line);
        const bool plain = !layout.Shaped() && layout.Cells().Plain();
        for (int32_t row = 0; row < layout.RowCount(); ++row) {
            const qreal left = geometry_.TextX();
            const int32_t start = layout.RowStart(row);
            int32_t column = start;
            int32_t end = layout.RowEnd(row);
            if (plain) { // as far as it is in sight
                column += std::max(static_cast<int32_t>((area.left() - left) / cell), 0);
                end = std::min(end, start + static_cast<int32_t>((area.right() - left) / cell) + 1);
            }
            const auto middle = static_cast<int>(y + (row + 0.5) * metrics_.LineHeight()) - side / 2;
            for (; column < end; ++column) {
                if (text[static_cast<size_t>(column)] != u' ') continue;
                const auto [from, width] =
                    plain ? LineLayout::Span{(column - start) * cell, cell} : layout.SpanOf(row, column);
                rects_.emplace_back(static_cast<int>(left + from + width / 2) - side / 2, middle, side, side);
            }
        }
    });
    Flush(painter, colors_.blank);
}

void ViewLights::PaintChanges(QPainter& painter, const QRectF& area)
{
    const MarginPlaces& margin = geometry_.Margin();
    if (!model_.Marks().changeBars || margin.width <= 0) return;
    // Round the line that parts the margin from the text.
    constexpr int wide = 3;
    const int left = static_cast<int>(std::floor(margin.select)) - 1;
    const auto colorOf = [&](LineChange change) {
        return change == LineChange::Saved ? colors_.saved : colors_.unsaved;
    };
    geometry_.ForEach(area.top() - kNotch, area.bottom() + kNotch, [&](int32_t line, qreal y) {
        const LineMarks marks = Document().ChangesAt(line);
        const auto top = static_cast<int>(std::lround(y));
        if (marks.line != LineChange::None)
            painter.fillRect(left, top, wide, static_cast<int>(geometry_.HeightOf(line)), colorOf(marks.line));
        // Nothing is left to stand beside: a notch where it was.
        if (marks.goneAbove != LineChange::None)
            for (int row = -kNotch; row <= kNotch; ++row)
                painter.fillRect(left, top + row, wide + kNotch - std::abs(row), 1, colorOf(marks.goneAbove));
    });
}

} // namespace nib
