#include "hosts/picker/QtPickerModels.h"

#include "platform/qt/QtDesktop.h"
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
        if (entry.isHashed) return tr("(hashed file)");
        return entry.lockedBy.empty() && entry.readOnly ? tr("(read-only)") : Translated(entry.lockedBy);
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

PlaceTreeModel::PlaceTreeModel(ItemBrowser& browser, QObject* parent)
    : QAbstractItemModel(parent), browser_(browser), tree_(browser)
{
    const QStyle* style = QApplication::style();
    host_ = style->standardIcon(QStyle::SP_DriveNetIcon);
    home_ = style->standardIcon(QStyle::SP_DirHomeIcon);
    disk_ = style->standardIcon(QStyle::SP_DriveHDIcon);
    folder_ = style->standardIcon(QStyle::SP_DirIcon);
}

void PlaceTreeModel::Renew()
{
    beginResetModel();
    tree_.emplace(browser_);
    endResetModel();
}

const PlaceTree::Node& PlaceTreeModel::NodeOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<const PlaceTree::Node*>(index.constInternalPointer()) : tree_->Root();
}

QModelIndex PlaceTreeModel::IndexOf(const PlaceTree::Node& node) const
{
    return node.parent ? createIndex(PlaceTree::RowOf(node), 0, &node) : QModelIndex();
}

const QIcon& PlaceTreeModel::IconOf(const PlaceTree::Node& node) const
{
    if (node.kind == PlaceTree::Kind::Connection) return host_;
    if (node.kind != PlaceTree::Kind::LocalPlace) return folder_;
    return node.path.ends_with(u":/") ? disk_ : home_;
}

Text PlaceTreeModel::PathOf(const QModelIndex& index) const
{
    return NodeOf(index).path;
}

QModelIndex PlaceTreeModel::Reveal(TextView path)
{
    const PlaceTree::Node* node = &tree_->Root();
    for (const Text& step : tree_->WayTo(path)) {
        if (canFetchMore(IndexOf(*node))) fetchMore(IndexOf(*node));
        const PlaceTree::Node* next = PlaceTree::Child(*node, step);
        // Places on the top level may stand under a heading.
        for (const auto& child : node->children) {
            if (!next && child->kind == PlaceTree::Kind::Heading) next = PlaceTree::Child(*child, step);
        }
        if (!next) break;
        node = next;
    }
    return IndexOf(*node);
}

QModelIndex PlaceTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    const PlaceTree::Node& node = NodeOf(parent);
    if (column != 0 || row < 0 || row >= static_cast<int>(node.children.size())) return {};
    return createIndex(row, column, node.children[static_cast<size_t>(row)].get());
}

QModelIndex PlaceTreeModel::parent(const QModelIndex& index) const
{
    const PlaceTree::Node* parent = NodeOf(index).parent;
    return parent ? IndexOf(*parent) : QModelIndex();
}

int PlaceTreeModel::rowCount(const QModelIndex& parent) const
{
    return static_cast<int>(NodeOf(parent).children.size());
}

int PlaceTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool PlaceTreeModel::hasChildren(const QModelIndex& parent) const
{
    return PlaceTree::MayHaveChildren(NodeOf(parent));
}

bool PlaceTreeModel::canFetchMore(const QModelIndex& parent) const
{
    const PlaceTree::Node& node = NodeOf(parent);
    return !node.read && PlaceTree::MayHaveChildren(node);
}

void PlaceTreeModel::fetchMore(const QModelIndex& parent)
{
    const QtWaitCursor wait;
    const PlaceTree::Node& node = NodeOf(parent);
    auto children = tree_->Read(node);
    if (children.empty()) {
        tree_->Adopt(node, {});
        // The mark that it can be opened goes away.
        emit dataChanged(parent, parent);
        return;
    }
    beginInsertRows(parent, 0, static_cast<int>(children.size()) - 1);
    tree_->Adopt(node, std::move(children));
    endInsertRows();
}

Qt::ItemFlags PlaceTreeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    return NodeOf(index).path.empty() ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

QVariant PlaceTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const PlaceTree::Node& node = NodeOf(index);
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return node.kind == PlaceTree::Kind::Heading ? Translated(node.name) : ToQString(node.name);
    if (role == Qt::DecorationRole && !node.path.empty()) return IconOf(node);
    return {};
}

} // namespace nib
