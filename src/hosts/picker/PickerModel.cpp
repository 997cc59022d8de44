#include "hosts/picker/PickerModel.h"

#include "diagnostics/Guarded.h"
#include "hosts/mvConnect.h"

#include <algorithm>

namespace nib {

namespace {

constexpr char16_t kQuote = u'"';
/// More names than this are counted rather than spelled out.
constexpr size_t kMostNamesShown = 50;

/// Cuts the first name off a list that does not begin with a blank.
TextView TakeName(TextView& list)
{
    const bool quoted = list.front() == kQuote;
    if (quoted) list.remove_prefix(1);
    const size_t end = std::min(list.find(quoted ? kQuote : u' '), list.size());
    const TextView name = list.substr(0, end);
    list.remove_prefix(std::min(end + 1, list.size()));
    return name;
}

/// What to tell the user when `body` fails; empty when it does not.
template <typename Body>
Text ComplaintOf(Body&& body)
{
    auto failure = FailureOf(body);
    if (!failure) return {};
    return failure->description.empty() ? Text(u"It cannot be read.") : failure->description;
}

struct ModeCaption {
    TextView mode;
    TextView caption;
};

// "I" is the access key of the item name.
constexpr ModeCaption kCaptions[] = {{u"Save", u"&Save"}, {u"Export", u"&Export"}, {u"Import", u"I&mport"}};

} // namespace

std::vector<Text> SplitTypedNames(TextView typed, bool several)
{
    TextView rest = Trim(typed);
    std::vector<Text> names;
    const bool wrapped = rest.size() > 2 && rest.front() == kQuote && rest.find(kQuote, 1) == rest.size() - 1;
    if (wrapped) {
        names.emplace_back(rest.substr(1, rest.size() - 2));
    } else if (!several || !rest.starts_with(kQuote)) {
        if (!rest.empty()) names.emplace_back(rest);
    } else {
        for (; !rest.empty(); rest = Trim(rest)) {
            if (const TextView name = TakeName(rest); !name.empty()) names.emplace_back(name);
        }
    }
    return names;
}

Text JoinTypedNames(const std::vector<Text>& names)
{
    if (names.size() == 1) return names.front();
    Text joined;
    for (const Text& name : names) {
        if (!joined.empty()) joined += u' ';
        joined += kQuote + name + kQuote;
    }
    return joined;
}

PickerModel::PickerModel(SelectRequest request, ItemBrowser& browser) : request_(std::move(request)), browser_(browser)
{
}

void PickerModel::Start(TextView startPath)
{
    const auto isLocalItem = [&] {
        const Target target = Locate(Text(startPath));
        return target.exists && !target.isPlace;
    };
    const bool isItem =
        request_.startNamed || IsHostItemPath(startPath) || (IsLocalPath(startPath) && OrDefault(isLocalItem, false));
    EnterNearest(isItem ? Above(startPath) : Text(startPath));
    if (!request_.startNamed) return;
    TypeName(PlaceName(startPath));
    SelectPath(startPath);
}

Text PickerModel::Above(TextView path) const
{
    return OrDefault([&] { return browser_.Parent(path); }, Text());
}

void PickerModel::EnterNearest(Text path)
{
    IgnoringErrors([&] { Read({}); }); // for the names of the connections on the trail
    Text said;
    while (!Enter(path) && !path.empty()) {
        if (said.empty()) said = message_;
        path = Above(path);
    }
    if (message_.empty()) message_ = said;
}

void PickerModel::Renew()
{
    placeNames_.clear();
    history_.clear();
    EnterNearest(place_);
}

// Where it stands

std::vector<BrowseEntry> PickerModel::Read(TextView path)
{
    std::vector<BrowseEntry> entries = path.empty() ? browser_.Places() : browser_.Children(path);
    for (const BrowseEntry& entry : entries) {
        if (!entry.isItem && !IsLocalPath(entry.path)) placeNames_[entry.path] = entry.name;
    }
    return entries;
}

bool PickerModel::Enter(TextView path)
{
    const Text wanted(path);
    message_ = ComplaintOf([&] {
        std::vector<BrowseEntry> entries = Read(wanted);
        std::vector<PlaceStep> trail;
        for (Text step = wanted; !step.empty(); step = browser_.Parent(step)) {
            const auto known = placeNames_.find(step);
            trail.insert(trail.begin(), {known != placeNames_.end() ? known->second : PlaceName(step), step});
        }
        place_ = wanted;
        trail_ = std::move(trail);
        Show(std::move(entries));
    });
    return message_.empty();
}

void PickerModel::Show(std::vector<BrowseEntry> entries)
{
    selected_.clear();
    if (nameIsSelection_ && !IsSaving()) name_.clear();
    nameIsSelection_ = false;
    list_.Fill(std::move(entries), IsLocalPath(place_));
}

bool PickerModel::GoTo(TextView path)
{
    const Text from = place_;
    if (!Enter(path)) return false;
    if (from != place_) history_.push_back(from);
    return true;
}

void PickerModel::GoUp()
{
    if (!CanGoUp()) return;
    const Text from = place_;
    if (GoTo(browser_.Parent(from))) SelectPath(from);
}

void PickerModel::GoBack()
{
    if (!CanGoBack()) return;
    const Text from = place_;
    const Text to = history_.back();
    history_.pop_back();
    if (Enter(to)) SelectPath(from);
}

void PickerModel::Refresh()
{
    const Text filter = list_.Filter();
    if (!Enter(Text(place_))) return Show({});
    SetFilter(filter);
}

// What it lists

void PickerModel::SetFilter(TextView filter)
{
    list_.SetFilter(filter);
    DropUnseenSelection();
}

void PickerModel::SetShowHidden(bool show)
{
    list_.SetShowHidden(show);
    DropUnseenSelection();
}

void PickerModel::SortBy(PickerList::Column column, bool descending)
{
    list_.SortBy(column, descending);
}

/// What the user no longer sees must not be opened by OK.
void PickerModel::DropUnseenSelection()
{
    if (selected_.empty()) return;
    const std::vector<int32_t> seen = SelectedRows();
    if (seen.size() != selected_.size()) SelectRows(seen);
}

// What is chosen

void PickerModel::SelectRows(const std::vector<int32_t>& rows)
{
    selected_.clear();
    std::vector<Text> items;
    for (const int32_t row : rows) {
        selected_.push_back(list_.EntryOf(row));
        if (list_.Row(row).isItem) items.push_back(list_.Row(row).name);
    }
    // A name for saving outlives the way through the folders.
    if (items.empty() && (IsSaving() || !nameIsSelection_)) return;
    name_ = items.size() > kMostNamesShown ? Text() : JoinTypedNames(items);
    nameIsSelection_ = !items.empty();
}

std::vector<int32_t> PickerModel::SelectedRows() const
{
    std::vector<int32_t> rows;
    if (selected_.empty()) return rows;
    std::vector<char> wanted(list_.Entries().size());
    for (const int32_t entry : selected_) wanted[static_cast<size_t>(entry)] = 1;
    for (int32_t row = 0; row < list_.RowCount(); ++row) {
        if (wanted[static_cast<size_t>(list_.EntryOf(row))]) rows.push_back(row);
    }
    return rows;
}

void PickerModel::SelectPath(TextView path)
{
    const int32_t row = list_.RowOf(list_.Find(path));
    if (row >= 0) SelectRows({row});
}

void PickerModel::TypeName(TextView name)
{
    name_ = name;
    nameIsSelection_ = false;
    selected_.clear();
}

Text PickerModel::NameHint() const
{
    return selected_.size() > kMostNamesShown ? Decimal(static_cast<int64_t>(selected_.size())) + u" selected" : Text();
}

Text PickerModel::AcceptCaption() const
{
    const bool descends = selected_.size() == 1 && !list_.Entries()[static_cast<size_t>(selected_.front())].isItem;
    for (const ModeCaption& row : kCaptions) {
        if (row.mode == request_.mode && !descends) return Text(row.caption);
    }
    return u"&Open";
}

PickerModel::Outcome PickerModel::Accept()
{
    message_.clear();
    answer_.paths.clear();
    return selected_.empty() ? AcceptNames() : AcceptRows();
}

PickerModel::Outcome PickerModel::AcceptFilter()
{
    if (list_.RowCount() != 1) return Outcome::Stays;
    SelectRows({0});
    return Accept();
}

PickerModel::Outcome PickerModel::AcceptRows()
{
    const auto entry = [&](int32_t i) -> const BrowseEntry& { return list_.Entries()[static_cast<size_t>(i)]; };
    if (selected_.size() == 1 && !entry(selected_.front()).isItem) {
        const Text path = entry(selected_.front()).path;
        return GoTo(path) ? Outcome::Moves : Outcome::Stays;
    }
    for (const int32_t i : selected_) {
        if (entry(i).isItem) answer_.paths.push_back(entry(i).path);
    }
    if (!answer_.paths.empty()) return Outcome::Answers;
    message_ = u"Select one place to go into, or the items to open.";
    return Outcome::Stays;
}

PickerModel::Outcome PickerModel::AcceptNames()
{
    const std::vector<Text> names = SplitTypedNames(name_, request_.several);
    Text place;
    message_ = ComplaintOf([&] {
        for (const Text& name : names) {
            Target target = name == u".." ? Target{browser_.Parent(place_), true, true} : FindTyped(name);
            if (target.isPlace && names.size() > 1) {
                throw Error(error_number::kBadFileName, u"\"" + name + u"\" is a place, not an item.");
            }
            if (request_.mustExist && !target.exists) {
                throw Error(error_number::kFileNotFound, u"\"" + name + u"\" does not exist.");
            }
            if (!target.isPlace) {
                answer_.paths.push_back(std::move(target.path));
                continue;
            }
            if (!GoTo(target.path)) throw Error(error_number::kPathNotFound, Text(message_));
            name_.clear();
        }
    });
    if (!message_.empty()) answer_.paths.clear();
    if (!answer_.paths.empty()) return Outcome::Answers;
    return message_.empty() && !names.empty() ? Outcome::Moves : Outcome::Stays;
}

/// The item or place that a typed name means; a local name without a dot that names nothing gets the extension.
PickerModel::Target PickerModel::FindTyped(const Text& name)
{
    Text typed = name;
    if (typed.size() > 1 && typed.ends_with(u'/') && (typed.front() == u'/' || IsLocalPath(place_))) typed.pop_back();
    Target target = Locate(browser_.Resolve(place_, typed));
    const bool hasDot = typed.substr(typed.rfind(u'/') + 1).find(u'.') != Text::npos;
    if (target.exists || hasDot || request_.extension.empty() || !IsLocalPath(target.path)) return target;
    return Locate(target.path + u"." + request_.extension);
}

/// Whether a host item exists is asked for only where it matters: it takes a listing of its file.
PickerModel::Target PickerModel::Locate(Text path)
{
    Target target{std::move(path)};
    const Text parent = browser_.Parent(target.path);
    const bool isLocal = IsLocalPath(target.path);
    target.isPlace = parent.empty() || (!isLocal && !IsHostItemPath(target.path));
    target.exists = target.isPlace;
    if (target.isPlace || (!isLocal && !request_.mustExist)) return target;
    // A folder that may not be listed may still give its files.
    bool denied = false;
    const std::vector<BrowseEntry> entries = Guarded(
        DebugLog(), u"PickerModel.Locate", [&] { return Read(parent); },
        [&](const Error& error) {
            denied = error.number == error_number::kPermissionDenied;
            if (!denied) throw error;
            return std::vector<BrowseEntry>();
        });
    target.exists = denied;
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const BrowseEntry& entry) { return entry.path == target.path; });
    if (found != entries.end()) target = {std::move(target.path), !found->isItem, true};
    return target;
}

} // namespace nib
