#pragma once
// Selection and drags with the mouse.

#include "text/SourceView.h"

#include <QPointF>
#include <QTimer>

class QDropEvent;
class QMouseEvent;

namespace nib {

class SourceViewWidget;

class MouseHandler {
public:
    explicit MouseHandler(SourceViewWidget& widget);

    void Press(const QMouseEvent& event);
    void Move(const QMouseEvent& event);
    void Release(const QMouseEvent& event);
    void DoubleClick(const QMouseEvent& event);

    /// True when the drop may come; files never do, so that the window gets them.
    static bool Accepts(const QDropEvent& event);
    void DragMove(QPointF at);
    void DragEnd();
    void Drop(QDropEvent& event);

private:
    enum class Unit { Character, Word, Line, Column, Added };

    void PressLeft(QPointF at, Qt::KeyboardModifiers held);
    /// Takes the caret there away or begins one more.
    void PressToAdd(Position at);
    void Add(Position anchor, Position caret);
    void ExtendTo(QPointF at);
    void StartDrag();
    void ScrollOn();
    void SelectUnits(Position at);
    void UpdateCursor(QPointF at) const;

    SourceViewWidget& widget_;
    QTimer scrollTimer_;
    QTimer tripleTimer_; ///< runs for as long as a third click counts
    QPointF pressed_;
    QPointF last_;
    Unit unit_ = Unit::Character;
    Position unitStart_; ///< the word or line that a selection by units began with
    Position unitEnd_;
    int32_t anchorLine_ = 0;
    CellPlace columnAnchor_;
    std::vector<CaretSpan> others_; ///< beside the caret that is being added
    bool selecting_ = false;
    bool mayDrag_ = false;
    bool dropping_ = false; ///< a drag is over the view
    bool dropHere_ = false; ///< our own drag ended in this view
};

} // namespace nib
