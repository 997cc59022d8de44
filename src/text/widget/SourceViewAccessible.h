#pragma once
// The view as readers of a screen and other assistive tools see it.

#include "text/widget/AccessibleText.h"

#include <QAccessibleWidget>

namespace nib {

class SourceViewWidget;

class SourceViewAccessible final : public QAccessibleWidget,
                                   public QAccessibleTextInterface,
                                   public QAccessibleEditableTextInterface {
public:
    explicit SourceViewAccessible(SourceViewWidget& widget);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;

    // QAccessibleTextInterface
    void selection(int index, int* startOffset, int* endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int index) override;
    void setSelection(int index, int startOffset, int endOffset) override;
    int cursorPosition() const override;
    void setCursorPosition(int offset) override;
    QString text(int startOffset, int endOffset) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                             int* endOffset) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                            int* endOffset) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                         int* endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

    // QAccessibleEditableTextInterface
    void deleteText(int startOffset, int endOffset) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int startOffset, int endOffset, const QString& text) override;

private:
    struct Stretch {
        int32_t first;
        int32_t last;
    };
    Stretch UnitAt(int32_t offset, QAccessible::TextBoundaryType boundary) const;
    QString Answer(Stretch stretch, int* startOffset, int* endOffset) const;

    SourceViewWidget& view_;
    AccessibleText& text_;
};

/// Makes Qt find the above for each SourceViewWidget; harmless when called again.
void InstallSourceViewAccessible();

} // namespace nib
