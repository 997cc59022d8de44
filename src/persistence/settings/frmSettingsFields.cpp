#include "persistence/settings/frmSettingsFields.h"

#include "persistence/store/SettingsStore.h"
#include "platform/qt/QtText.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace nib {

QString CaptionOf(const SettingsModel& model, TextView control)
{
    return ToQString(model.Caption(control));
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
        auto* option = new QRadioButton(ToQString(caption));
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

} // namespace nib
