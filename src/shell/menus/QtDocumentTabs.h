#pragma once
#include "shell/menus/MenuModel.h"

#include <QCoreApplication>
#include <QTabBar>

namespace nib {

/// The tabs of the document windows. Their order is the user's own; it changes nothing but where they stand.
class QtDocumentTabs final : public QTabBar {
    Q_DECLARE_TR_FUNCTIONS(QtDocumentTabs)
public:
    explicit QtDocumentTabs(QWidget* parent);

    void SetEvents(MenuEvents* events) { events_ = events; }
    void Add(const MenuTool& tab);
    void Remove(const MenuTool& tab);
    void Change(const MenuTool& tab);

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    int IndexOf(const MenuTool& tab) const;
    int32_t NumberAt(int index) const;

    MenuEvents* events_ = nullptr;
    int32_t current_ = -1; ///< number of the tab that is in front
    int32_t pressed_ = -1; ///< number of the tab that the middle button went down on
};

} // namespace nib
