#include "language/account/AccountLists.h"

#include "diagnostics/Guarded.h"
#include "language/account/ProgramShape.h"

#include <algorithm>

namespace nib {

namespace {

using Clock = std::chrono::steady_clock;

/// Between two looks at what tells nothing by itself.
constexpr auto kLookEvery = std::chrono::seconds(15);

/// Items of a file that are read to find out whether it holds programs: of a folder, of a server.
constexpr size_t kSamples = 32;
constexpr size_t kSamplesFar = 8;

} // namespace

/// False when `body` fails for this file or item alone.
template <typename Body>
bool AccountLists::Attempt(Body&& body)
{
    const std::optional<Error> failure = FailureOf(std::forward<Body>(body));
    if (failure && failure->number == error_number::kDeviceUnavailable) throw Error(*failure);
    return !failure;
}

void AccountLists::Know(const StoredItem& stored)
{
    File& file = files_[stored.name.file];
    if (stored.isProgram) file.kind = File::Kind::Programs;
    const auto [at, isNew] = file.items.try_emplace(stored.name.item);
    at->second = {stored.stamp, stored.isProgram, !stored.stamp.empty(), 0, 0};
    if (!isNew) return;
    ++itemCount_;
    byName_[ToUpper(stored.name.item)].push_back(stored.name);
}

bool AccountLists::Work(Deadline until)
{
    if (!begun_) {
        begun_ = true;
        ListFiles();
        looked_ = Clock::now();
    }
    TakeChanges();
    if (Clock::now() - looked_ > kLookEvery) LookAgain();
    while (Clock::now() < until) {
        if (listing_) {
            // A look at a file of another machine may take its time.
            for (int i = 0; i < 8 && listing_->next < listing_->ids.size(); ++i)
                Compare(listing_->ids[listing_->next++]);
            if (listing_->next == listing_->ids.size()) EndListing();
        } else if (!toList_.empty()) {
            const Text file = std::move(toList_.front());
            toList_.pop_front();
            BeginListing(file);
        } else {
            return false;
        }
    }
    return true;
}

void AccountLists::ListFiles()
{
    std::vector<Text> names;
    std::string folder;
    hasFiles_ = Attempt([&] { names = reader_.Files(); });
    if (!hasFiles_) return;
    if (!filesAreWatched_ && Attempt([&] { folder = reader_.Folder({}); }) && !folder.empty())
        filesAreWatched_ = watch_.Add(folder, 0);
    allFiles_ = names;
    std::set<Text> present;
    for (const Text& name : names) {
        if (!MayHoldPrograms(name)) continue;
        present.insert(name);
        if (const auto known = files_.find(name); known == files_.end() || !known->second.isListed) ToList(name);
    }
    for (auto at = files_.begin(); at != files_.end();) {
        if (present.contains(at->first)) {
            ++at;
            continue;
        }
        Unwatch(at->second);
        if (listing_ && listing_->file == at->first) listing_.reset();
        while (!at->second.items.empty()) Remove(at->first, at->second.items.begin());
        at = files_.erase(at);
    }
    for (const Text& name : present) files_.try_emplace(name);
}

void AccountLists::TakeChanges()
{
    bool files = false;
    for (const FolderWatch::Change& change : watch_.Changes()) {
        if (change.folder == 0) {
            files = true;
        } else if (const auto file = numbers_.find(change.folder); file != numbers_.end()) {
            ToList(file->second);
        }
    }
    if (files) ListFiles();
}

void AccountLists::LookAgain()
{
    looked_ = Clock::now();
    if (!IsComplete()) return;
    if (!filesAreWatched_) ListFiles();
    for (const auto& [name, file] : files_)
        if (!file.isWatched && file.kind != File::Kind::Others) ToList(name);
    // Whoever keeps no times is asked for the text of an item after the other.
    ItemName next = swept_;
    for (auto file = files_.lower_bound(next.file); file != files_.end(); ++file, next = {}) {
        const auto item = file->second.items.upper_bound(next.item);
        if (item == file->second.items.end()) continue;
        swept_ = {file->first, item->first};
        if (item->second.stamp.starts_with(u'#')) Want(swept_);
        return;
    }
    swept_ = {};
}

void AccountLists::ToList(const Text& file)
{
    if (std::find(toList_.begin(), toList_.end(), file) == toList_.end()) toList_.push_back(file);
}

void AccountLists::BeginListing(const Text& name)
{
    const auto at = files_.find(name);
    if (at == files_.end()) return;
    File& file = at->second;
    if (file.kind == File::Kind::Unknown && !file.isListed && rules_.isLeftAlone(name)) file.kind = File::Kind::Others;
    file.isListed = true;
    if (file.kind == File::Kind::Others) return;
    Listing listing{name, {}, 0};
    std::string folder;
    // First to be told of changes, then to look: what comes between the two is seen twice and not missed.
    if (!file.isWatched && Attempt([&] { folder = reader_.Folder(name); }) && !folder.empty()) {
        file.number = ++lastNumber_;
        file.isWatched = watch_.Add(folder, file.number);
        if (file.isWatched) numbers_[file.number] = name;
    }
    file.isCertain = Attempt([&] { listing.ids = reader_.Ids(name); });
    if (!file.isCertain) return;
    if (file.kind == File::Kind::Unknown) Judge(name, file, listing.ids);
    if (file.kind == File::Kind::Programs) listing_ = std::move(listing);
}

/// A file of a few items may become one of programs any time.
void AccountLists::Judge(const Text& name, File& file, const std::vector<Text>& ids)
{
    if (HoldsPrograms(name, ids)) {
        file.kind = File::Kind::Programs;
    } else if (ids.size() > kSamples) {
        file.kind = File::Kind::Others;
        rules_.leaveAlone(name);
        Unwatch(file); // what is written there all the time is of no interest
    }
}

void AccountLists::Unwatch(File& file)
{
    watch_.Remove(file.number);
    numbers_.erase(file.number);
    file.isWatched = false;
}

bool AccountLists::HoldsPrograms(const Text& file, const std::vector<Text>& ids)
{
    const size_t most = files_[file].isWatched ? kSamples : kSamplesFar;
    const size_t step = ids.size() / most + 1;
    for (size_t i = 0; i < ids.size(); i += step) {
        std::optional<Text> text;
        if (Attempt([&] { text = reader_.Read(file, ids[i]); }) && text && LooksLikeProgram(*text, dialect_))
            return true;
    }
    return false;
}

void AccountLists::Compare(const Text& id)
{
    File& file = files_[listing_->file];
    const auto [at, isNew] = file.items.try_emplace(id);
    const ItemName name{listing_->file, id};
    if (isNew) {
        ++itemCount_;
        byName_[ToUpper(id)].push_back(name);
    }
    Text stamp;
    Attempt([&] { stamp = reader_.Stamp(name.file, name.item); });
    if (at->second.wasRead && (stamp.empty() || stamp == at->second.stamp)) return;
    at->second.noticed = Now();
    Want(name);
}

void AccountLists::EndListing()
{
    File& file = files_[listing_->file];
    std::vector<Text>& ids = listing_->ids;
    std::sort(ids.begin(), ids.end());
    for (auto at = file.items.begin(); at != file.items.end();) {
        const auto next = std::next(at);
        if (!std::binary_search(ids.begin(), ids.end(), at->first)) Remove(listing_->file, at);
        at = next;
    }
    listing_.reset();
}

void AccountLists::Remove(const Text& file, std::map<Text, Item>::iterator item)
{
    const ItemName name{file, item->first};
    const auto alike = byName_.find(ToUpper(name.item));
    if (alike != byName_.end() && std::erase(alike->second, name) > 0 && alike->second.empty()) byName_.erase(alike);
    --itemCount_;
    files_[file].items.erase(item);
    gone_.push_back(name);
}

void AccountLists::Want(const ItemName& name, bool first)
{
    if (first)
        unread_.push_front(name);
    else if (!wanted_.contains(name))
        unread_.push_back(name);
    wanted_.insert(name);
}

void AccountLists::Look(const ItemName& name)
{
    const auto file = files_.find(name.file);
    if (file == files_.end() || file->second.isWatched || file->second.kind == File::Kind::Others) return;
    if (file->second.items.contains(name.item))
        Want(name);
    else
        ToList(name.file);
}

std::optional<ItemName> AccountLists::TakeUnread()
{
    while (!unread_.empty()) {
        ItemName name = std::move(unread_.front());
        unread_.pop_front();
        if (wanted_.erase(name) == 0) continue;
        const auto file = files_.find(name.file);
        if (file != files_.end() && file->second.items.contains(name.item)) return name;
    }
    return std::nullopt;
}

std::optional<ItemName> AccountLists::TakeGone()
{
    if (gone_.empty()) return std::nullopt;
    ItemName name = std::move(gone_.front());
    gone_.pop_front();
    return name;
}

void AccountLists::WasRead(const ItemName& name, Text stamp, bool isProgram)
{
    wanted_.erase(name);
    const auto file = files_.find(name.file);
    if (file == files_.end()) return;
    if (const auto item = file->second.items.find(name.item); item != file->second.items.end())
        item->second = {std::move(stamp), isProgram, true, item->second.noticed, Now()};
}

bool AccountLists::IsCertain() const
{
    return IsComplete() && hasFiles_ &&
           std::all_of(files_.begin(), files_.end(), [](const auto& file) { return file.second.isCertain; });
}

bool AccountLists::HoldsNone(TextView name) const
{
    const auto file = files_.find(Text(name));
    return file != files_.end() && file->second.kind != File::Kind::Programs;
}

void AccountLists::WantFile(TextView name)
{
    // It may be said before there is a list of files; what is none of them goes with the first one.
    if (!MayHoldPrograms(name)) return;
    const auto file = files_.try_emplace(Text(name)).first;
    if (std::exchange(file->second.kind, File::Kind::Programs) != File::Kind::Programs) ToList(file->first);
}

const AccountLists::Item* AccountLists::Find(ItemName& name)
{
    const auto inFile = [&](const Text& fileName) -> const Item* {
        const auto file = files_.find(fileName);
        if (file == files_.end()) return nullptr;
        const auto item = file->second.items.find(name.item);
        if (item == file->second.items.end()) return nullptr;
        name.file = fileName;
        return &item->second;
    };
    if (const Item* exact = inFile(name.file)) return exact;
    for (const ItemName& alike : Named(name.item)) {
        if (!EqualsNoCase(alike.file, name.file)) continue;
        name = alike;
        return inFile(name.file);
    }
    return nullptr;
}

std::vector<ItemName> AccountLists::Named(TextView item) const
{
    const auto alike = byName_.find(ToUpper(item));
    return alike == byName_.end() ? std::vector<ItemName>() : alike->second;
}

std::vector<Text> AccountLists::ItemsOf(TextView file) const
{
    std::vector<Text> ids;
    if (const auto known = files_.find(Text(file)); known != files_.end())
        for (const auto& [id, item] : known->second.items) ids.push_back(id);
    return ids;
}

} // namespace nib
