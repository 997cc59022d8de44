#include "shell/menus/QtDocumentTabs.h"

#include "base/Text.h"
#include "platform/qt/QtText.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace nib {

namespace {

/// Of the names, which are capitals mostly.
constexpr int kShownCharacters = 22;
/// The line in the colour of the account.
constexpr int kEdge = 3;

} // namespace

QtDocumentTabs::QtDocumentTabs(QWidget* parent) : QTabBar(parent)
{
    setTabsClosable(true);
    setMovable(true);
    setExpanding(false);
    setDocumentMode(true);
    setDrawBase(false);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideNone); // Fitted has done it
    setVisible(false);
    connect(this, &QTabBar::currentChanged, this, [this](int index) {
        // Moving the current tab changes its index as well.
        if (index >= 0 && std::exchange(current_, NumberAt(index)) != current_ && events_)
            events_->TabActivate(current_);
    });
    connect(this, &QTabBar::tabMoved, this, [this](int, int to) {
        if (moved) moved(NumberAt(to), static_cast<size_t>(to));
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
    looks_.erase(ToInt(tab.key));
    if (int index = IndexOf(tab); index >= 0) removeTab(index);
    setVisible(count() > 0);
}

void QtDocumentTabs::Change(const MenuTool& tab)
{
    int index = IndexOf(tab);
    if (index < 0) return;
    QString caption = ToQString(tab.caption);
    looks_[NumberAt(index)] = {caption, ToInt(tab.tag), ToColor(tab.color)};
    Fit(index);
    setTabToolTip(index, tab.tip.empty() ? caption : ToQString(tab.tip));
    setAccessibleTabName(index, caption);
    for (ButtonPosition side : {LeftSide, RightSide})
        if (QWidget* button = tabButton(index, side)) button->setAccessibleName(tr("Close %1").arg(caption));
    if (!tab.checked) return;
    current_ = NumberAt(index);
    QSignalBlocker quiet(this);
    setCurrentIndex(index);
}

/// The file's name gives way first, then the middle of the item's: names that begin alike end otherwise.
QString QtDocumentTabs::Fitted(const Look& look) const
{
    const QFontMetrics metrics = fontMetrics();
    const int room = metrics.horizontalAdvance(QString(kShownCharacters, u'E'));
    if (metrics.horizontalAdvance(look.caption) <= room) return look.caption;
    const QString name = look.caption.mid(look.name);
    QString before = look.caption.left(look.name).trimmed();
    if (!before.isEmpty()) {
        const QString least = before.left(before.startsWith(u'*') ? 2 : 1) + u'\u2026';
        const int left = room - metrics.horizontalAdvance(u' ' + name);
        before = left > metrics.horizontalAdvance(least) ? metrics.elidedText(before, Qt::ElideRight, left) : least;
        before += u' ';
    }
    return before + metrics.elidedText(name, Qt::ElideMiddle, room - metrics.horizontalAdvance(before));
}

void QtDocumentTabs::Fit(int index)
{
    const auto look = looks_.find(NumberAt(index));
    if (look != looks_.end()) setTabText(index, Fitted(look->second).replace(u'&', QLatin1String("&&")));
}

void QtDocumentTabs::paintEvent(QPaintEvent* event)
{
    QTabBar::paintEvent(event);
    QPainter painter(this);
    for (int i = 0; i < count(); ++i) {
        const auto look = looks_.find(NumberAt(i));
        if (look == looks_.end() || !look->second.color.isValid()) continue;
        const QRect tab = tabRect(i);
        painter.fillRect(tab.left(), tab.bottom() + 1 - kEdge, tab.width(), kEdge, look->second.color);
    }
}

void QtDocumentTabs::changeEvent(QEvent* event)
{
    QTabBar::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    for (int i = 0; i < count(); ++i) Fit(i);
}

/// Where there is no room for all they can be scrolled; a tab that cannot be read is none.
QSize QtDocumentTabs::minimumTabSizeHint(int index) const
{
    return tabSizeHint(index);
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
