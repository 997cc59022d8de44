#include "hosts/picker/PickerList.h"

#include "diagnostics/Guarded.h"
#include "hosts/mvConnect.h"

#include <algorithm>
#include <numeric>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

namespace nib {

namespace {

constexpr TextView kWildcards{u"*?"};

void AppendFolded(Text& out, TextView text)
{
    const size_t start = out.size();
    if (std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; })) {
        out.append(text);
        for (size_t i = start; i < out.size(); ++i) {
            if (out[i] >= u'A' && out[i] <= u'Z') out[i] = static_cast<char16_t>(out[i] + 32);
        }
        return;
    }
    // Folding makes a unit three units at most.
    out.resize(start + text.size() * 3);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = u_strFoldCase(out.data() + start, static_cast<int32_t>(text.size() * 3), text.data(),
                                         static_cast<int32_t>(text.size()), U_FOLD_CASE_DEFAULT, &status);
    out.resize(start + static_cast<size_t>(length));
}

bool MatchesWildcards(TextView name, TextView pattern)
{
    size_t at = 0;
    size_t p = 0;
    size_t star = TextView::npos;
    size_t resume = 0;
    while (at < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            resume = at;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[at])) {
            ++p;
            ++at;
        } else if (star != TextView::npos) {
            p = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == TextView::npos;
}

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

void NameFilter::Clear()
{
    names_.clear();
    ends_.assign(1, 0);
}

void NameFilter::Add(TextView name)
{
    AppendFolded(names_, name);
    ends_.push_back(names_.size());
}

NameFilter::Pattern NameFilter::Prepare(TextView pattern)
{
    Pattern prepared;
    AppendFolded(prepared.literal, pattern);
    const Text& literal = prepared.literal;
    if (literal.find_first_of(kWildcards) == Text::npos) return prepared;
    const bool tied = literal.starts_with(u'*') || literal.ends_with(u'*');
    prepared.wild = tied ? literal : u'*' + literal + u'*';
    return prepared;
}

bool NameFilter::Matches(int32_t number, const Pattern& pattern) const
{
    if (pattern.literal.empty()) return true;
    const auto i = static_cast<size_t>(number);
    const TextView name = TextView(names_).substr(ends_[i], ends_[i + 1] - ends_[i]);
    // Item ids may hold a "*" of their own, so the literal reading counts too.
    if (name.find(pattern.literal) != TextView::npos) return true;
    return !pattern.wild.empty() && MatchesWildcards(name, pattern.wild);
}

void PickerList::Fill(std::vector<BrowseEntry> entries, bool local)
{
    entries_ = std::move(entries);
    local_ = local;
    lockAsked_.assign(entries_.size(), 0);
    filter_.clear();
    names_.Clear();
    std::fill(std::begin(shows_) + 1, std::end(shows_), false);
    for (const BrowseEntry& entry : entries_) {
        names_.Add(entry.name);
        shows_[static_cast<size_t>(Column::Size)] |= entry.size >= 0;
        shows_[static_cast<size_t>(Column::Modified)] |= entry.modified >= 0;
        shows_[static_cast<size_t>(Column::LockedBy)] |= entry.readOnly || entry.isHashed || (entry.isItem && !local);
    }
    SortBy(sortColumn_, descending_);
}

int32_t PickerList::RowOf(int32_t entry) const
{
    const auto found = std::find(rows_.begin(), rows_.end(), static_cast<uint32_t>(entry));
    return found == rows_.end() ? -1 : static_cast<int32_t>(found - rows_.begin());
}

int32_t PickerList::Find(TextView path) const
{
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const BrowseEntry& entry) { return entry.path == path; });
    return found == entries_.end() ? -1 : static_cast<int32_t>(found - entries_.begin());
}

void PickerList::SetFilter(TextView filter)
{
    filter_ = filter;
    Refilter();
}

void PickerList::SetShowHidden(bool show)
{
    showHidden_ = show;
    Refilter();
}

void PickerList::SortBy(Column column, bool descending)
{
    sortColumn_ = column;
    descending_ = descending;
    order_.resize(entries_.size());
    std::iota(order_.begin(), order_.end(), 0U);
    const auto items =
        std::stable_partition(order_.begin(), order_.end(), [&](uint32_t i) { return !entries_[i].isItem; });
    // What is equal otherwise stays in the order of the names.
    const auto sort = [&](auto key) {
        const auto less = [&](uint32_t a, uint32_t b) { return key(entries_[a]) < key(entries_[b]); };
        std::stable_sort(order_.begin(), items, less);
        std::stable_sort(items, order_.end(), less);
    };
    if (column == Column::Size) sort([](const BrowseEntry& e) { return e.size; });
    if (column == Column::Modified) sort([](const BrowseEntry& e) { return e.modified; });
    if (column == Column::LockedBy) sort([](const BrowseEntry& e) { return TextView(e.lockedBy); });
    if (descending) {
        std::reverse(order_.begin(), items);
        std::reverse(items, order_.end());
    }
    Refilter();
}

void PickerList::Refilter()
{
    const NameFilter::Pattern pattern = NameFilter::Prepare(Trim(filter_));
    const bool hideDots = local_ && !showHidden_;
    rows_.clear();
    for (const uint32_t i : order_) {
        if (hideDots && entries_[i].name.starts_with(u'.')) continue;
        if (names_.Matches(static_cast<int32_t>(i), pattern)) rows_.push_back(i);
    }
}

Text PickerList::EmptyText() const
{
    if (!rows_.empty()) return {};
    if (!Trim(filter_).empty()) return u"No name matches the filter.";
    return entries_.empty() ? u"Nothing here." : u"Only hidden files here.";
}

int32_t PickerList::AskNextLock(ItemBrowser& browser, int32_t first, int32_t last)
{
    if (local_) return -1;
    for (int32_t row = std::max(first, 0); row <= last && row < RowCount(); ++row) {
        const uint32_t i = rows_[static_cast<size_t>(row)];
        if (!entries_[i].isItem || lockAsked_[i]) continue;
        lockAsked_[i] = 1;
        entries_[i].lockedBy = OrDefault([&] { return browser.LockHolder(entries_[i].path); }, entries_[i].lockedBy);
        return row;
    }
    return -1;
}

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
