#include "search/frmFindAccount.h"

#include "platform/qt/QtText.h"
#include "search/QtHitText.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

#include <limits>

namespace nib {

namespace {

constexpr int kFieldChars = 36;
constexpr int kShownFiles = 8;
/// What is pasted is never cut short.
constexpr int kLongestText = std::numeric_limits<int>::max();

QLineEdit* Field(const QString& name)
{
    auto* field = new QLineEdit;
    field->setAccessibleName(name);
    field->setMaxLength(kLongestText);
    return field;
}

QLabel* LabelOf(QWidget* field, const QString& caption)
{
    auto* label = new QLabel(caption);
    label->setBuddy(field);
    return label;
}

} // namespace

frmFindAccount::frmFindAccount(AccountFind& find, QWidget* owner) : QDialog(owner), find_(find)
{
    Build();
    Connect();
    ShowState();
    find_.onChange = [this] { Changed(); };
}

frmFindAccount::~frmFindAccount()
{
    find_.onChange = nullptr;
}

void frmFindAccount::Build()
{
    setWindowTitle(tr("Find in Account"));
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
    txtRepl_ = Field(tr("Replace with"));
    txtAccount_ = Field(tr("Account"));
    lbHost_ = new QLabel;
    lbHost_->setTextFormat(Qt::PlainText);
    chkMatchCase_ = new QCheckBox(tr("&Match case"));
    chkWholeWord_ = new QCheckBox(tr("Match &whole word only"));
    chkRegex_ = new QCheckBox(tr("Regular e&xpression"));
    lbStatus_ = new QLabel;
    lbStatus_->setTextFormat(Qt::PlainText);
    lbStatus_->setWordWrap(true);
    lbStatus_->setMinimumHeight(2 * lbStatus_->fontMetrics().lineSpacing());
    lbStatus_->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto* grid = new QGridLayout(this);
    grid->addWidget(LabelOf(cboFind_, tr("Fi&nd what:")), 0, 0);
    grid->addWidget(cboFind_, 0, 1, 1, 2);
    grid->addWidget(LabelOf(txtRepl_, tr("Re&place with:")), 1, 0);
    grid->addWidget(txtRepl_, 1, 1, 1, 2);
    auto* rules = new QHBoxLayout;
    rules->addWidget(chkMatchCase_);
    rules->addWidget(chkWholeWord_);
    rules->addWidget(chkRegex_);
    rules->addStretch(1);
    grid->addLayout(rules, 2, 1, 1, 2);
    grid->addWidget(LabelOf(txtAccount_, tr("A&ccount:")), 3, 0);
    grid->addWidget(txtAccount_, 3, 1);
    grid->addWidget(lbHost_, 3, 2);
    BuildFiles(*grid);
    grid->addWidget(lbStatus_, 7, 0, 1, 4);
    grid->addWidget(BuildButtons(), 0, 3, 6, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(4, 1);

    QList<QWidget*> order{cboFind_, txtRepl_, chkMatchCase_, chkWholeWord_, chkRegex_, txtAccount_, lstFiles_,
                          cmdAll_,  cmdNone_, txtItems_,     cmdFind_,      cmdRepl_,  cmdStop_,    cmdClose_};
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmFindAccount::BuildFiles(QGridLayout& grid)
{
    lstFiles_ = new QListWidget;
    lstFiles_->setAccessibleName(tr("Files"));
    lstFiles_->setMinimumHeight(kShownFiles * lstFiles_->fontMetrics().lineSpacing());
    cmdAll_ = new QPushButton(tr("&All"));
    cmdNone_ = new QPushButton(tr("Non&e"));
    for (QPushButton* button : {cmdAll_, cmdNone_}) button->setAutoDefault(false);
    auto* label = LabelOf(lstFiles_, tr("Fi&les:"));
    label->setAlignment(Qt::AlignTop);
    grid.addWidget(label, 4, 0);
    grid.addWidget(lstFiles_, 4, 1, 1, 2);
    auto* row = new QHBoxLayout;
    row->addWidget(cmdAll_);
    row->addWidget(cmdNone_);
    row->addStretch(1);
    grid.addLayout(row, 5, 1, 1, 2);
    txtItems_ = Field(tr("Items"));
    txtItems_->setText(ToQString(find_.Dialog().pattern));
    txtItems_->setToolTip(tr("In INV* the star stands for any characters, in INV? the question mark for one."));
    grid.addWidget(LabelOf(txtItems_, tr("&Items:")), 6, 0);
    grid.addWidget(txtItems_, 6, 1, 1, 2);
}

QWidget* frmFindAccount::BuildButtons()
{
    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& caption) {
        auto* button = new QPushButton(caption);
        button->setAutoDefault(true);
        column->addWidget(button);
        return button;
    };
    cmdFind_ = add(tr("&Find"));
    cmdRepl_ = add(tr("&Replace..."));
    cmdStop_ = add(tr("&Stop"));
    cmdClose_ = add(tr("Close"));
    column->addStretch(1);
    cmdFind_->setDefault(true);
    return side;
}

void frmFindAccount::Connect()
{
    AccountFindDialog& state = find_.Dialog();
    connect(cboFind_, &QComboBox::editTextChanged, this, [this, &state](const QString& text) {
        state.findText = ViewOf(text);
        ShowEnabled();
    });
    connect(txtRepl_, &QLineEdit::textChanged, this,
            [&state](const QString& text) { state.replaceText = ViewOf(text); });
    connect(txtItems_, &QLineEdit::textChanged, this, [&state](const QString& text) {
        const QString pattern = text.trimmed();
        state.pattern = ViewOf(pattern);
    });
    connect(chkMatchCase_, &QCheckBox::toggled, this, [&state](bool on) { state.matchCase = on; });
    connect(chkWholeWord_, &QCheckBox::toggled, this, [&state](bool on) { state.wholeWord = on; });
    connect(chkRegex_, &QCheckBox::toggled, this, [this, &state](bool on) {
        state.regex = on;
        ShowEnabled();
    });
    connect(txtAccount_, &QLineEdit::editingFinished, this, [this] {
        const QString name = txtAccount_->text().trimmed();
        find_.SetAccount(ViewOf(name));
        ShowFiles();
        ShowEnabled();
    });
    connect(lstFiles_, &QListWidget::itemChanged, this, [this, &state](QListWidgetItem* item) {
        const auto row = static_cast<size_t>(lstFiles_->row(item));
        if (row < state.files.size()) state.files[row].chosen = item->checkState() == Qt::Checked;
        ShowEnabled();
    });
    connect(cmdAll_, &QPushButton::clicked, this, [this] { ChooseAll(true); });
    connect(cmdNone_, &QPushButton::clicked, this, [this] { ChooseAll(false); });
    const auto run = [this](void (AccountFind::*member)()) {
        (find_.*member)();
        Changed();
    };
    connect(cmdFind_, &QPushButton::clicked, this, [run] { run(&AccountFind::Find); });
    connect(cmdRepl_, &QPushButton::clicked, this, [run] { run(&AccountFind::Replace); });
    connect(cmdStop_, &QPushButton::clicked, this, [this] {
        find_.Stop();
        Changed();
    });
    connect(cmdClose_, &QPushButton::clicked, this, &frmFindAccount::hide);
}

void frmFindAccount::ShowDialog()
{
    find_.Open();
    ShowState();
    if (!positioned_) {
        positioned_ = true;
        adjustSize();
        if (const QWidget* owner = parentWidget()) move(owner->mapToGlobal(owner->rect().center()) - rect().center());
    }
    show();
    raise();
    activateWindow();
    cboFind_->setFocus(Qt::OtherFocusReason);
    cboFind_->lineEdit()->selectAll();
}

void frmFindAccount::reject()
{
    if (find_.Stop())
        Changed();
    else
        hide();
}

void frmFindAccount::ShowState()
{
    const AccountFindDialog& state = find_.Dialog();
    {
        const QSignalBlocker quiet(cboFind_);
        cboFind_->clear();
        for (int32_t i = 1; i <= find_.RecentSearches().ListCount(); ++i)
            cboFind_->addItem(ToQString(find_.RecentSearches().ListItem(i)));
        cboFind_->setEditText(ToQString(state.findText));
    }
    txtRepl_->setText(ToQString(state.replaceText));
    chkMatchCase_->setChecked(state.matchCase);
    chkWholeWord_->setChecked(state.wholeWord);
    chkRegex_->setChecked(state.regex);
    txtAccount_->setText(ToQString(state.account));
    lbHost_->setText(state.hostName.empty() ? QString() : tr("on %1").arg(ToQString(state.hostName)));
    ShowFiles();
    ShowEnabled();
}

void frmFindAccount::ShowFiles()
{
    const auto& files = find_.Dialog().files;
    const QSignalBlocker quiet(lstFiles_);
    lstFiles_->clear();
    for (const AccountFile& file : files) {
        auto* item = new QListWidgetItem(ToQString(file.name), lstFiles_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(file.chosen ? Qt::Checked : Qt::Unchecked);
    }
    if (!files.empty()) lstFiles_->setCurrentRow(0);
}

void frmFindAccount::ChooseAll(bool chosen)
{
    for (AccountFile& file : find_.Dialog().files) file.chosen = chosen;
    ShowFiles();
    ShowEnabled();
}

void frmFindAccount::ShowEnabled()
{
    const AccountFindDialog& state = find_.Dialog();
    const bool idle = state.state == FindingState::Idle;
    // What has the focus keeps it: a button that is disabled would hand it on.
    cmdFind_->setEnabled(find_.CanFind());
    cmdRepl_->setEnabled(find_.CanFind() && idle);
    cmdStop_->setEnabled(!idle);
    txtAccount_->setReadOnly(!idle);
    lbStatus_->setText(Status());
}

QString frmFindAccount::Status() const
{
    const AccountFindDialog& state = find_.Dialog();
    if (const auto fault = state.regex ? RegexSearch::FaultOf(state.findText) : std::nullopt) return Told(*fault);
    if (!state.fault.empty()) return ToQString(state.fault);
    if (state.readsFiles) return tr("The list of files is being read.");
    if (state.state == FindingState::Idle && state.allFiles == 0)
        return state.files.empty() ? tr("There are no files.") : QString();
    const SearchCounts& counts = state.counts;
    QString text = tr("Files: %1 of %2   Items: %3   Hits: %4   Time: %5 s")
                       .arg(counts.files)
                       .arg(state.allFiles)
                       .arg(counts.items)
                       .arg(counts.hits)
                       .arg(static_cast<double>(counts.time.count()) / 1000, 0, 'f', 1);
    if (counts.skipped > 0) text += QStringLiteral("   ") + tr("Skipped, no texts: %1").arg(counts.skipped);
    if (counts.failed > 0) text += QStringLiteral("   ") + tr("Not readable: %1").arg(counts.failed);
    return text;
}

void frmFindAccount::Changed()
{
    const AccountFindDialog& state = find_.Dialog();
    if (static_cast<size_t>(lstFiles_->count()) != state.files.size()) ShowFiles();
    ShowEnabled();
    const bool running = state.state != FindingState::Idle;
    const bool ended = std::exchange(running_, running) && !running;
    const bool listed = std::exchange(listed_, state.listed) != state.listed && state.listed;
    if (!isVisible()) return;
    if (ended && state.listed && !state.stopped && state.fault.empty()) {
        // Whoever has gone on to another window stays there.
        const bool here = listed || isActiveWindow() || !QApplication::activeWindow();
        hide();
        if (here) find_.ShowList();
    } else if (listed) {
        activateWindow(); // until it is through, Stop is what may be wanted
    }
}

} // namespace nib
