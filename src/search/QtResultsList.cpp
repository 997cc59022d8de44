#include "search/QtResultsList.h"

#include "platform/qt/QtText.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>

namespace nib {

// A text document ends its paragraph at these as well, but a line here is a line.
QString ShownResults(TextView contents)
{
    QString shown = ToQString(contents);
    for (QChar& c : shown)
        if (c == QChar::ParagraphSeparator || c == QChar(0xFDD0) || c == QChar(0xFDD1)) c = QChar::ReplacementCharacter;
    return shown;
}

QList<QTextLayout::FormatRange> ResultsFormats(const ResultsLine& style, int length, const QPalette& palette)
{
    QTextLayout::FormatRange range;
    range.start = 0;
    range.length = length;
    if (style.highlightLength > 0) {
        range.start = style.highlightStart;
        range.length = style.highlightLength;
        range.format.setBackground(palette.color(QPalette::Active, QPalette::Highlight));
        range.format.setForeground(palette.color(QPalette::Active, QPalette::HighlightedText));
    } else if (style.bold) {
        range.format.setFontWeight(QFont::Bold);
    } else if (style.underlined) {
        range.length = length - 1; // not under the blank that ends each line
        range.format.setFontUnderline(true);
    } else {
        return {};
    }
    return {range};
}

namespace {

QKeyCombination KeyOf(QEvent* event)
{
    return static_cast<QKeyEvent*>(event)->keyCombination();
}

bool IsEnter(QEvent* event)
{
    const Qt::Key key = KeyOf(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool IsEscape(QEvent* event)
{
    return KeyOf(event) == QKeyCombination(Qt::Key_Escape);
}

bool IsSelectAll(QEvent* event)
{
    return static_cast<QKeyEvent*>(event)->matches(QKeySequence::SelectAll);
}

} // namespace

QtResultsList::QtResultsList(const ResultsModel& model) : model_(model)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

/// Its keys mean the list, not the document behind it.
bool QtResultsList::event(QEvent* event)
{
    const bool asked = event->type() == QEvent::ShortcutOverride;
    if (asked && (IsEnter(event) || IsEscape(event) || IsSelectAll(event) || ActionOf(event))) {
        event->accept();
        return true;
    }
    return QPlainTextEdit::event(event);
}

void QtResultsList::paintEvent(QPaintEvent* event)
{
    DressVisible();
    QPlainTextEdit::paintEvent(event);
}

void QtResultsList::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) ++dress_;
    QPlainTextEdit::changeEvent(event);
}

void QtResultsList::keyPressEvent(QKeyEvent* event)
{
    if (IsEnter(event)) return onEnter();
    if (IsEscape(event)) return onEscape();
    if (QAction* action = ActionOf(event)) return action->trigger();
    QPlainTextEdit::keyPressEvent(event);
}

void QtResultsList::mouseDoubleClickEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && onDoubleClick) onDoubleClick();
}

void QtResultsList::contextMenuEvent(QContextMenuEvent* event)
{
    if (popup && !(event->modifiers() & Qt::ShiftModifier)) popup->popup(event->globalPos());
}

/// As it stands in the list, not as a rich text would give it.
QMimeData* QtResultsList::createMimeDataFromSelection() const
{
    const QTextCursor cursor = textCursor();
    const auto start = static_cast<size_t>(cursor.selectionStart());
    const auto length = static_cast<size_t>(cursor.selectionEnd()) - start;
    auto* mime = new QMimeData;
    const TextView contents = model_.Contents();
    if (start <= contents.size()) mime->setText(ToQString(contents.substr(start, length)));
    return mime;
}

QAction* QtResultsList::ActionOf(QEvent* event) const
{
    for (QAction* action : actions())
        if (action->isEnabled() && action->shortcut() == QKeySequence(KeyOf(event))) return action;
    return nullptr;
}

void QtResultsList::DressVisible()
{
    const int bottom = viewport()->height();
    QTextBlock block = firstVisibleBlock();
    for (double y = contentOffset().y(); block.isValid() && y < bottom; block = block.next()) {
        if (block.userState() != dress_ && block.blockNumber() < model_.LineCount()) {
            block.setUserState(dress_);
            const auto formats = ResultsFormats(model_.LineStyle(block.blockNumber()), block.length() - 1, palette());
            block.layout()->setFormats(formats);
            if (!formats.empty()) block.clearLayout();
        }
        y += blockBoundingRect(block).height();
    }
}

} // namespace nib
