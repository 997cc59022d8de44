#pragma once
#include "hosts/picker/PlaceTree.h"

#include <QAbstractItemModel>
#include <QIcon>

namespace nib {

/// A PlaceTree for a tree view; a level is read when it is first opened.
class PlaceTreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    explicit PlaceTreeModel(ItemBrowser& browser, QObject* parent = nullptr);

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

    PlaceTree tree_;
    QIcon host_;
    QIcon home_;
    QIcon disk_;
    QIcon folder_;
};

} // namespace nib
