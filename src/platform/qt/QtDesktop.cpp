#include "platform/qt/QtDesktop.h"

#include "platform/qt/QtText.h"

#include <QClipboard>
#include <QDockWidget>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMimeData>
#include <QStringList>
#include <QTimer>

namespace nib {

namespace {

class RingingTimer final : public Timers::Timer {
public:
    RingingTimer(std::chrono::milliseconds interval, std::function<void()> ring)
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(ring));
        timer_.start(interval);
    }

private:
    QTimer timer_;
};

} // namespace

bool IsModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
           key == Qt::Key_AltGr || key == Qt::Key_CapsLock;
}

bool QtClipboard::HasText() const
{
    // No content at all is a null pointer on some platforms.
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    return content && content->hasText();
}

Text QtClipboard::GetText() const
{
    return ToText(QGuiApplication::clipboard()->text());
}

void QtClipboard::SetText(TextView text)
{
    QGuiApplication::clipboard()->setText(ToQString(text));
}

Text QtClipboard::GetPrimary() const
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard->supportsSelection() ? ToText(clipboard->text(QClipboard::Selection)) : Text();
}

void QtClipboard::SetPrimary(TextView text)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection()) clipboard->setText(ToQString(text), QClipboard::Selection);
}

bool QtFonts::Add(TextView fileName)
{
    if (added_.find(fileName) != added_.end()) return true;
    const int font = QFontDatabase::addApplicationFont(ToQString(fileName));
    if (font < 0) return false;
    added_.emplace(fileName, font);
    return true;
}

void QtFonts::Remove(TextView fileName)
{
    const auto found = added_.find(fileName);
    if (found == added_.end()) return;
    QFontDatabase::removeApplicationFont(found->second);
    added_.erase(found);
}

std::vector<Text> QtFonts::Families() const
{
    std::vector<Text> families;
    for (const QString& family : QFontDatabase::families()) families.push_back(ToText(family));
    return families;
}

Text QtFonts::ProgramFolder() const
{
    return programFolder_;
}

void CallOnWindows(std::function<void()> call)
{
    // The program's own object goes last of all; what is left then is of no use to anybody.
    if (qApp) QMetaObject::invokeMethod(qApp, std::move(call), Qt::QueuedConnection);
}

std::unique_ptr<Timers::Timer> QtTimers::Every(std::chrono::milliseconds interval, std::function<void()> ring)
{
    return std::make_unique<RingingTimer>(interval, std::move(ring));
}

bool JoinPanels(QMainWindow& window, QDockWidget& panel)
{
    bool inSight = false;
    const auto others = window.findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly);
    for (QDockWidget* other : others) {
        if (other == &panel || other->isFloating() || window.dockWidgetArea(other) != window.dockWidgetArea(&panel))
            continue;
        window.tabifyDockWidget(other, &panel);
        inSight = inSight || other->isVisible();
    }
    return inSight;
}

} // namespace nib
