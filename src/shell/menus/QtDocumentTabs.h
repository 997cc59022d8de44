#pragma once
#include "shell/menus/MenuModel.h"

#include <QColor>
#include <QCoreApplication>
#include <QTabBar>

#include <functional>
#include <unordered_map>

namespace nib {

/// The tabs of the document windows. Their order is the user's own; the model follows it.
class QtDocumentTabs final : public QTabBar {
    Q_DECLARE_TR_FUNCTIONS(QtDocumentTabs)
public:
    explicit QtDocumentTabs(QWidget* parent);

    void SetEvents(MenuEvents* events) { events_ = events; }
    /// The user has dragged a tab.
    std::function<void(int32_t tab, size_t place)> moved;
    void Add(const MenuTool& tab);
    void Remove(const MenuTool& tab);
    void Change(const MenuTool& tab);
    int32_t NumberAt(int index) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    QSize minimumTabSizeHint(int index) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct Look {
        QString caption;
        qsizetype name = 0; ///< where what tells documents apart begins
        QColor color;
    };

    QString Fitted(const Look& look) const;
    void Fit(int index);
    int IndexOf(const MenuTool& tab) const;

    MenuEvents* events_ = nullptr;
    std::unordered_map<int32_t, Look> looks_; ///< by number
    int32_t current_ = -1;                    ///< number of the tab that is in front
    int32_t pressed_ = -1;                    ///< number of the tab that the middle button went down on
};

} // namespace nib
