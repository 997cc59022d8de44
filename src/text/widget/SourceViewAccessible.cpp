#include "text/widget/SourceViewAccessible.h"

#include "platform/qt/QtText.h"
#include "text/TextSearch.h"
#include "text/widget/SourceViewWidget.h"

#include <algorithm>
#include <memory>

namespace nib {

namespace {

QAccessibleInterface* Make(const QString& /*className*/, QObject* object)
{
    auto* view = qobject_cast<SourceViewWidget*>(object);
    // Qt keeps it, and deletes it with the widget.
    return view ? std::make_unique<SourceViewAccessible>(*view).release() : nullptr;
}

} // namespace

void InstallSourceViewAccessible()
{
    QAccessible::installFactory(Make);
}

SourceViewAccessible::SourceViewAccessible(SourceViewWidget& widget)
    : QAccessibleWidget(&widget, QAccessible::EditableText), view_(widget), text_(widget.ForTools())
{
}

void* SourceViewAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface) return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State SourceViewAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = state.selectableText = true;
    state.readOnly = view_.Model().ReadOnly();
    state.editable = !state.readOnly;
    return state;
}

QString SourceViewAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Value ? text(0, characterCount()) : QAccessibleWidget::text(kind);
}

// Selection and caret

void SourceViewAccessible::selection(int index, int* startOffset, int* endOffset) const
{
    *startOffset = *endOffset = 0;
    if (index != 0 || !view_.Model().HasSelection()) return;
    auto [start, end] = view_.Model().Selection();
    *startOffset = text_.Of(start);
    *endOffset = text_.Of(end);
}

int SourceViewAccessible::selectionCount() const
{
    return view_.Model().HasSelection() ? 1 : 0;
}

void SourceViewAccessible::addSelection(int startOffset, int endOffset)
{
    setSelection(0, startOffset, endOffset);
}

void SourceViewAccessible::removeSelection(int index)
{
    if (index == 0) view_.Model().SetCaret(view_.Model().Caret());
}

void SourceViewAccessible::setSelection(int index, int startOffset, int endOffset)
{
    if (index == 0) view_.Model().SetSelection(text_.At(startOffset), text_.At(endOffset));
}

int SourceViewAccessible::cursorPosition() const
{
    return text_.Of(view_.Model().Caret());
}

void SourceViewAccessible::setCursorPosition(int offset)
{
    view_.Model().SetCaret(text_.At(offset));
}

// Text

int SourceViewAccessible::characterCount() const
{
    return text_.Count();
}

QString SourceViewAccessible::text(int startOffset, int endOffset) const
{
    return ToQString(text_.Range(startOffset, endOffset));
}

SourceViewAccessible::Stretch SourceViewAccessible::UnitAt(int32_t offset, QAccessible::TextBoundaryType boundary) const
{
    int32_t count = characterCount();
    if (boundary == QAccessible::NoBoundary) return {0, count};
    offset = std::clamp(offset, 0, count);
    Position at = text_.At(offset);
    Text scratch;
    TextView line = view_.Model().Document().LineText(at.line, scratch);
    auto size = static_cast<int32_t>(line.size());
    int32_t start = offset - at.col;
    int32_t lineEnd = std::min(start + size + 1, count);
    bool small = boundary == QAccessible::CharBoundary || boundary == QAccessible::WordBoundary;
    if (!small) return {start, lineEnd};
    if (at.col >= size) return {offset, lineEnd};
    if (boundary == QAccessible::WordBoundary) {
        ColumnRange word = WordAt(line, at.col);
        return {start + word.first, start + word.last};
    }
    return {start + GraphemeStart(line, at.col), start + NextGrapheme(line, at.col)};
}

QString SourceViewAccessible::Answer(Stretch stretch, int* startOffset, int* endOffset) const
{
    *startOffset = stretch.first;
    *endOffset = stretch.last;
    return text(stretch.first, stretch.last);
}

QString SourceViewAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                           int* endOffset) const
{
    return Answer(UnitAt(offset, boundary), startOffset, endOffset);
}

QString SourceViewAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                               int* endOffset) const
{
    int32_t first = UnitAt(offset, boundary).first;
    return Answer(first > 0 ? UnitAt(first - 1, boundary) : Stretch{0, 0}, startOffset, endOffset);
}

QString SourceViewAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                              int* endOffset) const
{
    int32_t last = UnitAt(offset, boundary).last;
    int32_t count = characterCount();
    return Answer(last < count ? UnitAt(last, boundary) : Stretch{count, count}, startOffset, endOffset);
}

QRect SourceViewAccessible::characterRect(int offset) const
{
    QRectF cell = view_.CellOf(text_.At(offset));
    if (cell.isEmpty()) return {};
    QRect rect = cell.toAlignedRect();
    return {view_.viewport()->mapToGlobal(rect.topLeft()), rect.size()};
}

int SourceViewAccessible::offsetAtPoint(const QPoint& point) const
{
    QPoint local = view_.viewport()->mapFromGlobal(point);
    if (!view_.viewport()->rect().contains(local)) return -1;
    return text_.Of(view_.PositionAt(local, true));
}

void SourceViewAccessible::scrollToSubstring(int startIndex, int /*endIndex*/)
{
    view_.RevealPlace(text_.At(startIndex));
}

QString SourceViewAccessible::attributes(int offset, int* startOffset, int* endOffset) const
{
    Position at = text_.At(offset);
    int32_t lineStart = text_.Of({0, at.line});
    int32_t first = 0;
    int32_t last = 0;
    ScreenStyle style = view_.StyleAt(at, first, last);
    *startOffset = lineStart + first;
    *endOffset = lineStart + last;
    QString answer =
        QStringLiteral("color:rgb(%1,%2,%3);").arg(style.color.red()).arg(style.color.green()).arg(style.color.blue());
    if (style.style & token_style::kBold) answer += QStringLiteral("font-weight:bold;");
    if (style.style & token_style::kItalic) answer += QStringLiteral("font-style:italic;");
    return answer;
}

// Editing

void SourceViewAccessible::deleteText(int startOffset, int endOffset)
{
    replaceText(startOffset, endOffset, {});
}

void SourceViewAccessible::insertText(int offset, const QString& text)
{
    replaceText(offset, offset, text);
}

void SourceViewAccessible::replaceText(int startOffset, int endOffset, const QString& text)
{
    setSelection(0, startOffset, endOffset);
    if (text.isEmpty()) {
        if (startOffset != endOffset) view_.Model().Delete();
    } else {
        view_.Model().Insert(text.toStdU16String());
    }
}

} // namespace nib
