#include "shell/menus/QtStatusPanels.h"

#include "platform/qt/QtText.h"

#include <QEvent>
#include <QGlyphRun>
#include <QPainter>
#include <QStatusBar>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

constexpr int kRoomAround = 12;

} // namespace

QtStatusPanel::QtStatusPanel(QWidget* parent) : QLabel(parent)
{
    setAutoFillBackground(true); // so that nothing below it is painted with it
}

void QtStatusPanel::Show(const QString& text)
{
    if (text == shown_) return;
    shown_ = text;
    update();
}

void QtStatusPanel::MakeRoom(const QString& text)
{
    if (text.size() <= measured_) return;
    measured_ = text.size();
    const QFontMetrics metrics = fontMetrics();
    if (metrics.horizontalAdvance(text) <= metrics.horizontalAdvance(widest_)) return;
    widest_ = text;
    updateGeometry();
}

QSize QtStatusPanel::sizeHint() const
{
    const int width = widest_.isEmpty() ? 0 : fontMetrics().horizontalAdvance(widest_) + kRoomAround;
    return {width, fontMetrics().height()};
}

void QtStatusPanel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (PaintQuickly(painter)) return;
    // Where room was made, or is plenty, nothing need be measured.
    const bool fits = !widest_.isEmpty() || fontMetrics().averageCharWidth() * shown_.size() < width() / 2;
    style()->drawItemText(&painter, rect(), Qt::AlignVCenter | Qt::AlignLeft, palette(), isEnabled(),
                          fits ? shown_ : fontMetrics().elidedText(shown_, Qt::ElideRight, width()), foregroundRole());
}

bool QtStatusPanel::PaintQuickly(QPainter& painter)
{
    const auto isPlain = [](QChar c) { return c.unicode() >= u' ' && c.unicode() < 0x7F; };
    if (widest_.isEmpty() || !std::all_of(shown_.begin(), shown_.end(), isPlain)) return false;
    if (!glyphs_.isValid()) glyphs_ = QRawFont::fromFont(font());
    const QList<quint32> indexes = glyphs_.glyphIndexesForString(shown_);
    const QList<QPointF> advances = glyphs_.advancesForGlyphIndexes(indexes);
    if (indexes.size() != shown_.size() || indexes.contains(0U) || advances.size() != indexes.size()) return false;
    QPointF at(0, std::round((height() - glyphs_.ascent() - glyphs_.descent()) / 2 + glyphs_.ascent()));
    QList<QPointF> places;
    places.reserve(indexes.size());
    for (const QPointF& advance : advances) {
        places.append(QPointF(std::round(at.x()), at.y()));
        at += advance;
    }
    QGlyphRun run;
    run.setRawFont(glyphs_);
    run.setGlyphIndexes(indexes);
    run.setPositions(places);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    painter.drawGlyphRun({}, run);
    return true;
}

void QtStatusPanel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    glyphs_ = {};
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) updateGeometry();
}

void QtStatusPanels::Add(const MenuTool& panel)
{
    auto* shown = new QtStatusPanel(&bar_);
    shown->setObjectName(ToQString(panel.key));
    shown->setToolTip(ToQString(panel.tip));
    shown->setAccessibleDescription(ToQString(panel.tip));
    if (panels_.empty()) {
        // A long text must not make the window wide.
        shown->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        bar_.addWidget(shown, 1);
    } else {
        bar_.addPermanentWidget(shown);
    }
    panels_[&panel] = shown;
    Change(panel);
}

void QtStatusPanels::Remove(const MenuTool& panel)
{
    auto found = panels_.find(&panel);
    if (found == panels_.end()) return;
    bar_.removeWidget(found->second);
    found->second->deleteLater();
    panels_.erase(found);
}

void QtStatusPanels::Change(const MenuTool& panel)
{
    auto found = panels_.find(&panel);
    if (found == panels_.end()) return;
    QtStatusPanel& shown = *found->second;
    const QString caption = ToQString(panel.caption);
    shown.Show(caption);
    // Without a text of its own a screen reader would read nothing.
    shown.setAccessibleName(caption.isEmpty() ? ToQString(panel.tip) : caption);
    const bool stretches = shown.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
    if (!stretches) {
        shown.MakeRoom(ToQString(panel.minText));
        shown.MakeRoom(caption);
    }
    shown.setVisible(panel.visible && (stretches || !panel.caption.empty() || !panel.minText.empty()));
}

} // namespace nib
