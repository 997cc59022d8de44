#pragma once
// Where the list of results is: in a panel at the bottom of the main window, beside what else is listed there, or in
// a window of its own once the user takes it out.

#include "search/frmResults.h"

#include <QDockWidget>
#include <QMainWindow>

namespace nib {

class QtResultsPanel final : public QDockWidget {
public:
    /// All outlive it, but for the form, which goes first.
    QtResultsPanel(frmResults& form, SettingsStore& store, QMainWindow& window);

    /// Keeps for the next run whether it is open.
    void Unload();

    /// The panel has taken or given back room, which the texts have less or more of.
    std::function<void()> onRoomChanged;
    /// The user has closed it by its key.
    std::function<void()> onLeave;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Place();
    void Dock(bool docked);
    void ShowForm();

    frmResults& form_;
    SettingsStore& store_;
    QMainWindow& window_;
    bool placed_ = false;
    bool raised_ = false; ///< for what came while a command ran, not by the user
    bool docked_ = false;
};

} // namespace nib
