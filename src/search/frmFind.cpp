#include "search/frmFind.h"

#include "platform/qt/QtText.h"
#include "search/BesideMatch.h"
#include "search/QtHitText.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QWindow>

#include <algorithm>
#include <limits>

namespace nib {

namespace {

constexpr int kFieldChars = 36;
/// What is pasted is never cut short: another text would be searched and replaced than was meant.
constexpr int kLongestText = std::numeric_limits<int>::max();
constexpr double kLargestPoints = 12;
constexpr int kUp = 0;
constexpr int kDown = 1;

QRadioButton* AddOption(QButtonGroup& group, int id, const QString& caption, QLayout& layout)
{
    auto* option = new QRadioButton(caption);
    group.addButton(option, id);
    layout.addWidget(option);
    return option;
}

ScreenArea AreaOf(const QRect& rect)
{
    return {rect.left(), rect.top(), rect.width(), rect.height()};
}

/// A row of options, which a label names for the eye.
QHBoxLayout* RowOf(QWidget& options, const QString& name)
{
    options.setAccessibleName(name);
    auto* row = new QHBoxLayout(&options);
    row->setContentsMargins(0, 0, 0, 0);
    return row;
}

} // namespace

frmFind::frmFind(FindEngine& engine, HitLights& lights, QWidget* owner)
    : QDialog(owner), engine_(engine), lights_(lights)
{
    Build();
    Connect();
    SetFont();
    ShowState();
}

void frmFind::Build()
{
    cboFind_ = new QComboBox;
    cboFind_->setEditable(true);
    cboFind_->setInsertPolicy(QComboBox::NoInsert);
    cboFind_->setCompleter(nullptr); // what was typed is searched, not what it resembles
    cboFind_->setMinimumContentsLength(kFieldChars);
    cboFind_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboFind_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    cboFind_->setAccessibleName(tr("Find what"));
    cboFind_->lineEdit()->setAccessibleName(tr("Find what"));
    cboFind_->lineEdit()->setMaxLength(kLongestText);
    lbFind_ = new QLabel(tr("Fi&nd what:"));
    lbFind_->setBuddy(cboFind_);
    txtRepl_ = new QLineEdit;
    txtRepl_->setAccessibleName(tr("Replace with"));
    txtRepl_->setMaxLength(kLongestText);
    lbRepl_ = new QLabel(tr("Re&place with:"));
    lbRepl_->setBuddy(txtRepl_);
    lbState_ = new QLabel(QStringLiteral("0"));
    lbState_->setTextFormat(Qt::PlainText);
    lbState_->setMinimumHeight(lbState_->sizeHint().height());

    auto* grid = new QGridLayout(this);
    grid->addWidget(lbFind_, 0, 0);
    grid->addWidget(cboFind_, 0, 1);
    grid->addWidget(lbState_, 1, 1);
    grid->addWidget(lbRepl_, 2, 0);
    grid->addWidget(txtRepl_, 2, 1);
    const std::pair<QString, QWidget*> rows[] = {
        {tr("Look in:"), BuildLookIn()}, {tr("Direction:"), BuildDirection()}, {tr("Options:"), BuildRules()}};
    for (int row = 3; const auto& [caption, options] : rows) {
        grid->addWidget(new QLabel(caption), row, 0);
        grid->addWidget(options, row++, 1);
    }
    grid->addWidget(BuildButtons(), 0, 2, 7, 1);
    grid->setRowStretch(6, 1);
    grid->setColumnStretch(1, 1);

    QList<QWidget*> order{cboFind_, txtRepl_};
    for (QAbstractButton* option : optLookIn_->buttons()) order.append(option);
    for (QAbstractButton* option : optDirection_->buttons()) order.append(option);
    order << chkMatchCase_ << chkWholeWord_ << chkRegex_ << cmdFind_ << cmdFindAll_ << cmdBookmark_ << cmdRepl_
          << cmdReplAll_ << cmdAccount_ << cmdCancel_;
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

QWidget* frmFind::BuildLookIn()
{
    auto* options = new QWidget;
    auto* row = RowOf(*options, tr("Look in:"));
    optLookIn_ = new QButtonGroup(this);
    AddOption(*optLookIn_, static_cast<int>(LookIn::Document), tr("Curr&ent document"), *row);
    AddOption(*optLookIn_, static_cast<int>(LookIn::AllDocuments), tr("All &open documents"), *row);
    AddOption(*optLookIn_, static_cast<int>(LookIn::Selection), tr("&Selected text"), *row);
    row->addStretch(1);
    return options;
}

QWidget* frmFind::BuildDirection()
{
    auto* options = new QWidget;
    auto* row = RowOf(*options, tr("Direction"));
    optDirection_ = new QButtonGroup(this);
    AddOption(*optDirection_, kUp, tr("&Up"), *row);
    AddOption(*optDirection_, kDown, tr("&Down"), *row);
    lbDownOnly_ = new QLabel(tr("(text is replaced downwards)"));
    lbDownOnly_->setEnabled(false);
    row->addWidget(lbDownOnly_);
    row->addStretch(1);
    return options;
}

QWidget* frmFind::BuildRules()
{
    auto* options = new QWidget;
    auto* row = RowOf(*options, tr("Options:"));
    const auto add = [&](const QString& caption) {
        auto* box = new QCheckBox(caption);
        row->addWidget(box);
        return box;
    };
    chkMatchCase_ = add(tr("Match &case"));
    chkWholeWord_ = add(tr("Match &whole word only"));
    chkRegex_ = add(tr("Regular e&xpression"));
    chkRegex_->setToolTip(tr("In each line; $1 in the replacement is what the first pair of parentheses found."));
    row->addStretch(1);
    return options;
}

QWidget* frmFind::BuildButtons()
{
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    auto add = [&](const QString& caption) {
        auto* button = new QPushButton(caption);
        button->setAutoDefault(true);
        column->addWidget(button);
        return button;
    };
    cmdFind_ = add(tr("&Find Next"));
    cmdFindAll_ = add(tr("Find &All"));
    cmdBookmark_ = add(tr("Book&mark All"));
    cmdRepl_ = add(tr("&Replace"));
    cmdReplAll_ = add(tr("Replace &All"));
    cmdAccount_ = add(tr("&In Account..."));
    cmdAccount_->setToolTip(tr("Searches all items of files of an account"));
    cmdCancel_ = add(tr("Cancel"));
    column->addStretch(1);
    cmdFind_->setDefault(true);
    return side;
}

void frmFind::Connect()
{
    FindDialog& state = engine_.Dialog();
    connect(cboFind_, &QComboBox::editTextChanged, this, [this, &state](const QString& text) {
        state.findText = ViewOf(text);
        Sought();
    });
    connect(txtRepl_, &QLineEdit::textChanged, this,
            [&state](const QString& text) { state.replaceText = ViewOf(text); });
    connect(optLookIn_, &QButtonGroup::idClicked, this, [this, &state](int id) {
        state.lookIn = static_cast<LookIn>(id);
        Sought();
    });
    connect(optDirection_, &QButtonGroup::idClicked, this, [this](int id) { engine_.SetSearchUp(id == kUp); });
    const std::pair<QCheckBox*, bool FindDialog::*> rules[] = {{chkMatchCase_, &FindDialog::matchCase},
                                                               {chkWholeWord_, &FindDialog::wholeWord},
                                                               {chkRegex_, &FindDialog::regex}};
    for (const auto& [box, rule] : rules)
        connect(box, &QCheckBox::toggled, this, [this, &state, member = rule](bool on) {
            state.*member = on;
            Sought();
        });
    lights_.OnChange([this] {
        if (isVisible()) ShowHits(*lbState_, engine_.Dialog(), lights_.Count());
    });
    connect(cmdAccount_, &QPushButton::clicked, this, [this] {
        hide();
        if (findInAccount) findInAccount();
    });
    connect(cmdFind_, &QPushButton::clicked, this, [this] { Step([this] { FindNext(); }); });
    connect(cmdFindAll_, &QPushButton::clicked, this, [this] { ListAll(FindMode::List); });
    connect(cmdBookmark_, &QPushButton::clicked, this, [this] { ListAll(FindMode::Bookmark); });
    connect(cmdRepl_, &QPushButton::clicked, this, [this] { Step([this] { engine_.ReplaceNext(); }); });
    connect(cmdReplAll_, &QPushButton::clicked, this, [this] { Step([this] { engine_.ReplaceAll(); }); });
    connect(cmdCancel_, &QPushButton::clicked, this, &frmFind::reject);
    connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, this, [this] { Step([this] { FindNext(); }); });
    cboFind_->lineEdit()->installEventFilter(this);
    txtRepl_->installEventFilter(this);
}

void frmFind::SetFont()
{
    const MvEdit& settings = engine_.Settings();
    QFont font = this->font();
    if (!settings.FontName.empty()) font.setFamily(ToQString(settings.FontName));
    const double points = ToQString(settings.FontSize).toDouble();
    if (points >= 1) font.setPointSizeF(std::min(points, kLargestPoints));
    cboFind_->setFont(font);
    txtRepl_->setFont(font);
}

void frmFind::Find()
{
    if (engine_.Find()) ShowDialog();
}

void frmFind::Replace()
{
    if (engine_.Replace()) ShowDialog();
}

/// The dialog stays in use, whichever document came to the front meanwhile.
void frmFind::Step(const std::function<void()>& body)
{
    body();
    RefreshFindList();
    if (!isVisible()) return;
    lights_.Show();
    StayBeside();
    activateWindow();
}

/// Another text, or other rules for it.
void frmFind::Sought()
{
    if (!isVisible()) return;
    lights_.Show();
    ShowHits(*lbState_, engine_.Dialog(), lights_.Count());
}

void frmFind::StayBeside()
{
    const QRect match = matchPlace ? matchPlace() : QRect();
    if (match.isEmpty() || !screen() || !windowHandle()) return;
    const QRect frame = geometry().marginsAdded(windowHandle()->frameMargins());
    const ScreenArea area = BesideMatch(AreaOf(frame), AreaOf(match), AreaOf(screen()->availableGeometry()));
    if (area.left != frame.left() || area.top != frame.top()) move(area.left, area.top);
}

void frmFind::hideEvent(QHideEvent* event)
{
    lights_.Hide();
    QDialog::hideEvent(event);
}

bool frmFind::FindNext()
{
    const bool found = engine_.FindNext();
    RefreshFindList();
    return found;
}

void frmFind::ListAll(FindMode mode)
{
    if (engine_.Dialog().findText.empty()) return;
    // Gone before the list or a message comes up, and before they take the focus.
    hide();
    engine_.FindAll(mode);
    RefreshFindList();
}

void frmFind::ShowDialog()
{
    ShowState();
    if (!positioned_) {
        positioned_ = true;
        adjustSize();
        if (const QWidget* owner = parentWidget()) move(owner->mapToGlobal(owner->rect().center()) - rect().center());
    }
    show();
    Sought();
    StayBeside();
    raise();
    activateWindow();
    cboFind_->setFocus(Qt::OtherFocusReason);
    cboFind_->lineEdit()->selectAll();
}

void frmFind::ShowState()
{
    RefreshFindList();
    const FindDialog& state = engine_.Dialog();
    setWindowTitle(Translated(state.Caption()));
    cboFind_->setEditText(ToQString(state.findText));
    for (QWidget* widget : {static_cast<QWidget*>(lbRepl_), static_cast<QWidget*>(txtRepl_),
                            static_cast<QWidget*>(cmdRepl_), static_cast<QWidget*>(cmdReplAll_)})
        widget->setVisible(state.replaceMode);
    cmdFindAll_->setVisible(!state.replaceMode);
    cmdBookmark_->setVisible(!state.replaceMode);
    optDirection_->button(state.up ? kUp : kDown)->setChecked(true);
    optDirection_->button(kUp)->setEnabled(state.upEnabled);
    lbDownOnly_->setVisible(!state.upEnabled);
    chkMatchCase_->setChecked(state.matchCase);
    chkWholeWord_->setChecked(state.wholeWord);
    chkRegex_->setChecked(state.regex);
    if (auto* option = optLookIn_->button(static_cast<int>(state.lookIn))) option->setChecked(true);
    const auto enable = [this](LookIn where, bool enabled, const QString& reason) {
        QAbstractButton* option = optLookIn_->button(static_cast<int>(where));
        option->setEnabled(enabled);
        option->setToolTip(enabled ? QString() : reason);
    };
    enable(LookIn::AllDocuments, state.allDocumentsEnabled, tr("Only one document is open."));
    enable(LookIn::Selection, state.selectionEnabled, tr("No text is selected."));
    if (layout()) layout()->activate();
}

void frmFind::RefreshFindList()
{
    const std::vector<Text> rows = engine_.FindList();
    const auto shown = [this](size_t row) { return cboFind_->itemText(static_cast<int>(row)); };
    bool same = static_cast<size_t>(cboFind_->count()) == rows.size();
    for (size_t row = 0; same && row < rows.size(); ++row) same = ViewOf(shown(row)) == rows[row];
    if (same) return;
    const QSignalBlocker quiet(cboFind_);
    QLineEdit* edit = cboFind_->lineEdit();
    const QString text = edit->text();
    const int caret = edit->cursorPosition();
    const int start = edit->selectionStart();
    const int length = edit->selectionLength();
    cboFind_->clear();
    for (const Text& row : rows) cboFind_->addItem(ToQString(row));
    cboFind_->setEditText(text);
    if (start >= 0)
        edit->setSelection(start, length);
    else
        edit->setCursorPosition(caret);
}

void frmFind::reject()
{
    engine_.Cancel();
    hide();
}

void frmFind::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) engine_.GetActiveDocument();
}

bool frmFind::eventFilter(QObject* watched, QEvent* event)
{
    auto* field = event->type() == QEvent::FocusIn ? qobject_cast<QLineEdit*>(watched) : nullptr;
    if (field) {
        // Later: a click that gives the focus places the caret first.
        QMetaObject::invokeMethod(
            field,
            [field] {
                const int caret = field->cursorPosition();
                if (!field->hasSelectedText() && (caret == 0 || caret == field->text().size())) field->selectAll();
            },
            Qt::QueuedConnection);
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace nib
