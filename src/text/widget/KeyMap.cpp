#include "text/widget/KeyMap.h"

#include "text/widget/SourceViewWidget.h"

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

using Widget = SourceViewWidget;

constexpr int kNone = Qt::NoModifier;
constexpr int kShift = Qt::ShiftModifier;
constexpr int kCtrl = Qt::ControlModifier;
constexpr int kAlt = Qt::AltModifier;

template <Move move>
void Go(Widget& w, bool extend)
{
    w.Model().MoveCaret(move, extend);
}

template <int pages>
void Page(Widget& w, bool extend)
{
    // The text moves with the caret, so that this keeps its place on the screen.
    w.ScrollRows(pages * std::max(w.PageLines() - 1, 1));
    w.Model().MoveCaret(pages < 0 ? Move::PageUp : Move::PageDown, extend);
}

template <void (SourceViewModel::*command)()>
void Do(Widget& w, bool)
{
    (w.Model().*command)();
}

template <bool backward>
void DeleteWord(Widget& w, bool)
{
    w.Model().DeleteWord(backward);
}

template <int rows>
void Scroll(Widget& w, bool)
{
    w.ScrollRows(rows);
}

template <int steps>
void Zoom(Widget& w, bool)
{
    w.SetZoom(steps == 0 ? 0 : w.Zoom() + steps);
}

void Undo(Widget& w, bool)
{
    if (w.Model().Buffer().CanUndo()) w.Model().Buffer().Undo();
}

void Redo(Widget& w, bool)
{
    if (w.Model().Buffer().CanRedo()) w.Model().Buffer().Redo();
}

void ToggleOvertype(Widget& w, bool)
{
    w.Model().SetOvertype(!w.Model().Overtype());
}

void AskValue(Widget& w, bool)
{
    emit w.valueRequested();
}

void AskSubValue(Widget& w, bool)
{
    emit w.subValueRequested();
}

void AskMenu(Widget& w, bool)
{
    w.AskForMenu();
}

using M = SourceViewModel;

constexpr KeyBinding kBindings[] = {
    // key                 modifiers       extends yields run
    {Qt::Key_Left, kNone, true, false, Go<Move::Left>},
    {Qt::Key_Right, kNone, true, false, Go<Move::Right>},
    {Qt::Key_Up, kNone, true, false, Go<Move::Up>},
    {Qt::Key_Down, kNone, true, false, Go<Move::Down>},
    {Qt::Key_Left, kCtrl, true, false, Go<Move::WordLeft>},
    {Qt::Key_Right, kCtrl, true, false, Go<Move::WordRight>},
    {Qt::Key_Home, kNone, true, false, Go<Move::LineStart>},
    {Qt::Key_End, kNone, true, false, Go<Move::LineEnd>},
    {Qt::Key_Home, kCtrl, true, false, Go<Move::TextStart>},
    {Qt::Key_End, kCtrl, true, false, Go<Move::TextEnd>},
    {Qt::Key_PageUp, kNone, true, false, Page<-1>},
    {Qt::Key_PageDown, kNone, true, false, Page<1>},
    {Qt::Key_Up, kCtrl, false, false, Scroll<-1>},
    {Qt::Key_Down, kCtrl, false, false, Scroll<1>},
    {Qt::Key_Backspace, kNone, false, false, Do<&M::Backspace>},
    {Qt::Key_Backspace, kShift, false, false, Do<&M::Backspace>},
    {Qt::Key_Backspace, kCtrl, false, false, DeleteWord<true>},
    {Qt::Key_Backspace, kAlt, false, true, Undo},
    {Qt::Key_Delete, kNone, false, false, Do<&M::DeleteForward>},
    {Qt::Key_Delete, kCtrl, false, false, DeleteWord<false>},
    {Qt::Key_Return, kNone, false, false, Do<&M::NewLine>},
    {Qt::Key_Return, kShift, false, false, Do<&M::NewLine>},
    {Qt::Key_Enter, kNone, false, false, Do<&M::NewLine>},
    {Qt::Key_Enter, kShift, false, false, Do<&M::NewLine>},
    {Qt::Key_Tab, kNone, false, false, Do<&M::Tab>},
    {Qt::Key_Backtab, kShift, false, false, Do<&M::Backtab>},
    {Qt::Key_Backtab, kNone, false, false, Do<&M::Backtab>},
    {Qt::Key_Insert, kNone, false, false, ToggleOvertype},
    {Qt::Key_Insert, kShift, false, false, Do<&M::Paste>},
    {Qt::Key_Insert, kCtrl, false, false, Do<&M::Copy>},
    {Qt::Key_Delete, kShift, false, false, Do<&M::Cut>},
    {Qt::Key_X, kCtrl, false, true, Do<&M::Cut>},
    {Qt::Key_C, kCtrl, false, true, Do<&M::Copy>},
    {Qt::Key_V, kCtrl, false, true, Do<&M::Paste>},
    {Qt::Key_A, kCtrl, false, true, Do<&M::SelectAll>},
    {Qt::Key_Y, kCtrl, false, true, Do<&M::DeleteLine>},
    {Qt::Key_Z, kCtrl, false, true, Undo},
    {Qt::Key_Z, kCtrl | kShift, false, true, Redo},
    {Qt::Key_Plus, kCtrl, false, true, Zoom<1>},
    {Qt::Key_Plus, kCtrl | kShift, false, true, Zoom<1>},
    {Qt::Key_Equal, kCtrl, false, true, Zoom<1>},
    {Qt::Key_Minus, kCtrl, false, true, Zoom<-1>},
    {Qt::Key_0, kCtrl, false, true, Zoom<0>},
    {Qt::Key_Backslash, kCtrl, false, false, AskSubValue},
    {Qt::Key_BracketRight, kCtrl, false, false, AskValue},
    {Qt::Key_F10, kShift, false, false, AskMenu}, // Qt knows the key of its own alone, which many keyboards lack
};

} // namespace

const KeyBinding* FindBinding(const QKeyEvent& event)
{
    int modifiers = (event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier)).toInt();
    auto fits = [&](const KeyBinding& row) {
        int asked = row.shiftExtends ? modifiers & ~kShift : modifiers;
        return row.key == event.key() && row.modifiers == asked;
    };
    auto found = std::find_if(std::begin(kBindings), std::end(kBindings), fits);
    if (found != std::end(kBindings)) return found;
    // Layouts that have these signs on a third level send the control character alone.
    QString text = event.text();
    if (text.size() != 1 || (text[0] != u'\x1c' && text[0] != u'\x1d')) return nullptr;
    auto run = text[0] == u'\x1c' ? AskSubValue : AskValue;
    return std::find_if(std::begin(kBindings), std::end(kBindings),
                        [&](const KeyBinding& row) { return row.run == run; });
}

QString TypedText(const QKeyEvent& event)
{
    QString text = event.text();
    if (text.isEmpty()) return {};
    // Ctrl with Alt is the third level of the keyboard; Ctrl or Alt alone types nothing.
    Qt::KeyboardModifiers held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (held && held != (Qt::ControlModifier | Qt::AltModifier)) return {};
    QChar first = text[0];
    bool types = first.isPrint() || first.isSurrogate() || first.category() == QChar::Other_Format ||
                 first.category() == QChar::Other_PrivateUse;
    return types ? text : QString();
}

} // namespace nib
