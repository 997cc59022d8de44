#include "persistence/recovery/frmAutoRecover.h"

#include "platform/qt/QtText.h"

#include <QCursor>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyleOptionViewItem>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

constexpr int kListChars = 84;
constexpr int kListRows = 8;
constexpr int kHalfLight = 128;
/// What the list calls a document that has none.
constexpr TextView kNoName{u"New document"};

constexpr Text RecoveryRow::*kColumns[] = {&RecoveryRow::document, &RecoveryRow::place, &RecoveryRow::lines,
                                           &RecoveryRow::saved};
constexpr int kPlaceColumn = 1;
constexpr int kLinesColumn = 2;

QString Shown(const RecoveryRow& row, int column)
{
    QString text = ToQString(row.*kColumns[column]);
    if (column == 0 && row.kept) return TranslatedText(row.document);
    if (column == 0 && row.document == kNoName && row.path.empty()) return Translated(kNoName);
    if (column == kPlaceColumn) return TranslatedPlace(row.place);
    if (column != kLinesColumn || text.isEmpty()) return text;
    return QCoreApplication::translate("frmAutoRecover", "%1 lines").arg(text.section(u' ', 0, 0));
}

QString WholeRow(const RecoveryRow& row)
{
    QStringList parts;
    for (int column = 0; column < static_cast<int>(std::size(kColumns)); ++column)
        if (const QString text = Shown(row, column); !text.isEmpty()) parts.append(text);
    return parts.join(QStringLiteral("\n"));
}

/// Check boxes are outlined in a shade darker than the window's colour, which a dark list swallows.
void ShowOutlines(QTreeWidget& list)
{
    QPalette colors = list.palette();
    if (colors.color(QPalette::Base).lightness() >= kHalfLight) return;
    colors.setColor(QPalette::Window, colors.color(QPalette::Text));
    list.setPalette(colors);
}

} // namespace

frmAutoRecover::frmAutoRecover(modAutoRecover& recovery, ShowComparison showComparison)
    : list_(recovery), showComparison_(std::move(showComparison))
{
    setWindowTitle(tr("Nib Auto Recover"));
    Build();
    Connect();
}

void frmAutoRecover::Build()
{
    whatToDo_ =
        new QLabel(tr("Check all documents you want to recover, then click the Recover button. Click Delete to delete "
                      "recoverable copies."));
    whatToDo_->setWordWrap(true);
    caption_ = new QLabel(tr("Recoverable documents"));
    lstDocuments_ = new QTreeWidget;
    lstDocuments_->setHeaderLabels({tr("Document"), tr("Place"), tr("Lines"), tr("Last written")});
    lstDocuments_->setRootIsDecorated(false);
    lstDocuments_->setAllColumnsShowFocus(true);
    lstDocuments_->setTabKeyNavigation(false);
    ShowOutlines(*lstDocuments_);
    lstDocuments_->setAccessibleName(caption_->text());
    lstDocuments_->setTextElideMode(Qt::ElideMiddle);
    lstDocuments_->setUniformRowHeights(true);
    lstDocuments_->header()->setStretchLastSection(true);
    lstDocuments_->setMinimumSize(fontMetrics().averageCharWidth() * kListChars,
                                  fontMetrics().lineSpacing() * kListRows);
    cmdSelect_ = new QPushButton(tr("Check all"));
    cmdUnselect_ = new QPushButton(tr("Uncheck all"));
    cmdCompare_ = new QPushButton(tr("Compare"));
    cmdCompare_->setToolTip(tr("Shows what would be recovered beside what is stored now."));
    cmdRecover_ = new QPushButton(tr("Recover"));
    cmdRecover_->setToolTip(tr("Selected documents are opened as new documents from the recoverable copy."));
    cmdRecover_->setDefault(true);
    cmdDelete_ = new QPushButton(tr("Delete all"));
    cmdDelete_->setToolTip(tr("Delete recoverable copies of documents."));
    cmdCancel_ = new QPushButton(tr("Cancel"));

    auto* checks = new QHBoxLayout;
    checks->addWidget(cmdSelect_);
    checks->addWidget(cmdUnselect_);
    checks->addWidget(cmdCompare_);
    checks->addStretch(1);
    auto* answers = new QHBoxLayout;
    answers->addWidget(cmdDelete_);
    answers->addStretch(1);
    answers->addWidget(cmdRecover_);
    answers->addWidget(cmdCancel_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(whatToDo_);
    column->addWidget(caption_);
    column->addWidget(lstDocuments_, 1);
    column->addLayout(checks);
    column->addSpacing(fontMetrics().lineSpacing() / 2);
    column->addLayout(answers);
    const QList<QWidget*> order{lstDocuments_, cmdSelect_, cmdUnselect_, cmdCompare_,
                                cmdRecover_,   cmdDelete_, cmdCancel_};
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmAutoRecover::Connect()
{
    connect(lstDocuments_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
        if (filling_) return;
        const int row = lstDocuments_->indexOfTopLevelItem(item);
        list_.SetChecked(static_cast<size_t>(row), item->checkState(0) == Qt::Checked);
        ShowState();
    });
    connect(lstDocuments_, &QTreeWidget::currentItemChanged, this, &frmAutoRecover::ShowState);
    connect(lstDocuments_, &QTreeWidget::itemDoubleClicked, this, [this] {
        if (!IsOverBox(lstDocuments_->viewport()->mapFromGlobal(QCursor::pos()))) Compare();
    });
    connect(cmdCompare_, &QPushButton::clicked, this, &frmAutoRecover::Compare);
    connect(cmdSelect_, &QPushButton::clicked, this, [this] { CheckAll(true); });
    connect(cmdUnselect_, &QPushButton::clicked, this, [this] { CheckAll(false); });
    connect(cmdRecover_, &QPushButton::clicked, this, [this] { Leave(RecoveryChoice::Recover); });
    connect(cmdDelete_, &QPushButton::clicked, this, [this] {
        if (list_.ConfirmDelete()) Leave(RecoveryChoice::Delete);
    });
    connect(cmdCancel_, &QPushButton::clicked, this, &frmAutoRecover::reject);
}

void frmAutoRecover::ShowDialog(TextView folder, const DynamicArray& names, QWidget* owner)
{
    if (owner != parentWidget()) setParent(owner, windowFlags());
    list_.Load(folder, names);
    list_.Run([this] { return ShowModal(); });
}

RecoveryChoice frmAutoRecover::ShowModal()
{
    FillIn();
    // Qt's own measure of a small screen leaves out how many lines the text on top takes.
    const int width = sizeHint().width();
    resize(width, heightForWidth(width));
    return static_cast<RecoveryChoice>(exec());
}

void frmAutoRecover::FillIn()
{
    const QScopedValueRollback<bool> filling(filling_, true);
    lstDocuments_->clear();
    for (const RecoveryRow& row : list_.Rows()) {
        auto* item = new QTreeWidgetItem(lstDocuments_);
        for (int column = 0; column < static_cast<int>(std::size(kColumns)); ++column) {
            item->setText(column, Shown(row, column));
            item->setToolTip(column, WholeRow(row));
        }
        item->setTextAlignment(kLinesColumn, Qt::AlignRight | Qt::AlignVCenter);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(0, row.checked ? Qt::Checked : Qt::Unchecked);
    }
    FitColumns();
    lstDocuments_->setCurrentItem(lstDocuments_->topLevelItem(0));
    lstDocuments_->setFocus();
    ShowState();
}

/// As wide as what they hold, but a name as long as a line leaves room for the others.
void frmAutoRecover::FitColumns()
{
    const int most = fontMetrics().averageCharWidth() * kListChars / 2;
    for (int column = 0; column + 1 < lstDocuments_->columnCount(); ++column) {
        lstDocuments_->resizeColumnToContents(column);
        lstDocuments_->setColumnWidth(column, std::min(lstDocuments_->columnWidth(column), most));
    }
}

void frmAutoRecover::CheckAll(bool checked)
{
    list_.CheckAll(checked);
    const QScopedValueRollback<bool> filling(filling_, true);
    for (int row = 0; row < lstDocuments_->topLevelItemCount(); ++row)
        lstDocuments_->topLevelItem(row)->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
    ShowState();
}

size_t frmAutoRecover::Row() const
{
    return static_cast<size_t>(lstDocuments_->indexOfTopLevelItem(lstDocuments_->currentItem()));
}

void frmAutoRecover::Compare()
{
    if (!list_.CanCompare(Row())) return;
    list_.Compare(Row(), [this](RecoveryComparison both) { showComparison_(std::move(both), *this); });
}

/// Where two clicks check twice, and mean nothing else.
bool frmAutoRecover::IsOverBox(const QPoint& point) const
{
    QStyleOptionViewItem look;
    look.initFrom(lstDocuments_);
    look.rect = lstDocuments_->visualItemRect(lstDocuments_->itemAt(point));
    look.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &look, lstDocuments_).contains(point);
}

void frmAutoRecover::ShowState()
{
    cmdRecover_->setEnabled(list_.AnyChecked());
    cmdCompare_->setEnabled(list_.CanCompare(Row()));
}

} // namespace nib
