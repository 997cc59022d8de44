#include "compare/frmMerge.h"

#include "platform/qt/QtText.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr QSize kSize(1100, 680);
constexpr int kLineChars = 7;
constexpr int kWhoseChars = 13;
constexpr int kSpace = 2;

struct ChoiceRow {
    MergeChoice choice;
    const char* caption;
};

constexpr ChoiceRow kChoices[] = {
    {MergeChoice::Theirs, QT_TRANSLATE_NOOP("frmMerge", "&Theirs")},
    {MergeChoice::Mine, QT_TRANSLATE_NOOP("frmMerge", "&Mine")},
    {MergeChoice::TheirsThenMine, QT_TRANSLATE_NOOP("frmMerge", "Theirs, t&hen Mine")},
    {MergeChoice::MineThenTheirs, QT_TRANSLATE_NOOP("frmMerge", "Mine, the&n Theirs")},
    {MergeChoice::Base, QT_TRANSLATE_NOOP("frmMerge", "N&either")},
};

struct AnswerRow {
    MergeAnswer answer;
    const char* caption;
    const char* tip;
};

constexpr AnswerRow kAnswers[] = {
    {MergeAnswer::TakeTheirs, QT_TRANSLATE_NOOP("frmMerge", "Take &All of Theirs"),
     QT_TRANSLATE_NOOP("frmMerge", "The document becomes what is stored now. Undo brings your text back.")},
    {MergeAnswer::KeepCopy, QT_TRANSLATE_NOOP("frmMerge", "&Save Mine as a Copy..."),
     QT_TRANSLATE_NOOP("frmMerge", "Your text goes to another place, and theirs stays where it is.")},
    {MergeAnswer::Merge, QT_TRANSLATE_NOOP("frmMerge", "Me&rge"),
     QT_TRANSLATE_NOOP("frmMerge", "The document becomes the outcome. Nothing is stored before you save it.")},
    {MergeAnswer::Cancel, QT_TRANSLATE_NOOP("frmMerge", "Cancel"), nullptr},
};

QTableView* TableOf(QAbstractItemModel* model, const QFont& font, const QString& name)
{
    auto* table = new QTableView;
    table->setModel(model);
    table->setFont(font);
    table->setAccessibleName(name);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setMinimumSectionSize(1);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + kSpace);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setFont(QApplication::font());
    return table;
}

} // namespace

frmMerge::frmMerge(MergeModel& merge, TextView name, const QFont& font, QWidget* owner)
    : QDialog(owner), merge_(merge), sidesTable_(new SidesTable(merge, this)),
      outcomeTable_(new OutcomeTable(merge, this))
{
    Build(name, font);
    resize(kSize);
    Show(merge_.NextUndecided(-1));
}

QTableView* frmMerge::BuildSides(const QFont& font)
{
    sides_ = TableOf(sidesTable_, font, tr("The three texts"));
    sides_->horizontalHeader()->setStretchLastSection(true);
    connect(sides_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& at) { Follow(at.row()); });
    connect(sides_, &QTableView::doubleClicked, this, [this](const QModelIndex& at) {
        if (merge_.Rows()[static_cast<size_t>(at.row())].conflict < 0) return;
        const MergeSide side = SidesTable::SideOf(at.column());
        Choose(side == MergeSide::Theirs ? MergeChoice::Theirs
               : side == MergeSide::Mine ? MergeChoice::Mine
                                         : MergeChoice::Base);
    });
    return sides_;
}

QTableView* frmMerge::BuildOutcome(const QFont& font)
{
    outcome_ = TableOf(outcomeTable_, font, tr("Outcome"));
    const int width = outcome_->fontMetrics().averageCharWidth();
    outcome_->setColumnWidth(0, kLineChars * width);
    outcome_->setColumnWidth(1, kWhoseChars * width);
    outcome_->horizontalHeader()->setStretchLastSection(true);
    outcome_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return outcome_;
}

QWidget* frmMerge::BuildChoices()
{
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    state_ = new QLabel;
    row->addWidget(state_, 1);
    for (const ChoiceRow& choice : kChoices) {
        auto* button = new QPushButton(tr(choice.caption));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, what = choice.choice] { Choose(what); });
        row->addWidget(button);
    }
    row->addSpacing(row->spacing() * 2);
    for (const bool backward : {true, false}) {
        const QKeySequence key(backward ? Qt::SHIFT | Qt::Key_F8 : QKeyCombination(Qt::Key_F8));
        auto* button = new QPushButton(backward ? tr("&Previous") : tr("Ne&xt"));
        button->setAutoDefault(false);
        button->setToolTip((backward ? tr("Previous conflict") : tr("Next conflict")) +
                           QStringLiteral(" (%1)").arg(key.toString(QKeySequence::NativeText)));
        const auto go = [this, backward] { Show(merge_.Next(conflict_, backward)); };
        connect(button, &QPushButton::clicked, this, go);
        connect(new QShortcut(key, this), &QShortcut::activated, this, go);
        row->addWidget(button);
    }
    bar->setVisible(merge_.Conflicts() > 0);
    return bar;
}

QWidget* frmMerge::BuildAnswers()
{
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    for (const AnswerRow& answer : kAnswers) {
        auto* button = new QPushButton(tr(answer.caption));
        button->setAutoDefault(false);
        if (answer.tip) button->setToolTip(tr(answer.tip));
        connect(button, &QPushButton::clicked, this, [this, what = answer.answer] {
            answer_ = what;
            accept();
        });
        if (answer.answer == MergeAnswer::Merge) {
            ok_ = button;
            row->addStretch(1);
        }
        row->addWidget(button);
    }
    ok_->setDefault(true);
    return bar;
}

void frmMerge::Build(TextView name, const QFont& font)
{
    setWindowTitle(tr("Merge %1").arg(PlainTitle(name)));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    using Kind = MergeBlock::Kind;
    auto* what = new QLabel(tr("%1 was changed by others while you changed it here. What does not overlap is merged: "
                               "%2 of their changes, %3 of yours, %4 that both made.")
                                .arg(ToQString(name))
                                .arg(merge_.Changes(Kind::Theirs))
                                .arg(merge_.Changes(Kind::Mine))
                                .arg(merge_.Changes(Kind::Both)));
    if (merge_.IsCoarse())
        what->setText(what->text() + QLatin1Char(' ') +
                      tr("The texts differ so much that conflicts may hold lines which are alike."));
    what->setTextFormat(Qt::PlainText);
    what->setWordWrap(true);
    auto* above = new QWidget;
    auto* upper = new QVBoxLayout(above);
    upper->setContentsMargins(0, 0, 0, 0);
    upper->addWidget(BuildSides(font), 1);
    upper->addWidget(BuildChoices());
    auto* parts = new QSplitter(Qt::Vertical);
    parts->addWidget(above);
    parts->addWidget(BuildOutcome(font));
    parts->setChildrenCollapsible(false);
    auto* column = new QVBoxLayout(this);
    column->addWidget(what);
    column->addWidget(parts, 1);
    column->addWidget(BuildAnswers());
    sides_->setFocus();
}

/// In three parts alike, of which the user can make any wider.
void frmMerge::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    const auto columns = static_cast<int>(kMergeSides);
    const int room = layout()->contentsRect().width() - 2 * sides_->frameWidth();
    for (int column = 0; column + 1 < columns; ++column) sides_->setColumnWidth(column, room / columns);
}

void frmMerge::Show(int32_t conflict)
{
    conflict_ = conflict;
    sidesTable_->Show(conflict);
    outcomeTable_->Show(conflict);
    ShowState();
    const QScopedValueRollback<bool> following(following_, true);
    const int32_t row = conflict < 0 ? 0 : merge_.RowOf(conflict);
    const auto last = [&] {
        int32_t end = row;
        const auto& rows = merge_.Rows();
        while (static_cast<size_t>(end) + 1 < rows.size() && rows[static_cast<size_t>(end) + 1].conflict == conflict)
            ++end;
        return end;
    };
    if (sidesTable_->rowCount() > 0) {
        sides_->setCurrentIndex(sidesTable_->index(row, std::max(sides_->currentIndex().column(), 0)));
        if (conflict >= 0) sides_->scrollTo(sidesTable_->index(last(), 0));
        sides_->scrollTo(sidesTable_->index(row, 0));
    }
    const int32_t place = merge_.OutcomeRowOf(conflict);
    if (conflict < 0 || place < 0) return;
    outcome_->setCurrentIndex(outcomeTable_->index(place, OutcomeTable::kText));
    outcome_->scrollTo(outcomeTable_->index(place, 0), QAbstractItemView::PositionAtCenter);
}

void frmMerge::ShowState()
{
    const int32_t undecided = merge_.Undecided();
    if (conflict_ >= 0) {
        state_->setText(tr("Conflict %1 of %2: %3")
                            .arg(conflict_ + 1)
                            .arg(merge_.Conflicts())
                            .arg(MergeLooks::NameOf(merge_.ChoiceOf(conflict_))));
        QAccessibleEvent said(state_, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&said);
    }
    ok_->setEnabled(undecided == 0);
}

/// And on to the next one that waits.
void frmMerge::Choose(MergeChoice choice)
{
    if (conflict_ < 0) return;
    merge_.Choose(conflict_, choice);
    outcomeTable_->Changed();
    const int32_t next = merge_.NextUndecided(conflict_);
    Show(next < 0 ? conflict_ : next);
    if (next < 0) ok_->setFocus();
}

/// The conflict that the user has gone to with the arrow keys or the mouse.
void frmMerge::Follow(int row)
{
    if (following_ || row < 0) return;
    const int32_t conflict = merge_.Rows()[static_cast<size_t>(row)].conflict;
    if (conflict < 0 || conflict == conflict_) return;
    conflict_ = conflict;
    sidesTable_->Show(conflict);
    outcomeTable_->Show(conflict);
    ShowState();
}

MergeAnswer frmMerge::ShowDialog()
{
    answer_ = MergeAnswer::Cancel;
    exec();
    return answer_;
}

} // namespace nib
