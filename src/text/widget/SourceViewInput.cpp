// Which key does what, input methods, focus and the caret's blinking; part of SourceViewWidget.

#include "platform/qt/QtText.h"
#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTextCharFormat>

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

struct KeyBinding {
    int key;
    int modifiers;     ///< Qt::KeyboardModifiers without the keypad's bit
    bool shiftExtends; ///< with Shift too, which then extends the selection
    bool yields;       ///< a menu shortcut of the window on the same key goes first
    void (*run)(SourceViewWidget& widget, bool extend);
};

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
    w.ScrollSmoothly([&] {
        w.ScrollRows(pages * std::max(w.PageLines() - 1, 1));
        w.Model().MoveCaret(pages < 0 ? Move::PageUp : Move::PageDown, extend);
    });
}

template <Move move>
void Grow(Widget& w, bool)
{
    w.Model().ExtendColumn(move);
}

template <int pages>
void GrowPage(Widget& w, bool)
{
    w.ScrollRows(pages * std::max(w.PageLines() - 1, 1));
    w.Model().ExtendColumn(pages < 0 ? Move::PageUp : Move::PageDown);
}

template <void (SourceView::*command)()>
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

using M = SourceView;

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
    {Qt::Key_Left, kAlt | kShift, false, true, Grow<Move::Left>},
    {Qt::Key_Right, kAlt | kShift, false, true, Grow<Move::Right>},
    {Qt::Key_Up, kAlt | kShift, false, true, Grow<Move::Up>},
    {Qt::Key_Down, kAlt | kShift, false, true, Grow<Move::Down>},
    {Qt::Key_Home, kAlt | kShift, false, true, Grow<Move::LineStart>},
    {Qt::Key_End, kAlt | kShift, false, true, Grow<Move::LineEnd>},
    {Qt::Key_PageUp, kAlt | kShift, false, true, GrowPage<-1>},
    {Qt::Key_PageDown, kAlt | kShift, false, true, GrowPage<1>},
    {Qt::Key_Up, kCtrl, false, false, Scroll<-1>},
    {Qt::Key_Down, kCtrl, false, false, Scroll<1>},
    {Qt::Key_Backspace, kNone, false, false, Do<&M::Backspace>},
    {Qt::Key_Backspace, kShift, false, false, Do<&M::Backspace>},
    {Qt::Key_Backspace, kCtrl, false, false, DeleteWord<true>},
    {Qt::Key_Backspace, kAlt, false, true, Do<&M::Undo>},
    {Qt::Key_Delete, kNone, false, false, Do<&M::Delete>},
    {Qt::Key_Delete, kCtrl, false, false, DeleteWord<false>},
    {Qt::Key_Return, kNone, false, false, Do<&M::NewLine>},
    {Qt::Key_Return, kShift, false, false, Do<&M::NewLine>},
    {Qt::Key_Enter, kNone, false, false, Do<&M::NewLine>},
    {Qt::Key_Enter, kShift, false, false, Do<&M::NewLine>},
    {Qt::Key_Tab, kNone, false, false, Do<&M::Tab>},
    {Qt::Key_Tab, kShift, false, false, Do<&M::Backtab>},
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
    {Qt::Key_Z, kCtrl, false, true, Do<&M::Undo>},
    {Qt::Key_Z, kCtrl | kShift, false, true, Do<&M::Redo>},
    {Qt::Key_Plus, kCtrl, false, true, Zoom<1>},
    {Qt::Key_Plus, kCtrl | kShift, false, true, Zoom<1>},
    {Qt::Key_Equal, kCtrl, false, true, Zoom<1>},
    {Qt::Key_Minus, kCtrl, false, true, Zoom<-1>},
    {Qt::Key_0, kCtrl, false, true, Zoom<0>},
    {Qt::Key_Backslash, kCtrl, false, false, AskSubValue},
    {Qt::Key_BracketRight, kCtrl, false, false, AskValue},
    {Qt::Key_F10, kShift, false, false, AskMenu}, // Qt knows the key of its own alone, which many keyboards lack
};

/// Null when the key has no binding.
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

/// The text that the key types, empty for none.
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

/// The key is ours only while it has something to do.
bool LeavesSeveral(const QKeyEvent& event, const SourceView& model)
{
    return event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier && model.HasSeveral();
}

/// What an input method sees of a line round the caret; more would be copied for nothing.
constexpr int32_t kSurrounding = 512;

} // namespace

// Keys

bool SourceViewWidget::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // Keys of ours that no menu may take. The others reach the menu first, and us when it has none.
        auto* key = static_cast<QKeyEvent*>(event);
        const KeyBinding* binding = FindBinding(*key);
        bool plain = !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
        if (LeavesSeveral(*key, model_) || (binding && !binding->yields) ||
            (!binding && plain && !TypedText(*key).isEmpty())) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void SourceViewWidget::keyPressEvent(QKeyEvent* event)
{
    glide_.Finish();
    if (const KeyBinding* binding = FindBinding(*event)) {
        CommitPreedit();
        binding->run(*this, binding->shiftExtends && (event->modifiers() & Qt::ShiftModifier));
        event->accept();
        return;
    }
    if (LeavesSeveral(*event, model_)) {
        CommitPreedit();
        model_.KeepMainCaret();
        return event->accept();
    }
    QString text = TypedText(*event);
    if (text.isEmpty()) return event->ignore();
    model_.TypeText(text.toStdU16String());
    event->accept();
}

// Input methods

void SourceViewWidget::inputMethodEvent(QInputMethodEvent* event)
{
    SetPreedit(QInputMethodEvent());
    const bool composes = !event->preeditString().isEmpty() || !event->commitString().isEmpty();
    if (composes && !model_.MayEdit()) return event->accept();
    if (!event->preeditString().isEmpty() && model_.AnySelection()) model_.DeleteSelection();
    if (event->replacementLength() > 0 || !event->commitString().isEmpty()) {
        if (event->replacementLength() > 0) model_.SelectAround(event->replacementStart(), event->replacementLength());
        model_.TypeText(event->commitString().toStdU16String());
    }
    SetPreedit(*event);
    RevealPlace(model_.Caret());
    event->accept();
}

void SourceViewWidget::SetPreedit(const QInputMethodEvent& event)
{
    if (preedit_.isEmpty() && event.preeditString().isEmpty()) return;
    preedit_ = event.preeditString();
    preeditCursor_ = static_cast<int32_t>(preedit_.size());
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        if (attribute.type == QInputMethodEvent::Cursor) preeditCursor_ = attribute.start;
    }
    cache_.SetPreedit(model_.Caret(), preedit_.toStdU16String());
    int32_t line = model_.Caret().line;
    UpdateLines(line, model_.LineWrap() ? document_.LineCount() : line);
    updateMicroFocus();
}

void SourceViewWidget::CommitPreedit()
{
    if (preedit_.isEmpty()) return;
    QGuiApplication::inputMethod()->commit();
    SetPreedit(QInputMethodEvent());
}

QVariant SourceViewWidget::inputMethodQuery(Qt::InputMethodQuery query) const
{
    // The caret's place is asked for in a const call; measuring a line may build it.
    auto& self = const_cast<SourceViewWidget&>(*this);
    Position caret = model_.Caret();
    Position anchor = model_.Anchor();
    int32_t first = std::max(caret.col - kSurrounding, 0);
    auto part = [&](int32_t from, int32_t to) {
        return ToQString(document_.GetRange({from, caret.line}, {to, caret.line}));
    };
    switch (query) {
    case Qt::ImEnabled: return isEnabled();
    case Qt::ImHints: return int(Qt::ImhMultiLine | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    case Qt::ImFont: return metrics_.StyledFont(0);
    case Qt::ImCursorRectangle: {
        QRectF rect = self.CaretRect();
        return rect.translated(viewport()->pos());
    }
    case Qt::ImCursorPosition: return caret.col - first;
    case Qt::ImAbsolutePosition: return caret.col;
    case Qt::ImAnchorPosition: return anchor.line == caret.line ? std::max(anchor.col - first, 0) : caret.col - first;
    case Qt::ImSurroundingText: return part(first, caret.col + kSurrounding);
    case Qt::ImTextBeforeCursor: return part(first, caret.col);
    case Qt::ImTextAfterCursor: return part(caret.col, caret.col + kSurrounding);
    case Qt::ImCurrentSelection: return QString::fromStdU16String(model_.SelectedText());
    default: return QAbstractScrollArea::inputMethodQuery(query);
    }
}

// Focus and blinking

void SourceViewWidget::RestartBlink()
{
    caretOn_ = true;
    UpdateCaret();
    int flash = QApplication::cursorFlashTime();
    if (hasFocus() && flash > 1) {
        blinkTimer_.start(flash / 2);
    } else {
        blinkTimer_.stop();
    }
}

void SourceViewWidget::Blink()
{
    caretOn_ = !caretOn_;
    UpdateCaret();
}

void SourceViewWidget::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    emit focused();
    RestartBlink();
    viewport()->update();
}

void SourceViewWidget::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    if (primaryTimer_.isActive()) PublishSelection();
    RestartBlink();
    viewport()->update();
}

} // namespace nib
