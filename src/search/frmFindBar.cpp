#include "search/frmFindBar.h"

#include "platform/qt/QtText.h"
#include "search/QtHitText.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>

#include <limits>

namespace nib {

namespace {

constexpr int kFieldChars = 40;
constexpr int kCountChars = 14;

} // namespace

frmFindBar::frmFindBar(TypedFind& find, FindEngine& engine, HitLights& lights, QWidget* owner)
    : QToolBar(owner), find_(find), engine_(engine), lights_(lights)
{
    setWindowTitle(tr("Find"));
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    toggleViewAction()->setVisible(false);
    Build();
    hide();
}

void frmFindBar::Build()
{
    QToolButton* close = AddButton({}, tr("Close (Escape)"));
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    connect(close, &QToolButton::clicked, this, &frmFindBar::HideBar);
    auto* label = new QLabel(tr("Find:"));
    label->setContentsMargins(4, 0, 4, 0);
    addWidget(label);
    txtFind_ = new QLineEdit;
    txtFind_->setAccessibleName(tr("Find"));
    txtFind_->setMaxLength(std::numeric_limits<int>::max());
    txtFind_->setClearButtonEnabled(true);
    txtFind_->setMaximumWidth(txtFind_->fontMetrics().averageCharWidth() * kFieldChars);
    label->setBuddy(txtFind_);
    addWidget(txtFind_);
    connect(AddButton(QStringLiteral("\u2191"), tr("The hit before (Shift+Enter)")), &QToolButton::clicked, this,
            [this] { Step(true); });
    connect(AddButton(QStringLiteral("\u2193"), tr("The next hit (Enter)")), &QToolButton::clicked, this,
            [this] { Step(false); });
    lbCount_ = new QLabel;
    lbCount_->setTextFormat(Qt::PlainText);
    lbCount_->setContentsMargins(8, 0, 8, 0);
    lbCount_->setMinimumWidth(lbCount_->fontMetrics().averageCharWidth() * kCountChars);
    addWidget(lbCount_);
    AddRule(QStringLiteral("Aa"), tr("Match case"), &FindDialog::matchCase);
    AddRule(QStringLiteral("|a|"), tr("Match whole word only"), &FindDialog::wholeWord);
    AddRule(QStringLiteral(".*"), tr("Regular expression"), &FindDialog::regex);
    addSeparator();
    connect(AddButton(tr("Find All"), tr("Lists all hits")), &QToolButton::clicked, this, [this] {
        if (!engine_.Dialog().findText.empty() && findAll) findAll();
    });
    connect(AddButton(tr("In Account..."), tr("Searches all items of files of an account")), &QToolButton::clicked,
            this, [this] {
                HideBar();
                if (findInAccount) findInAccount();
            });
    lbWrapped_ = new QLabel;
    addWidget(lbWrapped_);

    txtFind_->installEventFilter(this);
    connect(txtFind_, &QLineEdit::textChanged, this, [this](const QString& text) {
        engine_.Dialog().findText = ViewOf(text);
        Typed();
    });
    lights_.OnChange([this] { ShowCount(); });
}

QToolButton* frmFindBar::AddButton(const QString& text, const QString& tip)
{
    auto* button = new QToolButton;
    button->setText(text);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->installEventFilter(this);
    addWidget(button);
    return button;
}

QToolButton* frmFindBar::AddRule(const QString& text, const QString& tip, bool FindDialog::*rule)
{
    QToolButton* button = AddButton(text, tip);
    button->setCheckable(true);
    connect(button, &QToolButton::toggled, this, [this, rule](bool on) {
        engine_.Dialog().*rule = on;
        Typed();
    });
    rules_.emplace_back(button, rule);
    return button;
}

void frmFindBar::ShowBar()
{
    if (!find_.Begin()) return;
    const FindDialog& dialog = engine_.Dialog();
    {
        const QSignalBlocker quiet(txtFind_);
        txtFind_->setText(ToQString(dialog.findText));
    }
    for (const auto& [button, rule] : rules_) {
        const QSignalBlocker quiet(button);
        button->setChecked(dialog.*rule);
    }
    // A bar looks through the document in front.
    engine_.Dialog().lookIn = LookIn::Document;
    show();
    txtFind_->setFocus(Qt::ShortcutFocusReason);
    txtFind_->selectAll();
    lights_.Show();
    Show(TypedFind::Outcome::Nothing);
}

void frmFindBar::HideBar()
{
    hide();
    engine_.Remember();
    if (onLeave) onLeave();
}

void frmFindBar::hideEvent(QHideEvent* event)
{
    lights_.Hide();
    QToolBar::hideEvent(event);
}

void frmFindBar::Typed()
{
    if (!isVisible()) return;
    const TypedFind::Outcome outcome = find_.Typed();
    lights_.Show();
    Show(outcome);
}

void frmFindBar::Step(bool up)
{
    const TypedFind::Outcome outcome = find_.Step(up);
    lights_.Show();
    Show(outcome);
}

void frmFindBar::Show(TypedFind::Outcome outcome)
{
    lbWrapped_->setText(outcome == TypedFind::Outcome::Wrapped  ? tr("Round the end of the text")
                        : outcome == TypedFind::Outcome::Faulty ? Translated(find_.Fault())
                                                                : QString());
    ShowCount();
    if (engine_.Dialog().Fault()) lbWrapped_->clear(); // the count says so, with the place
}

void frmFindBar::ShowCount()
{
    if (isVisible()) ShowHits(*lbCount_, engine_.Dialog(), lights_.Count());
}

bool frmFindBar::Pressed(int key, Qt::KeyboardModifiers modifiers, bool onlyAsking)
{
    const bool shift = modifiers == Qt::ShiftModifier;
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool steps = enter || key == Qt::Key_F3;
    if (modifiers != Qt::NoModifier && modifiers != Qt::KeypadModifier && !(shift && steps)) return false;
    if (key != Qt::Key_Escape && !steps) return false;
    if (onlyAsking) return true;
    if (key == Qt::Key_Escape)
        HideBar();
    else
        Step(shift);
    return true;
}

bool frmFindBar::eventFilter(QObject* watched, QEvent* event)
{
    const bool asking = event->type() == QEvent::ShortcutOverride;
    if (asking || event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isBars = watched == txtFind_ || key->key() == Qt::Key_Escape;
        if (isBars && Pressed(key->key(), key->modifiers(), asking)) {
            event->accept();
            return true;
        }
    }
    return QToolBar::eventFilter(watched, event);
}

} // namespace nib
