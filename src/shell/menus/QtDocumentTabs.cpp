#include "shell/menus/QtDocumentTabs.h"

#include "base/Text.h"
#include "platform/qt/QtText.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace nib {

namespace {

constexpr int kWidestInCharacters = 32;
constexpr int kNarrowestInCharacters = 12;

} // namespace

QtDocumentTabs::QtDocumentTabs(QWidget* parent) : QTabBar(parent)
{
    setTabsClosable(true);
    setMovable(true);
    setExpanding(false);
    setDocumentMode(true);
    setDrawBase(false);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideRight);
    setVisible(false);
    connect(this, &QTabBar::currentChanged, this, [this](int index) {
        // Moving the current tab changes its index as well.
        if (index >= 0 && std::exchange(current_, NumberAt(index)) != current_ && events_)
            events_->TabActivate(current_);
    });
    connect(this, &QTabBar::tabCloseRequested, this, [this](int index) {
        if (events_) events_->TabClose(NumberAt(index));
    });
}

int QtDocumentTabs::IndexOf(const MenuTool& tab) const
{
    int32_t number = ToInt(tab.key);
    for (int i = 0; i < count(); ++i)
        if (NumberAt(i) == number) return i;
    return -1;
}

int32_t QtDocumentTabs::NumberAt(int index) const
{
    return index < 0 ? -1 : tabData(index).toInt();
}

void QtDocumentTabs::Add(const MenuTool& tab)
{
    {
        QSignalBlocker quiet(this);
        int index = addTab(QString());
        setTabData(index, ToInt(tab.key));
    }
    Change(tab);
    setVisible(true);
}

void QtDocumentTabs::Remove(const MenuTool& tab)
{
    QSignalBlocker quiet(this);
    if (int index = IndexOf(tab); index >= 0) removeTab(index);
    setVisible(count() > 0);
}

void QtDocumentTabs::Change(const MenuTool& tab)
{
    int index = IndexOf(tab);
    if (index < 0) return;
    QString caption = ToQString(tab.caption);
    setTabText(index, ToQString(DoubleAmpersands(tab.caption)));
    setTabToolTip(index, tab.tip.empty() ? caption : ToQString(tab.tip));
    setAccessibleTabName(index, caption);
    for (ButtonPosition side : {LeftSide, RightSide})
        if (QWidget* button = tabButton(index, side)) button->setAccessibleName(tr("Close %1").arg(caption));
    if (!tab.checked) return;
    current_ = NumberAt(index);
    QSignalBlocker quiet(this);
    setCurrentIndex(index);
}

QSize QtDocumentTabs::tabSizeHint(int index) const
{
    QSize size = QTabBar::tabSizeHint(index);
    size.setWidth(std::min(size.width(), fontMetrics().averageCharWidth() * kWidestInCharacters));
    return size;
}

QSize QtDocumentTabs::minimumTabSizeHint(int index) const
{
    QSize size = tabSizeHint(index);
    size.setWidth(std::min(size.width(), fontMetrics().averageCharWidth() * kNarrowestInCharacters));
    return size;
}

void QtDocumentTabs::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton) pressed_ = NumberAt(tabAt(event->position().toPoint()));
    QTabBar::mousePressEvent(event);
}

void QtDocumentTabs::mouseReleaseEvent(QMouseEvent* event)
{
    QTabBar::mouseReleaseEvent(event);
    if (event->button() != Qt::MiddleButton) return;
    int32_t tab = NumberAt(tabAt(event->position().toPoint()));
    if (tab >= 0 && tab == pressed_ && events_) events_->TabClose(tab);
}

void QtDocumentTabs::contextMenuEvent(QContextMenuEvent* event)
{
    bool keyboard = event->reason() == QContextMenuEvent::Keyboard;
    int index = keyboard ? currentIndex() : tabAt(event->pos());
    if (index < 0 || !events_) return;
    QPoint at = keyboard ? mapToGlobal(tabRect(index).center()) : event->globalPos();
    events_->TabContextMenu(NumberAt(index), {at.x(), at.y()});
}

} // namespace nib
