#include "hosts/picker/QtPickerMessageLine.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace nib {

PickerMessageLine::PickerMessageLine(QWidget* parent) : QWidget(parent), text_(new QLabel)
{
    auto* icon = new QLabel;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(QSize(side, side), devicePixelRatioF()));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(text_, 1);
}

void PickerMessageLine::Say(const QString& text)
{
    text_->setText(text);
    setVisible(!text.isEmpty());
    if (text.isEmpty()) return;
    QAccessibleEvent alert(text_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace nib
