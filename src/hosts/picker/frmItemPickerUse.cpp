// What the user does in the picker, and sees of it.

#include "hosts/picker/QtPickerModels.h"
#include "hosts/picker/QtPickerWidgets.h"
#include "hosts/picker/frmItemPicker.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QToolButton>

#include <algorithm>

namespace nib {

namespace {

/// Questions about locks go on for so long before keys and paint events get their turn.
constexpr int kLockSliceMs = 15;

} // namespace

void frmItemPicker::Go(const std::function<void()>& move)
{
    {
        const QtWaitCursor wait;
        move();
    }
    ShowPlace();
}

void frmItemPicker::FollowTree()
{
    const Text path = places_->PathOf(tree_->currentIndex());
    if (path.empty() || path == model_.Place()) return;
    bool moved = false;
    {
        const QtWaitCursor wait;
        moved = model_.GoTo(path);
    }
    // The tree stays on a place that cannot be read, so that the keys can go on from there.
    if (moved)
        ShowPlace();
    else
        ShowMessage();
}

void frmItemPicker::Press(const std::function<PickerModel::Outcome()>& decide)
{
    PickerModel::Outcome outcome{};
    {
        const QtWaitCursor wait;
        outcome = decide();
    }
    if (outcome == PickerModel::Outcome::Answers) return accept();
    if (outcome == PickerModel::Outcome::Stays) return ShowMessage();
    ShowPlace();
    if (!name_->hasFocus()) EnterList();
}

void frmItemPicker::Filter(const std::function<void()>& change)
{
    items_->Changing(change);
    ShowRows();
}

void frmItemPicker::EnterList()
{
    list_->setFocus();
    const QModelIndex current = list_->currentIndex().isValid() ? list_->currentIndex() : items_->index(0, 0);
    list_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

void frmItemPicker::ConnectionsWanted()
{
    if (!edit_(this)) return;
    {
        const QtWaitCursor wait;
        const QScopedValueRollback<bool> showing(showing_, true);
        model_.Renew();
        places_->Renew();
    }
    ShowPlace();
}

bool frmItemPicker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != filter_ || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape && !filter_->text().isEmpty()) {
        filter_->clear();
        return true;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (items_->rowCount() == 1)
            Press([this] { return model_.AcceptFilter(); });
        else
            EnterList();
        return true;
    }
    if (key == Qt::Key_Down) {
        EnterList();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmItemPicker::SelectionChanged()
{
    if (showing_) return;
    std::vector<int32_t> rows;
    for (const QModelIndex& index : list_->selectionModel()->selectedRows()) rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    model_.SelectRows(rows);
    ShowChoice();
}

// What the user sees

void frmItemPicker::ShowPlace()
{
    {
        const QScopedValueRollback<bool> showing(showing_, true);
        items_->Changing([] {});
        filter_->setText(ToQString(model_.List().Filter()));
        treeTimer_.stop();
        const QModelIndex place = places_->Reveal(model_.Place());
        tree_->setCurrentIndex(place);
        tree_->scrollTo(place);
    }
    path_->SetTrail(model_.Trail());
    back_->setEnabled(model_.CanGoBack());
    up_->setEnabled(model_.CanGoUp());
    for (int column = 1; column < items_->columnCount(); ++column) {
        list_->setColumnHidden(column, !model_.List().Shows(static_cast<PickerList::Column>(column)));
    }
    ShowRows();
    ShowMessage();
}

void frmItemPicker::ShowRows()
{
    list_->SetEmptyText(Translated(model_.List().EmptyText()));
    ShowSelection();
    ShowChoice();
    lockTimer_.start(0);
}

void frmItemPicker::ShowSelection()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    QItemSelection selection;
    const int last = items_->columnCount() - 1;
    const std::vector<int32_t> rows = model_.SelectedRows();
    for (const int32_t row : rows)
        selection.append(QItemSelectionRange(items_->index(row, 0), items_->index(row, last)));
    if (!rows.empty()) {
        list_->selectionModel()->setCurrentIndex(items_->index(rows.front(), 0), QItemSelectionModel::NoUpdate);
    }
    list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void frmItemPicker::ShowChoice()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    const QString name = ToQString(model_.Name());
    if (name_->text() != name) name_->setText(name);
    name_->setPlaceholderText(TranslatedText(model_.NameHint()));
    accept_->setText(Translated(model_.AcceptCaption()));
    accept_->setEnabled(model_.CanAccept());
}

void frmItemPicker::ShowMessage()
{
    message_->Say(TranslatedText(model_.Message()));
}

void frmItemPicker::AskLocks()
{
    const auto [first, last] = list_->RowsInSight();
    QElapsedTimer spent;
    for (spent.start(); spent.elapsed() < kLockSliceMs;) {
        const int32_t row = model_.AskNextLock(first, last);
        if (row < 0) return;
        items_->RowChanged(row);
    }
    lockTimer_.start(0);
}

} // namespace nib
