#include "persistence/settings/frmSettingsColors.h"

#include "platform/qt/QtText.h"
#include "text/widget/ScreenColors.h"

#include <QColorDialog>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QStandardItemModel>
#include <QWheelEvent>

namespace nib {

namespace {

constexpr int kShownRows = 20;

QColor ColorOf(int32_t value, const SystemColors& system)
{
    int32_t bits = ResolveColor(value, system);
    return QColor(bits & 0xFF, bits >> 8 & 0xFF, bits >> 16 & 0xFF);
}

int32_t ValueOf(const QColor& color)
{
    return color.red() | color.green() << 8 | color.blue() << 16;
}

QPixmap Swatch(const QColor& color, const QColor& frame, QSize size, qreal ratio)
{
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(color);
    QPainter painter(&picture);
    painter.setPen(frame);
    painter.drawRect(QRectF(QPointF(), size).adjusted(0.5, 0.5, -0.5, -0.5));
    return picture;
}

QStandardItem* HeadingItem(const QString& name, const QFont& font)
{
    auto* item = new QStandardItem(name);
    QFont bold = font;
    bold.setBold(true);
    item->setFont(bold);
    item->setFlags(Qt::NoItemFlags);
    return item;
}

} // namespace

std::optional<int32_t> PaletteColors::Translate(int32_t index) const
{
    QColor color = DesktopColor(palette_, index);
    if (!color.isValid()) return std::nullopt;
    return ValueOf(color);
}

ColorCombo::ColorCombo(std::function<void(int32_t)> chosen) : chosen_(std::move(chosen))
{
    setMaxVisibleItems(kShownRows);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    Fill();
    connect(this, &QComboBox::activated, this, &ColorCombo::Choose);
}

void ColorCombo::Fill()
{
    filling_ = true;
    PaletteColors system(palette());
    rows_ = ColorRows(system);
    int side = fontMetrics().ascent();
    QSize size(side * 2, side);
    setIconSize(size);
    QColor frame = palette().color(QPalette::WindowText);
    auto* items = new QStandardItemModel(this);
    for (const ColorRow& row : rows_) {
        QString name = ToQString(row.name);
        if (color_row::IsHeading(row.value)) {
            items->appendRow(HeadingItem(name, font()));
            continue;
        }
        auto* item = new QStandardItem(name);
        if (row.value != color_row::kCustom)
            item->setIcon(Swatch(ColorOf(row.value, system), frame, size, devicePixelRatioF()));
        items->appendRow(item);
    }
    setModel(items); // which ends the former one
    SetValue(value_);
    filling_ = false;
}

void ColorCombo::SetPreview(QLabel* preview)
{
    preview_ = preview;
    ShowPreview();
}

void ColorCombo::SetValue(int32_t value)
{
    value_ = value;
    setCurrentIndex(static_cast<int>(RowOfColor(rows_, value)));
    ShowPreview();
}

void ColorCombo::ShowPreview()
{
    if (!preview_) return;
    PaletteColors system(palette());
    QPalette painted = preview_->palette();
    painted.setColor(QPalette::Window, ColorOf(value_, system));
    preview_->setPalette(painted);
    QString tip = ToQString(ColorTip(value_, system));
    preview_->setToolTip(tip);
    preview_->setAccessibleName(tip);
    setAccessibleDescription(tip);
}

void ColorCombo::Choose(int row)
{
    int32_t value = rows_[static_cast<size_t>(row)].value;
    if (color_row::IsHeading(value)) return;
    if (value == color_row::kCustom) return AskForColor();
    SetValue(value);
    chosen_(value);
}

void ColorCombo::AskForColor()
{
    PaletteColors system(palette());
    QColor color = QColorDialog::getColor(ColorOf(value_, system), this);
    if (!color.isValid()) return SetValue(value_);
    SetValue(ValueOf(color));
    chosen_(value_);
}

/// Arrows walk through the colours; the row that opens a dialog is chosen from the open list.
void ColorCombo::keyPressEvent(QKeyEvent* event)
{
    int last = count() - 1;
    bool towardEnd = event->key() == Qt::Key_Down || event->key() == Qt::Key_PageDown || event->key() == Qt::Key_End;
    if (towardEnd && !(event->modifiers() & Qt::AltModifier)) {
        if (event->key() == Qt::Key_Down && currentIndex() < last - 1) return QComboBox::keyPressEvent(event);
        if (currentIndex() < last - 1) {
            setCurrentIndex(event->key() == Qt::Key_End ? last - 1 : std::min(currentIndex() + 10, last - 1));
            Choose(currentIndex());
        }
        return;
    }
    QComboBox::keyPressEvent(event);
}

/// The wheel is for scrolling; a colour lost on the way is not missed until later.
void ColorCombo::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void ColorCombo::changeEvent(QEvent* event)
{
    QComboBox::changeEvent(event);
    bool looks = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
    if (looks && !filling_) Fill();
}

} // namespace nib
