// Keys, input methods, focus and the caret's blinking; part of SourceViewWidget.

#include "text/widget/KeyMap.h"
#include "text/widget/SourceViewWidget.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QTextCharFormat>

#include <algorithm>

namespace nib {

namespace {

/// What an input method sees of a line round the caret; more would be copied for nothing.
constexpr int32_t kSurrounding = 512;

QString ToQString(TextView text)
{
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

} // namespace

// Keys

bool SourceViewWidget::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // Keys of ours that no menu may take. The others reach the menu first, and us when it has none.
        auto* key = static_cast<QKeyEvent*>(event);
        const KeyBinding* binding = FindBinding(*key);
        bool plain = !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
        if ((binding && !binding->yields) || (!binding && plain && !TypedText(*key).isEmpty())) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void SourceViewWidget::keyPressEvent(QKeyEvent* event)
{
    if (const KeyBinding* binding = FindBinding(*event)) {
        CommitPreedit();
        binding->run(*this, binding->shiftExtends && (event->modifiers() & Qt::ShiftModifier));
        event->accept();
        return;
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
    if (!event->preeditString().isEmpty() && model_.HasSelection()) model_.Delete();
    if (event->replacementLength() > 0 || !event->commitString().isEmpty()) {
        if (event->replacementLength() > 0) {
            Position caret = model_.Caret();
            Position start{std::max(caret.col + event->replacementStart(), 0), caret.line};
            model_.SetSelection(start, {start.col + event->replacementLength(), caret.line});
        }
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
    UpdateLines(line, model_.LineWrap() ? buffer_.LineCount() : line);
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
    Text scratch;
    TextView line = buffer_.LineText(caret.line, scratch);
    int32_t first = std::max(caret.col - kSurrounding, 0);
    auto part = [&](int32_t from, int32_t to) {
        from = std::clamp(from, 0, static_cast<int32_t>(line.size()));
        to = std::clamp(to, from, static_cast<int32_t>(line.size()));
        return ToQString(line.substr(static_cast<size_t>(from), static_cast<size_t>(to - from)));
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
