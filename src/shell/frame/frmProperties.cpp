#include "shell/frame/frmProperties.h"

#include "platform/qt/ElidedValue.h"
#include "platform/qt/QtText.h"
#include "shell/frame/DocumentProperties.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr int kButtons = 24; ///< in characters

} // namespace

frmProperties::frmProperties(QWidget* owner) : QDialog(owner)
{
    setWindowTitle(QStringLiteral("Nib Document Properties"));
    auto* column = new QVBoxLayout(this);
    rows_ = new QFormLayout;
    rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    rows_->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    column->addLayout(rows_);
    column->addStretch(1);
    auto* buttons = new QDialogButtonBox;
    cmdClose_ = buttons->addButton(QStringLiteral("&Close"), QDialogButtonBox::RejectRole);
    cmdClose_->setDefault(true);
    column->addWidget(buttons);
    connect(cmdClose_, &QPushButton::clicked, this, &frmProperties::reject);
}

void frmProperties::AddRow(const PropertyRow& row)
{
    auto* name = new QLabel(ToQString(row.name));
    auto* value = new ElidedValue(ToQString(row.value));
    value->setAccessibleName(ToQString(row.name));
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
