#pragma once
// The tools of menus, tool bar and pop-ups as QActions. A shortcut is live on the menu bar alone; elsewhere its text is
// shown.

#include "shell/menus/MenuModel.h"

#include <QIcon>
#include <QKeySequence>
#include <QString>

#include <functional>
#include <unordered_map>

class QAction;
class QMenu;
class QWidget;

namespace nib {

/// Where the desktop names no icon theme, or one without the icons wanted, a theme that has them steps in, in the
/// brightness of the palette. Called at start and again when the palette changes.
void UseIconTheme();

/// By name: from the desktop's theme, or the program's own where the name begins with "nib-".
QIcon ToolIcon(TextView name);

/// A menu that is longer than the screen scrolls; columns beside each other would stand outside of it.
void LetScroll(QMenu& menu);

/// A shortcut as the menu table writes it; empty for one that has no meaning here.
QKeySequence KeySequenceOf(TextView shortcut);

class QtToolActions {
public:
    using Clicked = std::function<void(Band, const MenuTool&, bool checked)>;
    using Opening = std::function<void(const MenuTool&)>;

    QtToolActions(Clicked clicked, Opening opening);
    ~QtToolActions();
    QtToolActions(const QtToolActions&) = delete;
    QtToolActions& operator=(const QtToolActions&) = delete;

    /// The widget that shows the band. Its tools are added afterwards, one by one or all at once.
    void SetHolder(Band band, const MenuTool& root, QWidget& holder);
    void AddAll(Band band, const MenuTool& menu);
    void Add(Band band, const MenuTool& tool);
    void Remove(const MenuTool& tool);
    void Change(const ToolChange& change);
    void RefreshIcons();
    /// Null for a tool that is none.
    QMenu* MenuOf(const MenuTool& tool) const;

private:
    struct Entry {
        Band band;
        QAction* action = nullptr; ///< owned by the widget it stands on
        QAction* separator = nullptr;
        QMenu* menu = nullptr; ///< of a menu
    };

    QAction* NextOf(const MenuTool& tool) const;
    void ShowCaption(const MenuTool& tool, const Entry& entry);
    void ShowShortcut(const MenuTool& tool, const Entry& entry);
    void ShowTip(const MenuTool& tool, const Entry& entry);
    void ShowGroup(const MenuTool& tool, Entry& entry);
    bool IsTaken(const QKeySequence& keys, const QAction* by) const;

    Clicked clicked_;
    Opening opening_;
    std::unordered_map<const MenuTool*, QWidget*> holders_; ///< by menu or root of a band
    std::unordered_map<const MenuTool*, Entry> entries_;
};

} // namespace nib
