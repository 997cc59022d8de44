#pragma once
#include "shell/menus/MenuModel.h"

#include <memory>

class QMainWindow;
class QMenu;
class QTabBar;
class QToolBar;
class QWidget;

namespace nib {

/// Draws the menu model on a QMainWindow: menu bar, tool bar, status bar, pop-ups and document tabs.
class QtMenuBar final : public MenuBar {
public:
    /// Becomes the model's listener. Window and model outlive it.
    QtMenuBar(QMainWindow& window, MenuModel& model);
    ~QtMenuBar() override;

    /// Set once, before the user can reach a tool.
    void SetEvents(MenuEvents* events);
    /// `area` becomes the window's central part, below the document tabs.
    void SetCentral(QWidget* area);

    // MenuBar
    void ToolsChanged(std::span<const ToolChange> changes) override;
    void ToolAdded(Band band, const MenuTool& tool) override;
    void ToolRemoved(Band band, const MenuTool& tool) override;
    void BandChanged(Band band) override;
    void PopUp(Band band, std::optional<ScreenPoint> at) override;

    QToolBar* ToolBar() const;
    QTabBar* Tabs() const;
    QMenu* PopUpMenu(Band band) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace nib
