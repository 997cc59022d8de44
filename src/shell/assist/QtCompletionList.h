#pragma once
#include "language/service/LanguageService.h"

#include <QCoreApplication>
#include <QFrame>

#include <functional>

class QLabel;
class QListWidget;

namespace nib {

/// What is suggested for the word at the caret, and help about the one that is chosen. Takes no focus: the keys go to
/// the text, whose holder hands on those that are meant for it.
class QtCompletionList final : public QFrame {
    Q_DECLARE_TR_FUNCTIONS(QtCompletionList)
public:
    explicit QtCompletionList(QWidget* owner);

    /// Below a cell of the text, or above it where there is no room.
    void ShowItems(const std::vector<Completion>& items, const QRect& cell, const QFont& font);
    /// -1: none; the first is described all the same.
    void Choose(int32_t item);
    int PageRows() const;

    /// With the mouse.
    std::function<void(int32_t item)> onPick;

private:
    void Describe(const Completion& item);
    void Place();

    std::vector<Completion> items_;
    QListWidget* list_;
    QLabel* help_;
    QRect cell_;
};

/// A small window of text at a cell that takes no focus either: above it, or below where there is no room.
class QtTip final : public QFrame {
public:
    explicit QtTip(QWidget* owner);
    void ShowAbove(const QString& html, const QRect& cell);

private:
    QLabel* text_;
};

/// Form and help as a rich text; `from` and `to` are the part of the form to stand out.
QString HelpHtml(TextView form, TextView help, int32_t from = 0, int32_t to = 0);

} // namespace nib
