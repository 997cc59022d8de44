// The editor in a cell; declared with the view.

#include "platform/qt/QtText.h"
#include "records/QtGridView.h"

#include <QKeyEvent>

#include <algorithm>
#include <limits>

namespace nib {

namespace {

/// Also by leading to another cell.
bool EndsEditing(int key)
{
    constexpr int kKeys[] = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab,    Qt::Key_Backtab,
                             Qt::Key_Up,     Qt::Key_Down,  Qt::Key_PageUp, Qt::Key_PageDown};
    return std::find(std::begin(kKeys), std::end(kKeys), key) != std::end(kKeys);
}

} // namespace

QWidget* QtGridCells::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    auto* line = new QLineEdit(parent);
    line->setFrame(false);
    line->setMaxLength(std::numeric_limits<int>::max());
    line->setAlignment(index.data(Qt::TextAlignmentRole).value<Qt::Alignment>());
    const QVariant across = model_.headerData(index.column(), Qt::Horizontal, Qt::DisplayRole);
    const QVariant down = model_.headerData(index.row(), Qt::Vertical, Qt::DisplayRole);
    line->setAccessibleName(down.toString() + QStringLiteral(", ") + across.toString());
    edited_ = index;
    editor_ = line;
    return line;
}

void QtGridCells::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    // A change that comes from elsewhere must not take away what is being typed.
    auto* line = static_cast<QLineEdit*>(editor);
    if (line->isModified()) return;
    before_ = index.data(Qt::EditRole).toString();
    line->setText(before_);
}

/// Another value is in that place by now: a client has changed the text, or put lines above.
bool QtGridCells::IsStale(const QModelIndex& index) const
{
    return index.data(Qt::EditRole).toString() != before_;
}

void QtGridCells::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    auto* line = static_cast<QLineEdit*>(editor);
    if (!line->isModified()) return;
    if (IsStale(index)) {
        if (model_.onRefused) model_.onRefused(QtGridModel::tr("The record was changed meanwhile."));
        return;
    }
    if (model->setData(index, line->text(), Qt::EditRole)) line->setModified(false);
}

bool QtGridCells::eventFilter(QObject* editor, QEvent* event)
{
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (!line || event->type() != QEvent::KeyPress) return QStyledItemDelegate::eventFilter(editor, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Backslash && key->modifiers() == Qt::ControlModifier) {
        line->insert(QChar(kSubValueSign));
        return true;
    }
    if (EndsEditing(key->key()) && line->isModified()) {
        const QString reason = IsStale(edited_) ? QtGridModel::tr("The record was changed meanwhile.")
                                                : model_.Refusal(edited_, line->text());
        if (model_.onRefused) model_.onRefused(reason);
        if (!reason.isEmpty()) return true;
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}

} // namespace nib
