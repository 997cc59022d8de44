#include "persistence/settings/frmSettingsFields.h"

#include "persistence/store/SettingsStore.h"
#include "platform/qt/QtText.h"
#include "text/widget/ScreenColors.h"

#include <QButtonGroup>
#include <QColorDialog>
#include <QEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QRadioButton>
#include <QStandardItemModel>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace nib {

namespace {

constexpr int kShownRows = 20;
constexpr int kNameChars = 16;

QColor ColorOf(int32_t value, const SystemColors& system)
{
    int32_t bits = ResolveColor(value, system);
    return QColor(bits & 0xFF, bits >> 8 & 0xFF, bits >> 16 & 0xFF);
}

int32_t ValueOf(const QColor& color)
{
    return color.red() | color.green() << 8 | color.blue() << 16;
}

SystemColors ColorsOf(const QPalette& palette)
{
    return [palette](int32_t index) -> std::optional<int32_t> {
        const QColor color = DesktopColor(palette, index);
        return color.isValid() ? std::optional(ValueOf(color)) : std::nullopt;
    };
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

QString CaptionOf(const SettingsModel& model, TextView control)
{
    // The mark of what the host governs stands behind the caption.
    const Text caption = model.Caption(control);
    const size_t end = caption.ends_with(kHostMark) ? caption.size() - kHostMark.size() : caption.size();
    return Translated(TextView(caption).substr(0, end)) + ToQString(TextView(caption).substr(end));
}

QString SpokenName(QString caption)
{
    caption.replace(QLatin1String("&&"), QString(QChar(1))).remove(QLatin1Char('&'));
    caption.replace(QChar(1), QLatin1Char('&'));
    return caption.remove(QLatin1Char(':')).simplified();
}

void NameControl(const SettingsModel& model, TextView control, QWidget& widget)
{
    widget.setObjectName(ToQString(control));
    widget.setAccessibleName(SpokenName(CaptionOf(model, control)));
}

void CaptionButton(const SettingsModel& model, TextView control, QAbstractButton& button)
{
    NameControl(model, control, button);
    button.setText(CaptionOf(model, control));
}

QLabel* LabelFor(const SettingsModel& model, TextView control, QWidget& field)
{
    NameControl(model, control, field);
    auto* label = new QLabel(CaptionOf(model, control));
    label->setBuddy(&field);
    return label;
}

QGroupBox* BuildOptions(const SettingsModel& model, TextView control, std::span<const TextView> captions,
                        int32_t present, std::function<void(int32_t)> chosen)
{
    auto* box = new QGroupBox(CaptionOf(model, control));
    NameControl(model, control, *box);
    auto* row = new QHBoxLayout(box);
    auto* group = new QButtonGroup(box);
    for (TextView caption : captions) {
        auto* option = new QRadioButton(Translated(caption));
        option->setAccessibleDescription(box->accessibleName());
        group->addButton(option, static_cast<int>(group->buttons().size()));
        row->addWidget(option);
    }
    row->addStretch(1);
    if (auto* option = group->button(present)) option->setChecked(true);
    box->setFocusProxy(group->checkedButton());
    QObject::connect(group, &QButtonGroup::idClicked, box, [box, group, heard = std::move(chosen)](int id) {
        box->setFocusProxy(group->button(id));
        heard(id);
    });
    return box;
}

NumberField::NumberField(int32_t most, int32_t present)
{
    setRange(0, most);
    setValue(present);
    setAccelerated(true);
}

QValidator::State NumberField::validate(QString& input, int& position) const
{
    int64_t number = LeadingWhole(ViewOf(input));
    if (number < 0 || number > maximum()) {
        input = QString::number(valueFromText(input));
        position = static_cast<int>(input.size());
    }
    return QValidator::Acceptable;
}

int NumberField::valueFromText(const QString& text) const
{
    return LimitedNumber(ViewOf(text), maximum());
}

void NumberField::fixup(QString& input) const
{
    input = QString::number(valueFromText(input));
}

ColorCombo::ColorCombo(std::function<void(int32_t)> chosen) : chosen_(std::move(chosen))
{
    setMaxVisibleItems(kShownRows);
    // It grows with the dialog; the longest names are longer than what a small screen has for them.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kNameChars);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    Fill();
    connect(this, &QComboBox::activated, this, &ColorCombo::Choose);
}

void ColorCombo::Fill()
{
    filling_ = true;
    const SystemColors system = ColorsOf(palette());
    rows_ = ColorRows(system);
    int side = fontMetrics().ascent();
    QSize size(side * 2, side);
    setIconSize(size);
    QColor frame = palette().color(QPalette::WindowText);
    auto* items = new QStandardItemModel(this);
    for (const ColorRow& row : rows_) {
        QString name = Translated(row.name);
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
    const QString plain = ToQString(ColorTip(value_, ColorsOf(palette())));
    const QString tip = TranslatedMessage(plain).value_or(plain);
    preview_->setToolTip(tip);
    preview_->setAccessibleName(tip);
    setAccessibleDescription(tip);
}

void ColorCombo::ShowPainted(const QColor& color)
{
    QPalette painted = preview_->palette();
    painted.setColor(QPalette::Window, color);
    preview_->setPalette(painted);
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
    const SystemColors system = ColorsOf(palette());
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
