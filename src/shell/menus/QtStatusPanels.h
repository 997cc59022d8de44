#pragma once
#include "shell/menus/MenuBar.h"

#include <unordered_map>

class QLabel;
class QStatusBar;

namespace nib {

/// The panels of the status bar: the first takes the room that the others leave.
class QtStatusPanels {
public:
    explicit QtStatusPanels(QStatusBar& bar) : bar_(bar) {}

    void Add(const MenuTool& panel);
    void Remove(const MenuTool& panel);
    void Change(const MenuTool& panel);

private:
    QStatusBar& bar_;
    std::unordered_map<const MenuTool*, QLabel*> labels_; ///< owned by the bar
};

} // namespace nib
