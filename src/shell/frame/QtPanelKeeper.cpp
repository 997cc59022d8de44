#include "shell/frame/QtPanelKeeper.h"

#include "base/Twips.h"

#include <QChildEvent>
#include <QTimer>

namespace nib {

namespace {

constexpr std::array<TextView, 2> kNames{u"PanelHeight", u"PanelWidth"};
/// What was kept may be any number, or of a larger screen.
constexpr int kSmallest = 40;
constexpr double kLargestShare = 0.8;

} // namespace

QtPanelKeeper::QtPanelKeeper(QMainWindow& window, SettingsStore& store) : window_(window), store_(store)
{
    for (size_t i = 0; i < extents_.size(); ++i)
        extents_[i].pixels = TwipsToPixels(ToInt(store_.Get(kNames[i], u"0")), Dots(i));
    for (QObject* child : window_.children()) Watch(child);
    window_.installEventFilter(this);
}

int QtPanelKeeper::Dots(size_t extent) const
{
    return extent == 0 ? window_.logicalDpiY() : window_.logicalDpiX();
}

Qt::Orientation QtPanelKeeper::Across(const QDockWidget& panel) const
{
    const Qt::DockWidgetArea area = window_.dockWidgetArea(const_cast<QDockWidget*>(&panel));
    return area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea ? Qt::Horizontal : Qt::Vertical;
}

void QtPanelKeeper::Watch(QObject* child)
{
    if (qobject_cast<QDockWidget*>(child)) child->installEventFilter(this);
}

bool QtPanelKeeper::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &window_) {
        if (event->type() == QEvent::ChildPolished) Watch(static_cast<QChildEvent*>(event)->child());
    } else if (auto* panel = qobject_cast<QDockWidget*>(watched); panel && !panel->isFloating()) {
        if (event->type() == QEvent::Show) Shown(*panel);
        if (event->type() == QEvent::Resize) Resized(*panel);
    }
    return QObject::eventFilter(watched, event);
}

void QtPanelKeeper::Shown(QDockWidget& panel)
{
    // Once the window has made room for it.
    QTimer::singleShot(0, &panel, [this, &panel] { Apply(panel); });
}

void QtPanelKeeper::Apply(QDockWidget& panel)
{
    Extent& extent = ExtentOf(panel);
    if (std::exchange(extent.used, true)) return;
    const Qt::Orientation across = Across(panel);
    const int room = across == Qt::Vertical ? window_.height() : window_.width();
    if (extent.pixels >= kSmallest && extent.pixels <= room * kLargestShare)
        window_.resizeDocks({&panel}, {extent.pixels}, across);
    Resized(panel);
}

void QtPanelKeeper::Resized(const QDockWidget& panel)
{
    Extent& extent = ExtentOf(panel);
    if (extent.used && panel.isVisible())
        extent.pixels = Across(panel) == Qt::Vertical ? panel.height() : panel.width();
}

void QtPanelKeeper::Save() const
{
    for (size_t i = 0; i < extents_.size(); ++i)
        if (extents_[i].used) store_.Save(kNames[i], Decimal(PixelsToTwips(extents_[i].pixels, Dots(i))));
}

} // namespace nib
