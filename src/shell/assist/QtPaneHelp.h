#pragma once
// The comforts at the caret and the mouse of one pane: suggestions, help about parameters, help on what is pointed at.

#include "shell/assist/Assistance.h"
#include "shell/assist/CompletionModel.h"
#include "shell/assist/NameCommands.h"

#include <QCoreApplication>
#include <QObject>
#include <QPoint>
#include <QTimer>

class QKeyEvent;

namespace nib {

class QtCompletionList;
class QtTip;
class SourceViewWidget;

class QtPaneHelp final : public QObject {
    Q_DECLARE_TR_FUNCTIONS(QtPaneHelp)
public:
    /// The pane owns it; the others outlive it.
    QtPaneHelp(Assistance& assistance, DocumentServices& services, NameCommands& names, int32_t documentId,
               SourceViewWidget& pane);

    /// The user asks for suggestions.
    void Complete();
    /// A menu of what mends the findings of the caret's line.
    void ShowMends();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Typed { Letters, Return, Other };

    bool TakesKey(const QKeyEvent& event);
    void AfterKey(Typed typed, const QString& text);
    void Suggest(bool automatic);
    void OfferCloser();
    void ShowList();
    void CloseList();
    void Accept();
    void CloseAll();
    void AskSignature();
    void ShowSignature(const SignatureHelp& help);
    void AskHover();
    /// On what is at the caret, or else the help pages.
    void AskHelp();
    /// What is wrong at a place, and what is known of it.
    QString PlaceHtml(Position at, const std::optional<HoverText>& hover) const;
    void ShowAtCaret(const QString& html);
    void ShowHover(Position at, const std::optional<HoverText>& hover, QPoint point);
    QString MarksHtml(int32_t line) const;
    /// All that is wrong in a line.
    QString LineHtml(int32_t line) const;
    /// As long as the mouse stays in `place`.
    void ShowTip(const QString& html, QPoint point, const QRect& place);
    QRect CellAt(Position p) const;
    QFont CodeFont() const;
    std::shared_ptr<mvDocument> Document() const;

    Assistance& assistance_;
    DocumentServices& services_;
    NameCommands& names_;
    const int32_t documentId_;
    SourceViewWidget& pane_;
    CompletionModel model_;
    QtCompletionList* list_ = nullptr; ///< these two are owned by the pane
    QtTip* tip_ = nullptr;
    int32_t asked_ = 0; ///< counts the questions for a list: what was closed since is not opened again
    QTimer hover_;
    QPoint pointed_;
};

} // namespace nib
