#pragma once
#include "shell/menus/QtDocumentTabs.h"

#include <QCoreApplication>
#include <QWidget>

class QMenu;
class QToolButton;

namespace nib {

/// The document tabs, a button that lists all of them, and below a line in the colour of the document in front.
class QtTabRow final : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(QtTabRow)
public:
    QtTabRow(const MenuTool& root, QWidget* parent);

    QtDocumentTabs& Tabs() { return *tabs_; }
    void SetEvents(MenuEvents* events);
    /// Once the tabs have changed; `gone` is about to be none of them any more.
    void Follow(const MenuTool* gone = nullptr);

private:
    void FillList();

    const MenuTool& root_;
    MenuEvents* events_ = nullptr;
    QtDocumentTabs* tabs_;
    QToolButton* all_;
    QMenu* list_;
    QWidget* line_;
};

} // namespace nib
