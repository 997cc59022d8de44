#include "compare/QtComparePainter.h"

#include "platform/qt/QtText.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

constexpr std::array<Beside, 2> kSides{Beside::Left, Beside::Right};

QColor Mix(const QColor& a, const QColor& b, double share)
{
    const auto mix = [&](float x, float y) { return static_cast<float>(x * (1 - share) + y * share); };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

bool IsDark(const QColor& ground)
{
    return Contrast(ground, Qt::white) > Contrast(ground, Qt::black);
}

} // namespace

QRectF ComparePlaces::Arrow(Beside into, qreal top, qreal height) const
{
    const qreal side = std::min(gutter / 2 - 2, height);
    const qreal left = into == Beside::Left ? PaneWidth() + 2 : PaneWidth() + gutter - 2 - side;
    return {left, top + (height - side) / 2, side, side};
}

QtComparePainter::QtComparePainter(CompareModel& model) : model_(model)
{
    for (Beside side : kSides)
        panes_[static_cast<size_t>(side)] = std::make_unique<Pane>(model.Side(side).Lines(), metrics_);
}

void QtComparePainter::BuildTint(Tint& tint, const QColor& hue, bool dark) const
{
    const QColor& ground = Ground();
    tint.row = Mix(ground, hue, dark ? 0.24 : 0.13);
    tint.words = Mix(ground, hue, dark ? 0.55 : 0.36);
    tint.edge = Legible(hue, ground, 3);
}

void QtComparePainter::Build(const QPalette& palette)
{
    palette_ = palette;
    metrics_.Build(model_.Side(Beside::Right).View().Font(), 0);
    signs_.Build(metrics_.StyledFont(0), metrics_.Ascent());
    for (Beside side : kSides) {
        Pane& pane = *panes_[static_cast<size_t>(side)];
        pane.plain.Build(palette, model_.Side(side).View());
        pane.tinted.Build(palette, model_.Side(side).View());
        pane.cache.Clear();
    }
    const bool dark = IsDark(Ground());
    BuildTint(tints_[0], QColor(0x1F, 0x6F, 0xEB), dark);
    BuildTint(tints_[1], QColor(0xD7, 0x3A, 0x49), dark);
    BuildTint(tints_[2], QColor(0x22, 0x86, 0x3A).lighter(dark ? 130 : 100), dark);
    // Readable on words is readable on rows.
    for (const auto& pane : panes_) pane->tinted.base = tints_[0].words;
}

void QtComparePainter::Forget()
{
    for (const auto& pane : panes_) pane->cache.Clear();
}

ComparePlaces QtComparePainter::Places(qreal width) const
{
    ComparePlaces places;
    places.gutter = std::round(std::max(metrics_.CharWidth() * 6, 2 * metrics_.LineHeight() + 8));
    places.width = std::max(width, places.gutter + 4 * metrics_.CharWidth());
    for (Beside side : kSides) {
        int32_t digits = 3;
        for (int32_t lines = model_.Side(side).Lines().LineCount(); lines >= 1000; lines /= 10) ++digits;
        places.margin[static_cast<size_t>(side)] = std::round(metrics_.CharWidth() * (digits + 3));
    }
    return places;
}

QColor QtComparePainter::ChangeColor(BlockKind kind) const
{
    return tints_[kind == BlockKind::LeftOnly ? 1 : kind == BlockKind::RightOnly ? 2 : 0].edge;
}

int32_t QtComparePainter::LineOf(int32_t row, Beside side) const
{
    const CompareRow& shown = model_.Rows().At(row);
    return side == Beside::Left ? shown.left : shown.right;
}

const QtComparePainter::Tint* QtComparePainter::TintOf(const CompareRow& row, const LineBlock& block) const
{
    if (!block.IsChange()) return nullptr;
    return &tints_[row.right < 0 ? 1 : row.left < 0 ? 2 : 0];
}

void QtComparePainter::Paint(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look)
{
    const CompareRow& row = model_.Rows().At(look.row);
    if (row.folded > 0) {
        PaintFold(painter, places, look);
    } else {
        const Tint* tint = TintOf(row, model_.Rows().BlockOf(look.row));
        for (Beside side : kSides) PaintPane(painter, places, look, side, tint);
        PaintGutter(painter, places, look, tint);
    }
    if (!look.current) return;
    painter.setPen(QPen(panes_[0]->plain.highlight, 1));
    painter.setBrush(Qt::NoBrush);
    const QRectF frame = row.folded > 0 ? QRectF(0, look.top, places.width, LineHeight())
                                        : places.Pane(look.side, look.top, LineHeight());
    painter.drawRect(frame.adjusted(0.5, 0.5, -1.5, -0.5));
}

void QtComparePainter::PaintPane(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look,
                                 Beside side, const Tint* tint)
{
    const QRectF area = places.Pane(side, look.top, LineHeight());
    const QColor& ground = Ground();
    if (LineOf(look.row, side) < 0) {
        painter.fillRect(area, Mix(ground, panes_[0]->plain.text, 0.04));
        painter.fillRect(area, QBrush(Mix(ground, panes_[0]->plain.text, 0.16), Qt::BDiagPattern));
    } else {
        painter.fillRect(area, tint ? tint->row : ground);
        painter.save();
        painter.setClipRect(area, Qt::IntersectClip);
        const qreal margin = places.margin[static_cast<size_t>(side)];
        PaintText(painter, area.adjusted(margin, 0, 0, 0), look, side, tint);
        PaintMargin(painter, {area.left(), area.top(), margin, area.height()}, look, side);
        painter.restore();
    }
    if (look.ofCurrent) painter.fillRect(QRectF(area.left(), area.top(), 3, area.height()), tint->edge);
}

void QtComparePainter::PaintText(QPainter& painter, const QRectF& area, const CompareRowLook& look, Beside side,
                                 const Tint* tint)
{
    Pane& pane = *panes_[static_cast<size_t>(side)];
    const int32_t line = LineOf(look.row, side);
    const LineEntry& entry = pane.cache.Styled(line);
    PaintedLine painted;
    painted.entry = &entry;
    painted.text = pane.cache.ShownText(line);
    painted.origin = {area.left() - look.left, area.top()};
    painted.clip = area;
    widest_ = std::max(widest_, entry.layout.Width());
    painter.setClipRect(area, Qt::IntersectClip);
    if (tint == &tints_[0]) {
        const WordDifferences& words = model_.WordsOf(look.row);
        for (const ColumnRange& range : side == Beside::Left ? words.left : words.right) {
            const auto length = static_cast<int32_t>(painted.text.size());
            const qreal from = entry.layout.XIn(0, std::min(range.first, length));
            const qreal to = entry.layout.XIn(0, std::min(range.last, length));
            painter.fillRect(
                QRectF(painted.origin.x() + std::min(from, to), area.top(), std::abs(to - from), area.height()),
                tint->words);
        }
    }
    LinePainter(metrics_, tint ? pane.tinted : pane.plain, signs_).Paint(painter, painted);
}

void QtComparePainter::PaintMargin(QPainter& painter, const QRectF& area, const CompareRowLook& look, Beside side)
{
    painter.setClipRect(area, Qt::ReplaceClip);
    const CompareRow& row = model_.Rows().At(look.row);
    const LineBlock& block = model_.Rows().BlockOf(look.row);
    const ScreenColors& colors = panes_[static_cast<size_t>(side)]->plain;
    const qreal baseline = area.top() + metrics_.Ascent();
    painter.setFont(metrics_.StyledFont(0));
    const Tint* tint = TintOf(row, block);
    painter.setPen(Legible(look.ofCurrent ? colors.strong : colors.faint, tint ? tint->row : Ground(), 3));
    const QString number = QString::number(LineOf(look.row, side) + 1);
    const qreal width = QFontMetricsF(metrics_.StyledFont(0)).horizontalAdvance(number);
    painter.drawText(QPointF(area.right() - 1.5 * CharWidth() - width, baseline), number);
    if (!block.IsChange()) return;
    // Not by its colour alone.
    const QChar sign = row.left >= 0 && row.right >= 0 ? QChar(0x2260) : QLatin1Char(side == Beside::Left ? '-' : '+');
    painter.setPen(Legible(tint->edge, tint->row));
    painter.drawText(QPointF(area.left() + 6, baseline), sign);
}

QString QtComparePainter::FoldText(int32_t folded)
{
    return tr("%1 lines alike").arg(QLocale().toString(folded));
}

void QtComparePainter::PaintFold(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look)
{
    const ScreenColors& colors = panes_[0]->plain;
    const QRectF area(0, look.top, places.width, LineHeight());
    painter.fillRect(area, Mix(Ground(), colors.text, 0.07));
    painter.setPen(Mix(Ground(), colors.text, 0.18));
    painter.drawLine(QPointF(0, look.top + 0.5), QPointF(places.width, look.top + 0.5));
    painter.drawLine(QPointF(0, look.top + LineHeight() - 0.5), QPointF(places.width, look.top + LineHeight() - 0.5));
    painter.setFont(metrics_.StyledFont(0));
    painter.setPen(Legible(colors.faint, Mix(Ground(), colors.text, 0.07)));
    const QString text = FoldText(model_.Rows().At(look.row).folded);
    for (Beside side : kSides)
        painter.drawText(places.Pane(side, look.top, LineHeight()), Qt::AlignCenter,
                         QChar(0x22EF) + QLatin1Char(' ') + text);
}

void QtComparePainter::PaintGutter(QPainter& painter, const ComparePlaces& places, const CompareRowLook& look,
                                   const Tint* tint)
{
    const QRectF area = places.Gutter(look.top, LineHeight());
    const ScreenColors& colors = panes_[0]->plain;
    painter.fillRect(area, tint ? tint->row : Mix(Ground(), colors.text, 0.04));
    painter.setPen(colors.line);
    painter.drawLine(area.topLeft() + QPointF(0.5, 0), area.bottomLeft() + QPointF(0.5, 0));
    painter.drawLine(area.topRight() - QPointF(0.5, 0), area.bottomRight() - QPointF(0.5, 0));
    const int32_t change = tint ? model_.Rows().ChangeAt(look.row) : -1;
    if (change < 0 || model_.Rows().RowsOf(change).first != look.row) return;
    for (Beside into : kSides)
        if (model_.Side(into).CanEdit())
            PaintArrow(painter, places.Arrow(into, look.top, LineHeight()), into, look.hot == into);
}

void QtComparePainter::PaintArrow(QPainter& painter, const QRectF& place, Beside into, bool hot) const
{
    const ScreenColors& colors = panes_[0]->plain;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hot ? colors.highlight : Mix(Ground(), colors.text, 0.35), 1));
    painter.setBrush(hot ? colors.highlight : Ground());
    painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    const qreal to = into == Beside::Right ? 1 : -1;
    const QPointF centre = place.center();
    const qreal arm = place.width() * 0.26;
    painter.setPen(QPen(hot ? colors.highlightedText : colors.text, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawLine(centre - QPointF(to * arm, 0), centre + QPointF(to * arm, 0));
    painter.drawLine(centre + QPointF(to * arm, 0), centre + QPointF(to * arm * 0.2, -arm * 0.8));
    painter.drawLine(centre + QPointF(to * arm, 0), centre + QPointF(to * arm * 0.2, arm * 0.8));
    painter.restore();
}

} // namespace nib
