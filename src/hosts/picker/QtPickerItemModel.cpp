#include "hosts/picker/QtPickerItemModel.h"

#include "platform/qt/QtText.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>
#include <QPalette>
#include <QStyle>

namespace nib {

namespace {

constexpr const char* kHeadings[] = {
    QT_TRANSLATE_NOOP("nib::PickerItemModel", "Name"), QT_TRANSLATE_NOOP("nib::PickerItemModel", "Size"),
    QT_TRANSLATE_NOOP("nib::PickerItemModel", "Modified"), QT_TRANSLATE_NOOP("nib::PickerItemModel", "Locked by")};

/// Keeps a number at the right edge of its column apart from the text that follows.
QString Apart(const QString& number)
{
    return number + QChar(0x2003);
}

} // namespace

PickerItemModel::PickerItemModel(const PickerList& list, QObject* parent)
    : QAbstractTableModel(parent), list_(list), placeIcon_(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
      itemIcon_(QApplication::style()->standardIcon(QStyle::SP_FileIcon))
{
}

int PickerItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : list_.RowCount();
}

int PickerItemModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(std::size(kHeadings));
}

QString PickerItemModel::ShownTime(int64_t seconds)
{
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat);
}

QString PickerItemModel::Shown(const BrowseEntry& entry, PickerList::Column column) const
{
    switch (column) {
    case PickerList::Column::Name: return ToQString(entry.name);
    case PickerList::Column::Size: return entry.size < 0 ? QString() : Apart(QLocale().formattedDataSize(entry.size));
    case PickerList::Column::Modified: return entry.modified < 0 ? QString() : ShownTime(entry.modified);
    case PickerList::Column::LockedBy:
        return entry.lockedBy.empty() && entry.readOnly ? tr("(read-only)") : ToQString(entry.lockedBy);
    }
    return {};
}

QVariant PickerItemModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= list_.RowCount()) return {};
    const BrowseEntry& entry = list_.Row(index.row());
    const auto column = static_cast<PickerList::Column>(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return Shown(entry, column);
    case Qt::DecorationRole:
        return column == PickerList::Column::Name ? QVariant(entry.isItem ? itemIcon_ : placeIcon_) : QVariant();
    case Qt::TextAlignmentRole:
        return column == PickerList::Column::Size ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter)) : QVariant();
    case Qt::ForegroundRole:
        return column == PickerList::Column::LockedBy && entry.lockedBy.empty()
                   ? QVariant(QApplication::palette().brush(QPalette::PlaceholderText))
                   : QVariant();
    case Qt::ToolTipRole: return column == PickerList::Column::Size ? QVariant() : Shown(entry, column);
    default: return {};
    }
}

QVariant PickerItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const bool isSize = section == static_cast<int>(PickerList::Column::Size);
    if (role == Qt::DisplayRole) return isSize ? Apart(tr(kHeadings[section])) : tr(kHeadings[section]);
    if (role == Qt::TextAlignmentRole) return int((isSize ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

} // namespace nib
