#pragma once
#include "platform/Desktop.h"

#include <QCursor>
#include <QGuiApplication>

#include <map>
#include <memory>

class QDockWidget;
class QMainWindow;

namespace nib {

/// It is held while others are pressed, and means nothing by itself.
bool IsModifier(int key);

class QtClipboard : public Clipboard {
public:
    bool HasText() const override;
    Text GetText() const override;
    void SetText(TextView text) override;
    Text GetPrimary() const override;
    void SetPrimary(TextView text) override;
};

class QtFonts : public Fonts {
public:
    /// The private fonts lie in the program's folder.
    explicit QtFonts(Text programFolder) : programFolder_(std::move(programFolder)) {}
    bool Add(TextView fileName) override;
    void Remove(TextView fileName) override;
    std::vector<Text> Families() const override;
    Text ProgramFolder() const override;

private:
    Text programFolder_;
    /// Qt's numbers of the fonts added, by file name.
    std::map<Text, int, std::less<>> added_;
};

class QtTimers final : public Timers {
public:
    std::unique_ptr<Timer> Every(std::chrono::milliseconds interval, std::function<void()> ring) override;
};

/// Calls it on the thread of the windows once that is free; from any thread.
void CallOnWindows(std::function<void()> call);

/// In one place with the panels that stand there already: small screens have no room for both. True when one of them is
/// in sight.
bool JoinPanels(QMainWindow& window, QDockWidget& panel);

/// The hour-glass over the whole program while it lives. Nests.
class QtWaitCursor {
public:
    QtWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~QtWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    QtWaitCursor(const QtWaitCursor&) = delete;
    QtWaitCursor& operator=(const QtWaitCursor&) = delete;
};

} // namespace nib
