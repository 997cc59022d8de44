#include "shell/frame/frmProperties.h"

#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtText.h"
#include "shell/frame/DocumentProperties.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

constexpr int kButtons = 24; ///< in characters

/// Names stay as they are, whatever they read like.
QString ShownValue(const PropertyRow& row)
{
    constexpr TextView words[] = {u"Modified", u"Read only", u"Lock", u"Line ends", u"Stored size"};
    QString plain = ToQString(row.value);
    if (std::find(std::begin(words), std::end(words), row.name) == std::end(words)) return plain;
    return TranslatedMessage(plain).value_or(Translated(row.value));
}

} // namespace

frmProperties::frmProperties(QWidget* owner) : QDialog(owner)
{
    setWindowTitle(tr("Nib Document Properties"));
    auto* column = new QVBoxLayout(this);
    rows_ = new QFormLayout;
    rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows_->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    column->addLayout(rows_);
    column->addStretch(1);
    auto* buttons = new QDialogButtonBox;
    cmdClose_ = buttons->addButton(tr("&Close"), QDialogButtonBox::RejectRole);
    cmdClose_->setDefault(true);
    column->addWidget(buttons);
    connect(cmdClose_, &QPushButton::clicked, this, &frmProperties::reject);
}

void frmProperties::AddRow(const PropertyRow& row)
{
    auto* name = new QLabel(Translated(row.name));
    auto* value = new ElidedValue(ShownValue(row));
    value->setAccessibleName(Translated(row.name));
    rows_->addRow(name, value);
    setTabOrder(value, cmdClose_);
}

void frmProperties::ShowDialog(mvDocument& document, const Location& current)
{
    while (rows_->rowCount() > 0) rows_->removeRow(0);
    for (const PropertyRow& row : DocumentProperties(document, current)) AddRow(row);
    cmdClose_->setFocus();
    adjustSize();
    // A title bar has its buttons beside the caption.
    const int caption =
        QFontMetrics(font()).horizontalAdvance(windowTitle()) + fontMetrics().averageCharWidth() * kButtons;
    resize(std::max(width(), caption), height());
    exec();
}

} // namespace nib
