#include "shell/frame/QtScreenKeeper.h"

#include "shell/frame/WindowPlacement.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QPointer>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace nib {

namespace {

/// Until the window manager has put its title bar round a window.
constexpr int kSettled = 50;
constexpr int kNarrow = 4;

FrameBounds BoundsOf(const QRect& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

bool IsKept(const QWidget& window)
{
    constexpr auto elsewhere = Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen;
    const Qt::WindowType type = window.windowType();
    return window.isVisible() && !(window.windowState() & elsewhere) &&
           (type == Qt::Window || type == Qt::Dialog || type == Qt::Tool);
}

/// By what came into it, not by its user's hand.
bool Grows(const QEvent& event)
{
    if (event.type() != QEvent::Resize || event.spontaneous()) return false;
    const auto& resized = static_cast<const QResizeEvent&>(event);
    return resized.size().height() > resized.oldSize().height() || resized.size().width() > resized.oldSize().width();
}

/// The last widget of a dialog, which must stay in sight: it has the buttons.
bool IsButtons(QLayoutItem* item)
{
    const QWidget* widget = item ? item->widget() : nullptr;
    return widget && (qobject_cast<const QDialogButtonBox*>(widget) || widget->findChild<QDialogButtonBox*>());
}

/// A dialog that cannot become as small as the screen scrolls; its buttons stay where they are.
void LetScroll(QWidget& window)
{
    auto* column = qobject_cast<QVBoxLayout*>(window.layout());
    if (!column || column->isEmpty() || qobject_cast<QScrollArea*>(column->itemAt(0)->widget())) return;
    const QPointer<QWidget> focused(window.focusWidget());
    // Its edges take less then, so that fewer have to be scrolled sideways.
    column->setContentsMargins(kNarrow, kNarrow, kNarrow, kNarrow);
    auto* inner = new QWidget;
    auto* rows = new QVBoxLayout(inner);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(inner);
    // First, so that no widget leaves the window, which would change the order of the Tab key.
    column->insertWidget(0, scroll, 1);
    const int kept = IsButtons(column->itemAt(column->count() - 1)) ? 2 : 1;
    while (column->count() > kept) {
        const int stretch = column->stretch(1);
        QLayoutItem* item = column->takeAt(1);
        if (item->layout()) {
            rows->addLayout(item->layout(), stretch);
        } else if (item->widget()) {
            rows->addWidget(item->widget(), stretch);
            delete item;
        } else {
            rows->addItem(item);
        }
    }
    column->activate(); // which keeps the window from becoming smaller than it asks for
    // What moves is hidden until the loop shows it again.
    QTimer::singleShot(0, &window, [focused] {
        if (focused) focused->setFocus();
    });
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
    if (!watched->isWidgetType() || !static_cast<QWidget*>(watched)->isWindow()) return false;
    auto* window = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::Show || Grows(*event))
        QTimer::singleShot(kSettled, window, [window] { Keep(*window); });
    return false;
}

bool QtScreenKeeper::PlacesWindows()
{
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

void QtScreenKeeper::Keep(QWidget& window)
{
    if (!PlacesWindows() || !IsKept(window)) return;
    std::vector<FrameBounds> screens;
    for (const QScreen* screen : QGuiApplication::screens()) screens.push_back(BoundsOf(screen->availableGeometry()));
    // By the window's own margins: at twice the size the widget may say that it has no size at all.
    const QRect framed = window.geometry().marginsAdded(window.windowHandle()->frameMargins());
    const QSize edges = framed.size() - window.size();
    const FrameBounds now = BoundsOf(framed);
    FrameBounds kept = FitToScreens(now, screens);
    if (kept == now) return;
    const QSize least = window.minimumSizeHint() + edges;
    if (window.windowType() == Qt::Dialog && (least.height() > kept.height || least.width() > kept.width)) {
        LetScroll(window);
        FrameBounds wider = now;
        wider.width += window.style()->pixelMetric(QStyle::PM_ScrollBarExtent) * 2;
        kept = FitToScreens(wider, screens);
    }
    window.resize(QSize(kept.width, kept.height) - edges);
    window.move(kept.left, kept.top);
}

} // namespace nib
