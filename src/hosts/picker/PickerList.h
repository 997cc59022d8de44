#pragma once
#include "base/Text.h"
#include "hosts/ItemBrowser.h"

#include <memory>
#include <vector>

namespace nib {

/// The names of a list with their case folded once, so that a keystroke in a filter is one pass over a flat text.
class NameFilter {
public:
    void Clear();
    void Add(TextView name);

    /// A pattern made ready for many names.
    struct Pattern {
        Text literal;
        Text wild; ///< empty without wildcards
    };
    static Pattern Prepare(TextView pattern);
    /// Name `number` (in the order of Add) holds the pattern, or matches it with "*" and "?" read as wildcards:
    /// anywhere, unless a "*" at one end of the pattern ties the other end down. An empty pattern matches everything.
    bool Matches(int32_t number, const Pattern& pattern) const;

private:
    Text names_;
    std::vector<size_t> ends_{0};
};

/// The entries of one place, and the rows of them that a filter lets through, in the order that was asked for.
class PickerList {
public:
    enum class Column : int32_t { Name, Size, Modified, LockedBy };

    /// `entries` come sorted by name. Ends the filter; order and hidden files stay as they were chosen.
    void Fill(std::vector<BrowseEntry> entries, bool local);

    const std::vector<BrowseEntry>& Entries() const { return entries_; }
    int32_t RowCount() const { return static_cast<int32_t>(rows_.size()); }
    const BrowseEntry& Row(int32_t row) const { return entries_[rows_[static_cast<size_t>(row)]]; }
    /// Position in Entries() of a row, and the reverse; -1 when that entry is not among the rows.
    int32_t EntryOf(int32_t row) const { return static_cast<int32_t>(rows_[static_cast<size_t>(row)]); }
    int32_t RowOf(int32_t entry) const;
    /// Position in Entries(), -1 when there is none.
    int32_t Find(TextView path) const;

    const Text& Filter() const { return filter_; }
    void SetFilter(TextView filter);
    /// Names that begin with a dot, in the local file system.
    void SetShowHidden(bool show);
    bool ShowsHidden() const { return showHidden_; }
    /// Places stay above items whatever the order.
    void SortBy(Column column, bool descending);
    /// False for a column that is empty in every row.
    bool Shows(Column column) const { return shows_[static_cast<size_t>(column)]; }
    /// Said in place of an empty list.
    Text EmptyText() const;
    /// Asks who holds the lock of the first item from row `first` to row `last` that has not been asked for; answers
    /// its row, or -1 when there is none.
    int32_t AskNextLock(ItemBrowser& browser, int32_t first, int32_t last);

private:
    void Refilter();

    std::vector<BrowseEntry> entries_;
    bool local_ = false;
    NameFilter names_;
    std::vector<char> lockAsked_;
    bool shows_[4] = {true, false, false, false};
    std::vector<uint32_t> order_;
    std::vector<uint32_t> rows_;
    Text filter_;
    bool showHidden_ = false;
    Column sortColumn_ = Column::Name;
    bool descending_ = false;
};

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
