// Keys of the two texts side by side; part of QtCompareView.

#include "compare/QtCompareView.h"
#include "platform/qt/QtText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace nib {

const QtCompareView::KeyRow QtCompareView::kKeys[] = {
    {Qt::Key_F8, Qt::NoModifier, &QtCompareView::StepKey<false>},
    {Qt::Key_F8, Qt::ShiftModifier, &QtCompareView::StepKey<true>},
    {Qt::Key_Down, Qt::AltModifier, &QtCompareView::StepKey<false>},
    {Qt::Key_Up, Qt::AltModifier, &QtCompareView::StepKey<true>},
    {Qt::Key_Right, Qt::AltModifier, &QtCompareView::TakeKey<Beside::Right>},
    {Qt::Key_Left, Qt::AltModifier, &QtCompareView::TakeKey<Beside::Left>},
    {Qt::Key_Down, Qt::NoModifier, &QtCompareView::Move<1>},
    {Qt::Key_Up, Qt::NoModifier, &QtCompareView::Move<-1>},
    {Qt::Key_PageDown, Qt::NoModifier, &QtCompareView::Page<1>},
    {Qt::Key_PageUp, Qt::NoModifier, &QtCompareView::Page<-1>},
    {Qt::Key_Home, Qt::ControlModifier, &QtCompareView::First},
    {Qt::Key_End, Qt::ControlModifier, &QtCompareView::Last},
    {Qt::Key_Home, Qt::NoModifier, &QtCompareView::First},
    {Qt::Key_End, Qt::NoModifier, &QtCompareView::Last},
    {Qt::Key_Right, Qt::NoModifier, &QtCompareView::Choose<Beside::Right>},
    {Qt::Key_Left, Qt::NoModifier, &QtCompareView::Choose<Beside::Left>},
    {Qt::Key_Right, Qt::ControlModifier, &QtCompareView::Scroll<8>},
    {Qt::Key_Left, Qt::ControlModifier, &QtCompareView::Scroll<-8>},
    {Qt::Key_Return, Qt::NoModifier, &QtCompareView::OpenRow},
    {Qt::Key_Enter, Qt::NoModifier, &QtCompareView::OpenRow},
    {Qt::Key_Space, Qt::NoModifier, &QtCompareView::OpenRow},
    {Qt::Key_C, Qt::ControlModifier, &QtCompareView::Copy},
    {Qt::Key_Z, Qt::ControlModifier, &QtCompareView::Undo},
    {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, &QtCompareView::Redo},
};

const QtCompareView::KeyRow* QtCompareView::KeyFor(const QKeyEvent& event) const
{
    const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const auto* found = std::find_if(std::begin(kKeys), std::end(kKeys), [&](const KeyRow& row) {
        return row.key == event.key() && row.modifiers == modifiers;
    });
    return found == std::end(kKeys) ? nullptr : found;
}

bool QtCompareView::event(QEvent* event)
{
    // Keys that the menus know as well are the view's own here.
    if (event->type() == QEvent::ShortcutOverride && KeyFor(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QAbstractScrollArea::event(event);
}

void QtCompareView::keyPressEvent(QKeyEvent* event)
{
    const KeyRow* row = KeyFor(*event);
    if (!row) return QAbstractScrollArea::keyPressEvent(event);
    if (model_.IsThere()) (this->*row->act)();
}

template <Beside To>
void QtCompareView::Choose()
{
    side_ = To;
    line_ = Line();
    viewport()->update();
    Tell();
}

template <int Columns>
void QtCompareView::Scroll()
{
    QScrollBar* bar = horizontalScrollBar();
    bar->setValue(bar->value() + static_cast<int>(Columns * painter_.CharWidth()));
}

void QtCompareView::OpenRow()
{
    if (row_ >= model_.Rows().Count()) return;
    if (model_.Rows().At(row_).folded > 0) {
        model_.Rows().Open(row_);
        return Refresh();
    }
    if (Line() >= 0 && onOpen) onOpen(side_, Line());
}

/// The lines of the present change, or the present one, on the present side.
void QtCompareView::Copy()
{
    const int32_t change = Change();
    int32_t first = Line();
    int32_t count = first < 0 ? 0 : 1;
    if (change >= 0) {
        const LineBlock& block = model_.Rows().BlockOfChange(change);
        first = side_ == Beside::Left ? block.left : block.right;
        count = side_ == Beside::Left ? block.leftCount : block.rightCount;
    }
    if (count == 0) return;
    Text lines;
    for (int32_t line = first; line < first + count; ++line)
        lines.append(model_.Side(side_).Lines().GetLine(line)).append(u"\n");
    QGuiApplication::clipboard()->setText(ToQString(lines));
}

/// Of the document on the present side, or else of the other.
void QtCompareView::Undo()
{
    for (Beside side : {side_, CompareModel::Other(side_)})
        if (model_.Side(side).CanEdit() && model_.Side(side).Lines().CanUndo()) return model_.Side(side).View().Undo();
}

void QtCompareView::Redo()
{
    for (Beside side : {side_, CompareModel::Other(side_)})
        if (model_.Side(side).CanEdit() && model_.Side(side).Lines().CanRedo()) return model_.Side(side).View().Redo();
}

} // namespace nib
