#pragma once
// The list of results as the text that it is.

#include "search/ResultsModel.h"

#include <QPlainTextEdit>
#include <QTextLayout>

#include <functional>

namespace nib {

/// As the list shows it: with a paragraph for each line.
QString ShownResults(TextView contents);
QList<QTextLayout::FormatRange> ResultsFormats(const ResultsLine& style, int length, const QPalette& palette);

/// Lines are dressed when they are first painted, so that a long list costs what is seen of it.
class QtResultsList final : public QPlainTextEdit {
public:
    explicit QtResultsList(const ResultsModel& model);

    std::function<void()> onDoubleClick;
    std::function<void()> onEnter;
    std::function<void()> onEscape;
    QMenu* popup = nullptr;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    /// Of those that the list has a key for.
    QAction* ActionOf(QEvent* event) const;
    void DressVisible();

    const ResultsModel& model_;
    int dress_ = 1; ///< which way of dressing the lines is the present one
};

} // namespace nib
