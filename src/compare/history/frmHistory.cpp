#include "compare/history/frmHistory.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "platform/qt/QtText.h"

#include <QAbstractTableModel>
#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace nib {

namespace {

enum Column { kWhen, kWho, kLines, kMessage, kColumns };

constexpr const char* kHeads[] = {QT_TRANSLATE_NOOP("frmHistory", "When"), QT_TRANSLATE_NOOP("frmHistory", "Who"),
                                  QT_TRANSLATE_NOOP("frmHistory", "Lines"), QT_TRANSLATE_NOOP("frmHistory", "Message")};

/// By NoVersions.
constexpr const char* kWhyNone[] = {
    QT_TRANSLATE_NOOP("frmHistory", "No document is in front."),
    QT_TRANSLATE_NOOP("frmHistory", "This document has never been saved. Its first save begins its history."),
    QT_TRANSLATE_NOOP("frmHistory", "No versions of this account are kept: hosts.conf says history=no."),
    QT_TRANSLATE_NOOP("frmHistory", "There are no versions yet. The next save leaves the first."),
    QT_TRANSLATE_NOOP("frmHistory", "The versions cannot be read: %1"),
};

} // namespace

QString TimeText(const Version& version)
{
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(version.time), QLocale::ShortFormat);
}

class frmHistory::Model final : public QAbstractTableModel {
public:
    Model(VersionList& list, frmHistory* form) : QAbstractTableModel(form), list_(list), form_(*form) {}

    void Refresh(int32_t documentId)
    {
        if (!list_.Refresh(documentId)) return;
        beginResetModel();
        count_ = static_cast<int>(list_.Rows().size());
        endResetModel();
    }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : count_; }
    int columnCount(const QModelIndex& = {}) const override { return kColumns; }
    bool canFetchMore(const QModelIndex&) const override { return list_.HasMore(); }
    void fetchMore(const QModelIndex&) override
    {
        list_.ReadMore();
        const auto count = static_cast<int>(list_.Rows().size());
        if (count == count_) return;
        beginInsertRows({}, count_, count - 1);
        count_ = count;
        endInsertRows();
    }
    QVariant headerData(int section, Qt::Orientation, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(tr(kHeads[section])) : QVariant();
    }
    Qt::ItemFlags flags(const QModelIndex& at) const override
    {
        const Qt::ItemFlags flags = QAbstractTableModel::flags(at);
        return at.column() == kMessage ? flags | Qt::ItemIsEditable : flags;
    }
    QVariant data(const QModelIndex& at, int role) const override
    {
        const Version& version = list_.Rows()[static_cast<size_t>(at.row())];
        if (role == Qt::EditRole && at.column() == kMessage) return ToQString(version.message);
        if (role == Qt::ToolTipRole && at.column() == kMessage) return Said(version);
        if (role != Qt::DisplayRole) return {};
        switch (at.column()) {
        case kWhen: return TimeText(version);
        case kWho: return ToQString(version.author);
        case kLines:
            return version.added < 0 ? QString()
                                     : QStringLiteral("+%1 \u2212%2").arg(version.added).arg(version.removed);
        default: return Said(version);
        }
    }
    bool setData(const QModelIndex& at, const QVariant& value, int role) override
    {
        if (role != Qt::EditRole || at.column() != kMessage) return false;
        form_.Try([&] { list_.SetMessage(static_cast<size_t>(at.row()), ToText(value.toString().simplified())); });
        emit dataChanged(at, at);
        return true;
    }

private:
    static QString tr(const char* text) { return frmHistory::tr(text); }
    static QString Said(const Version& version)
    {
        if (!version.message.empty() || !version.wasRead) return ToQString(version.message);
        return version.parent.empty() ? tr("as it was first read") : tr("changed elsewhere");
    }

    VersionList& list_;
    frmHistory& form_;
    int count_ = 0;
};

/// F2 writes the message of a version, in whichever column the cell with the focus is; the frame knows the key too.
class frmHistory::View final : public QTreeView {
protected:
    bool event(QEvent* event) override
    {
        const bool asked = event->type() == QEvent::ShortcutOverride;
        if (asked && static_cast<QKeyEvent*>(event)->keyCombination() == QKeyCombination(Qt::Key_F2)) {
            event->accept();
            return true;
        }
        return QTreeView::event(event);
    }
    bool edit(const QModelIndex& at, EditTrigger trigger, QEvent* event) override
    {
        return QTreeView::edit(trigger == EditKeyPressed ? at.siblingAtColumn(kMessage) : at, trigger, event);
    }
};

frmHistory::frmHistory(ItemHistory& history, DocumentServices& services, QtCompareWindows& compare, QWidget* window)
    : QDockWidget(tr("History"), window), list_(history, services), compare_(compare), model_(new Model(list_, this)),
      view_(new View), whyNone_(new QLabel(view_->viewport())), bringBack_(new QPushButton(tr("Bring Back"))),
      compareButton_(new QPushButton(tr("Compare")))
{
    setObjectName(QStringLiteral("History"));
    auto* room = new QWidget;
    auto* column = new QVBoxLayout(room);
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(2);
    view_->setModel(model_);
    view_->setAccessibleName(tr("Versions"));
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAllColumnsShowFocus(true);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    view_->header()->setSectionsMovable(false);
    view_->header()->setStretchLastSection(false);
    view_->header()->setSectionResizeMode(kMessage, QHeaderView::Stretch);
    view_->setMinimumHeight(2 * fontMetrics().lineSpacing()); // a view asks for more than small screens have
    column->addWidget(view_);
    whyNone_->setTextFormat(Qt::PlainText);
    whyNone_->setWordWrap(true);
    whyNone_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    whyNone_->setForegroundRole(QPalette::PlaceholderText);
    auto* inView = new QVBoxLayout(view_->viewport());
    inView->setContentsMargins(8, 8, 8, 8);
    inView->addWidget(whyNone_);
    auto* buttons = new QHBoxLayout;
    bringBack_->setToolTip(tr("Makes the text of the chosen version that of the document; Undo takes that back"));
    compareButton_->setToolTip(tr("Shows what differs between two chosen versions, or one and the document"));
    buttons->addWidget(bringBack_);
    buttons->addWidget(compareButton_);
    buttons->addStretch();
    column->addLayout(buttons);
    setWidget(room);
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { ShowButtons(); });
    connect(bringBack_, &QPushButton::clicked, this, [this] { BringBack(); });
    connect(compareButton_, &QPushButton::clicked, this, [this] { CompareChosen(); });
    connect(view_, &QTreeView::activated, this, [this] { CompareChosen(); });
    auto* leave = new QShortcut(Qt::Key_Escape, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(leave, &QShortcut::activated, this, [this] {
        if (onLeave) onLeave();
    });
    ShowButtons();
}

frmHistory::~frmHistory() = default;

void frmHistory::TakeFocus()
{
    view_->setFocus();
    if (!view_->currentIndex().isValid()) view_->setCurrentIndex(model_->index(0, 0));
}

void frmHistory::Try(const std::function<void()>& what)
{
    if (const auto failure = FailureOf(what); failure && onFailure) onFailure(failure->description);
}

void frmHistory::Follow()
{
    if (!isVisible()) return;
    model_->Refresh(compare_.DocumentInFront());
    ShowButtons();
    ShowWhyNone();
    if (fitted_) return;
    for (int column : {kWhen, kWho, kLines}) view_->resizeColumnToContents(column);
    fitted_ = model_->rowCount() > 0;
}

std::vector<size_t> frmHistory::Chosen() const
{
    std::vector<size_t> rows;
    const QModelIndexList selected = view_->selectionModel()->selectedRows();
    for (const QModelIndex& at : selected) rows.push_back(static_cast<size_t>(at.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
}

void frmHistory::ShowButtons()
{
    const size_t count = Chosen().size();
    const auto document = list_.Document();
    bringBack_->setEnabled(count == 1 && document && !document->ReadOnly());
    compareButton_->setEnabled(count == 1 || count == 2);
}

void frmHistory::ShowWhyNone()
{
    const auto why = list_.WhyNone();
    whyNone_->setVisible(why.has_value());
    // On small screens a sentence needs the room of what is good for nothing meanwhile.
    for (QWidget* other : std::initializer_list<QWidget*>{view_->header(), bringBack_, compareButton_})
        other->setVisible(!why);
    if (!why) return;
    const QString text = tr(kWhyNone[static_cast<size_t>(*why)]);
    whyNone_->setText(why == NoVersions::Unreadable ? text.arg(ToQString(list_.Fault())) : text);
}

void frmHistory::BringBack()
{
    const std::vector<size_t> rows = Chosen();
    if (rows.size() == 1) Try([&] { list_.BringBack(rows.front()); });
}

CompareText frmHistory::TextOf(size_t row) const
{
    const Version& version = list_.Rows()[row];
    const auto document = list_.Document();
    return {document ? document->DisplayName() : Text(), ToText(TimeText(version)) + u", " + version.author,
            list_.TextOf(row), nullptr, FromUtf8(version.id)};
}

void frmHistory::CompareChosen()
{
    const std::vector<size_t> rows = Chosen();
    const auto document = list_.Document();
    if (!document || rows.empty() || rows.size() > 2) return;
    Try([&] {
        // The older one at the left.
        CompareText older = TextOf(rows.back());
        if (rows.size() == 2)
            compare_.Compare(std::move(older), TextOf(rows.front()));
        else
            compare_.Compare(std::move(older), *document);
    });
}

void frmHistory::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    fitted_ = false;
    Follow();
}

void frmHistory::closeEvent(QCloseEvent* event)
{
    QDockWidget::closeEvent(event);
    if (onClose) onClose();
}

} // namespace nib
