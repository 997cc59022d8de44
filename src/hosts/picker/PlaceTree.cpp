#include "hosts/picker/PlaceTree.h"

#include "diagnostics/Guarded.h"
#include "hosts/mvConnect.h"

#include <algorithm>

namespace nib {

namespace {

using Nodes = std::vector<std::unique_ptr<PlaceTree::Node>>;

std::unique_ptr<PlaceTree::Node> MakeNode(const BrowseEntry& entry, PlaceTree::Kind kind, const PlaceTree::Node* parent)
{
    auto node = std::make_unique<PlaceTree::Node>();
    node->name = entry.name;
    node->path = entry.path;
    node->kind = kind;
    node->parent = parent;
    return node;
}

PlaceTree::Kind KindBelow(PlaceTree::Kind kind)
{
    using Kind = PlaceTree::Kind;
    if (kind == Kind::Connection) return Kind::Account;
    return kind == Kind::Account ? Kind::File : Kind::Folder;
}

} // namespace

PlaceTree::PlaceTree(ItemBrowser& browser) : browser_(browser)
{
    root_.read = true;
    auto heading = std::make_unique<Node>();
    heading->name = u"Local files";
    heading->parent = &root_;
    heading_ = heading.get();
    heading_->read = true;
    for (const BrowseEntry& entry : OrDefault([&] { return browser.Places(); }, std::vector<BrowseEntry>())) {
        const bool local = IsLocalPath(entry.path);
        Node& parent = local ? *heading_ : root_;
        parent.children.push_back(MakeNode(entry, local ? Kind::LocalPlace : Kind::Connection, &parent));
    }
    if (heading_->children.empty())
        heading_ = nullptr;
    else
        root_.children.push_back(std::move(heading));
}

bool PlaceTree::MayHaveChildren(const Node& node)
{
    if (node.read) return !node.children.empty();
    return node.kind != Kind::File;
}

Nodes PlaceTree::Read(const Node& node) const
{
    Nodes nodes;
    const bool local = IsLocalPath(node.path);
    for (const BrowseEntry& entry :
         OrDefault([&] { return browser_.Children(node.path); }, std::vector<BrowseEntry>())) {
        if (entry.isItem || (local && entry.name.starts_with(u'.'))) continue;
        nodes.push_back(MakeNode(entry, KindBelow(node.kind), &node));
    }
    return nodes;
}

void PlaceTree::Adopt(const Node& node, Nodes children)
{
    // Every node but the root belongs to its parent's list, through which it can be changed.
    Node& own = node.parent ? *node.parent->children[static_cast<size_t>(RowOf(node))] : root_;
    own.read = true;
    own.children = std::move(children);
}

std::vector<Text> PlaceTree::WayTo(TextView path) const
{
    std::vector<Text> way;
    for (Text step(path); !step.empty(); step = OrDefault([&] { return browser_.Parent(step); }, Text())) {
        way.insert(way.begin(), step);
        // The innermost place of the top level wins: home rather than the root that holds it.
        if (Child(root_, step) || (heading_ && Child(*heading_, step))) return way;
    }
    return {};
}

int32_t PlaceTree::RowOf(const Node& node)
{
    if (!node.parent) return 0;
    const auto& all = node.parent->children;
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& child) { return child.get() == &node; });
    return static_cast<int32_t>(found - all.begin());
}

const PlaceTree::Node* PlaceTree::Child(const Node& node, TextView path)
{
    const auto found = std::find_if(node.children.begin(), node.children.end(),
                                    [&](const auto& child) { return child->path == path; });
    return found == node.children.end() ? nullptr : found->get();
}

} // namespace nib
