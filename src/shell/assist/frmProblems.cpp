#include "shell/assist/frmProblems.h"

#include "platform/qt/QtText.h"
#include "shell/assist/QtPhrase.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QStyle>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace nib {

namespace {

constexpr int kSoon = 60;
constexpr int kColumns = 3;

struct LevelRow {
    FindingLevel level;
    const char* icon;
    QStyle::StandardPixmap fallback;
    const char* caption;
    const char* name; ///< of one
};

constexpr LevelRow kLevels[] = {
    {FindingLevel::Error, "dialog-error", QStyle::SP_MessageBoxCritical, QT_TRANSLATE_NOOP("frmProblems", "Errors: %1"),
     QT_TRANSLATE_NOOP("frmProblems", "Error")},
    {FindingLevel::Warning, "dialog-warning", QStyle::SP_MessageBoxWarning,
     QT_TRANSLATE_NOOP("frmProblems", "Warnings: %1"), QT_TRANSLATE_NOOP("frmProblems", "Warning")},
    {FindingLevel::Hint, "dialog-information", QStyle::SP_MessageBoxInformation,
     QT_TRANSLATE_NOOP("frmProblems", "Hints: %1"), QT_TRANSLATE_NOOP("frmProblems", "Hint")},
};

const LevelRow& RowOf(FindingLevel level)
{
    return kLevels[static_cast<size_t>(level)];
}

} // namespace

QIcon LevelIcon(FindingLevel level)
{
    const LevelRow& row = RowOf(level);
    return QIcon::fromTheme(QLatin1String(row.icon), QApplication::style()->standardIcon(row.fallback));
}

class frmProblems::Model final : public QAbstractTableModel {
public:
    Model(const ProblemList& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

    /// Rows that stay as many are the same ones, moved.
    void Changed()
    {
        const auto count = static_cast<int>(list_.Rows().size());
        if (count == count_) {
            if (count > 0) emit dataChanged(index(0, 0), index(count - 1, kColumns - 1));
            return;
        }
        beginResetModel();
        count_ = count;
        endResetModel();
    }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }
    int columnCount(const QModelIndex& = {}) const override { return kColumns; }
    QVariant headerData(int section, Qt::Orientation, int role) const override
    {
        if (role == Qt::TextAlignmentRole) return Alignment(section);
        if (role != Qt::DisplayRole) return {};
        return section == 0 ? tr("Problem") : section == 1 ? tr("Document") : tr("Line");
    }
    QVariant data(const QModelIndex& at, int role) const override
    {
        const ProblemList::Row& row = list_.Rows()[static_cast<size_t>(at.row())];
        const bool message = at.column() == 0;
        if (role == Qt::TextAlignmentRole) return Alignment(at.column());
        if (role == Qt::DecorationRole && message) return LevelIcon(row.level);
        if (role == Qt::ToolTipRole) return Shown(row.message);
        if (role == Qt::AccessibleTextRole && message)
            return tr(RowOf(row.level).name) + QStringLiteral(": ") + Shown(row.message);
        if (role != Qt::DisplayRole) return {};
        if (at.column() == 1) return ToQString(row.document);
        return message ? Shown(row.message) : QString::number(row.at.line + 1);
    }

private:
    static QString tr(const char* text) { return frmProblems::tr(text); }
    static QVariant Alignment(int column)
    {
        return static_cast<int>((column == kColumns - 1 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }

    const ProblemList& list_;
    int count_ = 0;
};

frmProblems::frmProblems(const Assistance& assistance, QWidget* window)
    : QDockWidget(tr("Problems"), window), list_(assistance), view_(new QTreeView), model_(new Model(list_, this))
{
    setObjectName(QStringLiteral("Problems"));
    auto* room = new QWidget;
    auto* column = new QVBoxLayout(room);
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(2);
    auto* filters = new QHBoxLayout;
    for (const LevelRow& row : kLevels) {
        auto* button = levels_[static_cast<size_t>(row.level)] = new QToolButton;
        button->setCheckable(true);
        button->setChecked(true);
        button->setAutoRaise(true);
        button->setIcon(LevelIcon(row.level));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        filters->addWidget(button);
        connect(button, &QToolButton::toggled, this, [this, level = row.level](bool on) {
            list_.SetShown(level, on);
            Refresh();
        });
    }
    filters->addStretch();
    column->addLayout(filters);
    view_->setModel(model_);
    view_->setAccessibleName(tr("Problems"));
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAllColumnsShowFocus(true);
    view_->header()->setStretchLastSection(false);
    view_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    view_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    view_->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    connect(view_, &QTreeView::activated, this, [this](const QModelIndex& at) { Jump(at.row()); });
    column->addWidget(view_);
    setWidget(room);
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, [this] { Refresh(); });
    ShowCounts();
}

frmProblems::~frmProblems() = default;

void frmProblems::FindingsChanged()
{
    if (isVisible() && !soon_.isActive()) soon_.start(kSoon);
}

void frmProblems::Refresh()
{
    if (!list_.Refresh()) return ShowCounts();
    const int row = view_->currentIndex().row();
    model_->Changed();
    if (row >= 0 && row < model_->rowCount()) view_->setCurrentIndex(model_->index(row, 0));
    ShowCounts();
}

void frmProblems::ShowCounts()
{
    for (const LevelRow& row : kLevels)
        levels_[static_cast<size_t>(row.level)]->setText(tr(row.caption).arg(list_.Count(row.level)));
}

void frmProblems::Jump(int row)
{
    if (row < 0 || row >= model_->rowCount() || !onJump) return;
    const ProblemList::Row chosen = list_.Rows()[static_cast<size_t>(row)];
    onJump(chosen);
}

void frmProblems::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    Refresh();
}

void frmProblems::closeEvent(QCloseEvent* event)
{
    QDockWidget::closeEvent(event);
    if (onClose) onClose();
}

} // namespace nib
