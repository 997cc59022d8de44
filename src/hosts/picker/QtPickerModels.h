#pragma once
#include "hosts/picker/PickerList.h"

#include <QAbstractItemModel>
#include <QAbstractTableModel>
#include <QIcon>

#include <optional>

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

/// A PlaceTree for a tree view; a level is read when it is first opened.
class PlaceTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    explicit PlaceTreeModel(ItemBrowser& browser, QObject* parent = nullptr);

    /// Reads all levels anew.
    void Renew();
    /// Empty for a heading, which is no place.
    Text PathOf(const QModelIndex& index) const;
    /// The place itself or the innermost one above it that the tree shows; reads the levels on the way.
    QModelIndex Reveal(TextView path);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const PlaceTree::Node& NodeOf(const QModelIndex& index) const;
    QModelIndex IndexOf(const PlaceTree::Node& node) const;
    const QIcon& IconOf(const PlaceTree::Node& node) const;

    ItemBrowser& browser_;
    std::optional<PlaceTree> tree_;
    QIcon host_;
    QIcon home_;
    QIcon disk_;
    QIcon folder_;
};

} // namespace nib
