#pragma once
#include <QObject>

class QScreen;
class QWidget;

namespace nib {

/// Keeps windows and dialogs inside the screen: as they come up, and when a monitor goes or becomes smaller. An event
/// filter of the application.
class QtScreenKeeper final : public QObject {
public:
    explicit QtScreenKeeper(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// On some desktops a window neither knows nor chooses its place.
    static bool PlacesWindows();
    /// Moves the window, and makes it smaller where it does not fit.
    static void Keep(QWidget& window);

private:
    void Follow(QScreen& screen);
    void KeepAll();
};

} // namespace nib
