#pragma once
// The panels of the status bar: the first takes the room that the others leave.

#include "shell/menus/MenuModel.h"

#include <QLabel>
#include <QRawFont>

#include <functional>
#include <unordered_map>

class QStatusBar;

namespace nib {

/// A label that paints itself. Its text changes with every key: one of Qt's would have the bar laid out anew each time.
class QtStatusPanel final : public QLabel {
public:
    explicit QtStatusPanel(QWidget* parent);
    /// What a click or the space bar does; without it the panel only shows.
    void SetClicked(std::function<void()> clicked);
    const QString& Shown() const { return shown_; }
    void Show(const QString& text);
    /// Makes room for such a text, and keeps it, so that the neighbours do not jump about.
    void MakeRoom(const QString& text);
    /// Behind the text; not valid for none.
    void SetColor(const QColor& color);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool IsLit() const;
    QColor Ink() const;
    int Inset() const;
    void PaintBehind(QPainter& painter);
    /// Places the glyphs itself; false where the font has to be asked for more than one a character.
    bool PaintQuickly(QPainter& painter);

    QString shown_;
    QString widest_;
    QRawFont glyphs_;
    QColor color_;
    std::function<void()> clicked_;
    qsizetype measured_ = 0; ///< characters; a text that is no longer is not measured
};

class QtStatusPanels {
public:
    /// What a click on a panel opens stands in its tag.
    using Opened = std::function<void(const MenuTool& panel, QWidget& shown)>;

    QtStatusPanels(QStatusBar& bar, Opened opened) : bar_(bar), opened_(std::move(opened)) {}

    void Add(const MenuTool& panel);
    void Remove(const MenuTool& panel);
    void Change(const MenuTool& panel);

private:
    QStatusBar& bar_;
    Opened opened_;
    std::unordered_map<const MenuTool*, QtStatusPanel*> panels_; ///< owned by the bar
};

} // namespace nib
