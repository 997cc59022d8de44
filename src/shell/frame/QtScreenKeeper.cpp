#include "shell/frame/QtScreenKeeper.h"

#include "shell/frame/WindowPlacement.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWidget>

namespace nib {

namespace {

/// Until the window manager has put its title bar round a window.
constexpr int kSettled = 50;

FrameBounds BoundsOf(const QRect& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

bool IsKept(const QWidget& window)
{
    constexpr auto elsewhere = Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen;
    const Qt::WindowType type = window.windowType();
    return window.isVisible() && !(window.windowState() & elsewhere) && (type == Qt::Window || type == Qt::Dialog);
}

} // namespace

QtScreenKeeper::QtScreenKeeper(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
    for (QScreen* screen : QGuiApplication::screens()) Follow(*screen);
    connect(qApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) { Follow(*screen); });
    connect(qApp, &QGuiApplication::screenRemoved, this,
            [this] { QTimer::singleShot(kSettled, this, [this] { KeepAll(); }); });
}

void QtScreenKeeper::Follow(QScreen& screen)
{
    connect(&screen, &QScreen::availableGeometryChanged, this,
            [this] { QTimer::singleShot(kSettled, this, [this] { KeepAll(); }); });
}

void QtScreenKeeper::KeepAll()
{
    for (QWidget* window : QApplication::topLevelWidgets()) Keep(*window);
}

bool QtScreenKeeper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* window = static_cast<QWidget*>(watched);
        if (window->isWindow()) QTimer::singleShot(kSettled, window, [window] { Keep(*window); });
    }
    return false;
}

void QtScreenKeeper::Keep(QWidget& window)
{
    if (!IsKept(window)) return;
    std::vector<FrameBounds> screens;
    for (const QScreen* screen : QGuiApplication::screens()) screens.push_back(BoundsOf(screen->availableGeometry()));
    const QRect framed = window.frameGeometry();
    const QSize edges = framed.size() - window.size();
    const FrameBounds now = BoundsOf(framed);
    FrameBounds kept = FitToScreens(now, screens);
    if (kept == now) return;
    const QSize least = window.minimumSizeHint().expandedTo(window.minimumSize()) + edges;
    window.resize(QSize(kept.width, kept.height).expandedTo(least) - edges);
    window.move(kept.left, kept.top);
}

} // namespace nib
