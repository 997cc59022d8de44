#pragma once
#include "hosts/picker/PickerList.h"

#include <QAbstractTableModel>
#include <QIcon>

namespace nib {

/// The rows of a PickerList as Qt's views want them; nothing is copied.
class PickerItemModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit PickerItemModel(const PickerList& list, QObject* parent = nullptr);

    /// The list was changed as a whole by `change`.
    template <typename Change>
    void Changing(Change&& change)
    {
        beginResetModel();
        change();
        endResetModel();
    }
    void RowChanged(int row) { emit dataChanged(index(row, 0), index(row, columnCount() - 1)); }

    /// A time (seconds since the epoch) as the list shows it.
    static QString ShownTime(int64_t seconds);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString Shown(const BrowseEntry& entry, PickerList::Column column) const;

    const PickerList& list_;
    QIcon placeIcon_;
    QIcon itemIcon_;
};

} // namespace nib
