#include "shell/menus/QtStatusPanels.h"

#include "platform/qt/QtText.h"

#include <QEvent>
#include <QGlyphRun>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStatusBar>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace nib {

namespace {

constexpr TextView kPlacePanel{u"Place"};
constexpr int kRoomAround = 12;
/// The others need theirs too.
constexpr int kWidestInCharacters = 28;

QColor InkOn(const QColor& color)
{
    constexpr double kHalf = 0.179; // where black and white can be read equally well
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const double light =
        0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    return light > kHalf ? Qt::black : Qt::white;
}

} // namespace

QtStatusPanel::QtStatusPanel(QWidget* parent) : QLabel(parent)
{
    setAutoFillBackground(true); // so that nothing below it is painted with it
}

void QtStatusPanel::SetClicked(std::function<void()> clicked)
{
    clicked_ = std::move(clicked);
    setFocusPolicy(clicked_ ? Qt::TabFocus : Qt::NoFocus);
}

void QtStatusPanel::SetColor(const QColor& color)
{
    if (color == color_) return;
    color_ = color;
    update();
}

void QtStatusPanel::mousePressEvent(QMouseEvent* event)
{
    if (clicked_ && event->button() == Qt::LeftButton) return clicked_();
    QLabel::mousePressEvent(event);
}

void QtStatusPanel::keyPressEvent(QKeyEvent* event)
{
    const bool opens = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return;
    if (clicked_ && opens) return clicked_();
    QLabel::keyPressEvent(event);
}

bool QtStatusPanel::event(QEvent* event)
{
    const QEvent::Type type = event->type();
    const bool light =
        type == QEvent::Enter || type == QEvent::Leave || type == QEvent::FocusIn || type == QEvent::FocusOut;
    if (clicked_ && light) update();
    return QLabel::event(event);
}

bool QtStatusPanel::IsLit() const
{
    return clicked_ && (underMouse() || hasFocus());
}

void QtStatusPanel::PaintBehind(QPainter& painter)
{
    if (color_.isValid()) painter.fillRect(rect(), color_);
    if (!IsLit()) return;
    QColor light = color_.isValid() ? InkOn(color_) : palette().color(QPalette::Highlight);
    light.setAlpha(60);
    painter.fillRect(rect(), light);
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
    const QString wanted = metrics.elidedText(text, Qt::ElideRight, metrics.averageCharWidth() * kWidestInCharacters);
    if (metrics.horizontalAdvance(wanted) <= metrics.horizontalAdvance(widest_)) return;
    widest_ = wanted;
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
    if (clicked_) PaintBehind(painter);
    if (PaintQuickly(painter)) return;
    // Where room is plenty nothing need be measured.
    const bool fits = fontMetrics().averageCharWidth() * shown_.size() < width() / 2;
    painter.setPen(Ink());
    painter.drawText(rect().adjusted(Inset(), 0, -Inset(), 0), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fits ? shown_ : fontMetrics().elidedText(shown_, Qt::ElideRight, width() - 2 * Inset()));
}

QColor QtStatusPanel::Ink() const
{
    if (color_.isValid()) return InkOn(color_);
    return palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole());
}

int QtStatusPanel::Inset() const
{
    return widest_.isEmpty() ? 0 : kRoomAround / 2;
}

bool QtStatusPanel::PaintQuickly(QPainter& painter)
{
    const auto isPlain = [](QChar c) { return c.unicode() >= u' ' && c.unicode() < 0x7F; };
    if (widest_.isEmpty() || !std::all_of(shown_.begin(), shown_.end(), isPlain)) return false;
    if (!glyphs_.isValid()) glyphs_ = QRawFont::fromFont(font());
    const QList<quint32> indexes = glyphs_.glyphIndexesForString(shown_);
    const QList<QPointF> advances = glyphs_.advancesForGlyphIndexes(indexes);
    if (indexes.size() != shown_.size() || indexes.contains(0U) || advances.size() != indexes.size()) return false;
    QPointF at(Inset(), std::round((height() - glyphs_.ascent() - glyphs_.descent()) / 2 + glyphs_.ascent()));
    QList<QPointF> places;
    places.reserve(indexes.size());
    for (const QPointF& advance : advances) {
        places.append(QPointF(std::round(at.x()), at.y()));
        at += advance;
    }
    if (at.x() > width()) return false;
    QGlyphRun run;
    run.setRawFont(glyphs_);
    run.setGlyphIndexes(indexes);
    run.setPositions(places);
    painter.setPen(Ink());
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
    shown->setToolTip(Translated(panel.tip));
    shown->setAccessibleDescription(shown->toolTip());
    if (!panel.tag.empty()) shown->SetClicked([this, &panel, shown] { opened_(panel, *shown); });
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
    const bool opens = !panel.tag.empty();
    const QString caption = panel.key == kPlacePanel ? TranslatedPlace(panel.caption)
                            : opens                  ? Translated(panel.caption)
                                                     : TranslatedText(panel.caption);
    shown.Show(caption);
    // Without a text of its own a screen reader would read nothing, and "LF" alone says little.
    if (opens) {
        shown.SetColor(ToColor(panel.color));
        shown.setAccessibleName(shown.toolTip() + QLatin1String(": ") + caption);
    } else {
        shown.setAccessibleName(caption.isEmpty() ? Translated(panel.tip) : caption);
    }
    const bool stretches = shown.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
    if (!stretches) {
        shown.MakeRoom(TranslatedText(panel.minText));
        shown.MakeRoom(caption);
    }
    shown.setVisible(panel.visible && (stretches || !panel.caption.empty() || !panel.minText.empty()));
}

} // namespace nib
