#pragma once
// The bar below the documents: finds while one types.

#include "search/HitLights.h"
#include "search/TypedFind.h"

#include <QCoreApplication>
#include <QToolBar>

#include <functional>

class QLabel;
class QLineEdit;
class QToolButton;

namespace nib {

class frmFindBar final : public QToolBar {
    Q_DECLARE_TR_FUNCTIONS(frmFindBar)
public:
    /// All outlive the bar.
    frmFindBar(TypedFind& find, FindEngine& engine, HitLights& lights, QWidget* owner = nullptr);

    /// Comes up for the document in front, with the focus.
    void ShowBar();
    void HideBar();

    /// The keys go back to the text.
    std::function<void()> onLeave;
    std::function<void()> findInAccount;
    /// All hits are to be listed.
    std::function<void()> findAll;

protected:
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Build();
    QToolButton* AddButton(const QString& text, const QString& tip);
    QToolButton* AddRule(const QString& text, const QString& tip, bool FindDialog::*rule);
    void Typed();
    void Step(bool up);
    void Show(TypedFind::Outcome outcome);
    void ShowCount();
    /// True when the key is the bar's.
    bool Pressed(int key, Qt::KeyboardModifiers modifiers, bool onlyAsking);

    TypedFind& find_;
    FindEngine& engine_;
    HitLights& lights_;
    QLineEdit* txtFind_ = nullptr;
    QLabel* lbCount_ = nullptr;
    QLabel* lbWrapped_ = nullptr;
    std::vector<std::pair<QToolButton*, bool FindDialog::*>> rules_;
};

} // namespace nib
