#include "shell/menus/QtStatusPanels.h"

#include "platform/qt/QtText.h"

#include <QLabel>
#include <QStatusBar>

namespace nib {

namespace {

constexpr int kRoomAround = 12;

int WidthFor(const QLabel& label, TextView text)
{
    return text.empty() ? 0 : label.fontMetrics().horizontalAdvance(ToQString(text)) + kRoomAround;
}

} // namespace

void QtStatusPanels::Add(const MenuTool& panel)
{
    auto* label = new QLabel(&bar_);
    label->setObjectName(ToQString(panel.key));
    label->setTextFormat(Qt::PlainText);
    label->setToolTip(ToQString(panel.tip));
    label->setAccessibleDescription(ToQString(panel.tip));
    if (labels_.empty()) {
        // A long text must not make the window wide.
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        bar_.addWidget(label, 1);
    } else {
        bar_.addPermanentWidget(label);
    }
    labels_[&panel] = label;
    Change(panel);
}

void QtStatusPanels::Remove(const MenuTool& panel)
{
    auto found = labels_.find(&panel);
    if (found == labels_.end()) return;
    bar_.removeWidget(found->second);
    found->second->deleteLater();
    labels_.erase(found);
}

void QtStatusPanels::Change(const MenuTool& panel)
{
    auto found = labels_.find(&panel);
    if (found == labels_.end()) return;
    QLabel* label = found->second;
    label->setText(ToQString(panel.caption));
    // Without a text of its own a screen reader would read nothing.
    label->setAccessibleName(panel.caption.empty() ? ToQString(panel.tip) : QString());
    bool stretches = label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
    if (!stretches) {
        // It grows with its text and stays so, that its neighbours do not jump about.
        int wanted = std::max(WidthFor(*label, panel.caption), WidthFor(*label, panel.minText));
        if (wanted > label->minimumWidth()) label->setMinimumWidth(wanted);
    }
    label->setVisible(panel.visible && (stretches || !panel.caption.empty() || !panel.minText.empty()));
}

} // namespace nib
