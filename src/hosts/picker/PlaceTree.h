#pragma once
#include "hosts/ItemBrowser.h"

#include <memory>

namespace nib {

/// The places of a browser as a tree that is read level by level, as far as it is opened: connections, accounts and
/// files, and the folders of the local file system under one heading.
class PlaceTree {
public:
    enum class Kind { Heading, Connection, Account, File, LocalPlace, Folder };
    struct Node {
        Text name;
        Text path; ///< empty for the heading
        Kind kind = Kind::Heading;
        const Node* parent = nullptr;
        bool read = false;
        std::vector<std::unique_ptr<Node>> children;
    };

    /// Reads the top level. `browser` outlives the tree.
    explicit PlaceTree(ItemBrowser& browser);

    const Node& Root() const { return root_; }
    static bool MayHaveChildren(const Node& node);
    /// The places below a node that has not been read; none when they cannot be read.
    std::vector<std::unique_ptr<Node>> Read(const Node& node) const;
    void Adopt(const Node& node, std::vector<std::unique_ptr<Node>> children);
    /// The paths that lead to `path`, from a place on the top level down; empty when it is below none.
    std::vector<Text> WayTo(TextView path) const;
    static int32_t RowOf(const Node& node);
    /// Null when no child has that path.
    static const Node* Child(const Node& node, TextView path);

private:
    ItemBrowser& browser_;
    Node root_;
    Node* heading_ = nullptr;
};

} // namespace nib
