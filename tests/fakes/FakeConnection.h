#pragma once
// Items in memory, with locks, and failures on demand.

#include "base/Error.h"
#include "hosts/ItemReader.h"
#include "hosts/StoredForm.h"
#include "hosts/mvConnect.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace nib::test {

struct StoredItem {
    Text text;
    bool readOnly = false;
    bool isItem = true;
};

struct FakeSession final : mvSession {
    Text account;
    std::optional<Error> failure;
    std::vector<Text> commands;
    Text output;
    std::vector<Text> printing; ///< told of before the end
    std::function<void()> whileExecuting;
    bool executes = true;

    Text AccountName() override
    {
        if (failure) throw Error(*failure);
        return account;
    }
    Text Execute(TextView command, TextView input, int32_t flags) override
    {
        commands.emplace_back(Text(command) + (input.empty() && flags == 0 ? u"" : u" with input or flags"));
        if (whileExecuting) whileExecuting();
        return output;
    }
    Text ExecuteTelling(TextView command, const PrintedLines& printed) override
    {
        for (const Text& lines : printing)
            if (printed) printed(lines);
        return Execute(command, u"", 0);
    }
    Text GetConfiguration(TextView key, int32_t attribute) override
    {
        asked.push_back(Text(key) + u" " + Decimal(attribute));
        return configuration[attribute];
    }

    std::map<int32_t, Text> configuration; ///< by attribute
    std::vector<Text> asked;               ///< key and attribute
};

/// What all items and their connection share.
struct FakeStore {
    static constexpr int32_t kStranger = 0;

    std::map<Text, StoredItem> items; ///< by path
    std::map<Text, int32_t> locks;    ///< path to the item object that holds it, or kStranger
    std::optional<Error> readFailure;
    std::optional<Error> writeFailure;
    std::optional<Error> lockFailure;
    std::function<void()> whileBusy; ///< during each read and write
    Text hostName = u"server1";
    FakeSession session;
    bool hasSession = true;
    bool forms = false;                 ///< items know how they are stored
    std::vector<int32_t> unsupported;   ///< codes that items of the host do not support
    std::map<Text, StoredState> states; ///< by path, of what others did to it
    int32_t lastItem = 0;
    int32_t liveItems = 0;
    int32_t commits = 0;
};

struct FakeItem : mvItem {
    FakeItem(FakeStore& store, TextView path)
        : mvItem(NamesOf(store, path)), store_(store), number_(++store.lastItem), path_(path)
    {
        ++store_.liveItems;
        if (auto found = store_.items.find(path_); found != store_.items.end()) readOnly_ = found->second.readOnly;
    }
    ~FakeItem() override
    {
        Unlock();
        --store_.liveItems;
    }

    bool Exists() override { return store_.items.contains(path_); }
    bool IsItem() override
    {
        if (ItemID().empty() || Folder().empty()) return false;
        return !Exists() || store_.items[path_].isItem;
    }
    bool ReadOnly() const override { return readOnly_; }
    void SetReadOnly(bool readOnly) override { readOnly_ = readOnly; }
    bool Supports(int32_t code) override
    {
        return !IsLocal() && (code != kSupportsExecute || store_.session.executes) &&
               std::find(store_.unsupported.begin(), store_.unsupported.end(), code) == store_.unsupported.end();
    }
    Text ReadItem(int32_t, int32_t, int32_t) override
    {
        if (store_.whileBusy) store_.whileBusy();
        if (store_.readFailure) throw Error(*store_.readFailure);
        if (!Exists()) throw Error{error_number::kFileNotFound, path_ + u" does not exist."};
        if (!apart) AcceptState();
        return seen_ = store_.items.at(path_).text;
    }
    void WriteItem(int32_t, int32_t, int32_t, TextView text) override
    {
        if (store_.whileBusy) store_.whileBusy();
        if (store_.writeFailure) throw Error(*store_.writeFailure);
        seen_ = store_.items[path_].text = text;
    }
    Text Version() override { return seen_; }
    void Commit() override { ++store_.commits; }
    StoredState State() override
    {
        const auto found = store_.states.find(path_);
        return found == store_.states.end() ? StoredState::Same : found->second;
    }
    void AcceptState() override { store_.states.erase(path_); }
    bool AcceptVersion(TextView version) override
    {
        if (store_.items.at(path_).text != version) return false;
        AcceptState();
        return true;
    }
    void LockItem(bool lock) override
    {
        if (!lock) return Unlock();
        if (store_.lockFailure) throw Error(*store_.lockFailure);
        auto [found, taken] = store_.locks.emplace(path_, number_);
        if (!taken && found->second != number_) throw Error{error_number::kLocked, u"Locked by them"};
    }
    StoredForm* Form() override { return store_.forms ? &form_ : nullptr; }
    bool HoldsLock() const override
    {
        const auto found = store_.locks.find(path_);
        return found != store_.locks.end() && found->second == number_;
    }
    bool apart = false; ///< it was opened for a look beside another one
    mvSession* Session() override { return IsLocal() || !store_.hasSession ? nullptr : &store_.session; }

private:
    static ItemNames NamesOf(const FakeStore& store, TextView path)
    {
        ItemPlace place = ParsePath(path);
        const bool local = place.provider == kFileProvider;
        const Text name = local || place.folder.empty() ? place.itemId : Text(Trim(place.folder + u" " + place.itemId));
        if (local) {
            place.folder = name.substr(0, name.rfind(u'/'));
            place.itemId = name.substr(name.rfind(u'/') + 1);
        }
        return {place, Text(path), name, local ? Text() : store.hostName, u"<" + name + u">"};
    }
    bool IsLocal() const { return Provider() == kFileProvider; }
    void Unlock()
    {
        auto found = store_.locks.find(path_);
        if (found != store_.locks.end() && found->second == number_) store_.locks.erase(found);
    }

    FakeStore& store_;
    int32_t number_;
    Text path_;
    bool readOnly_ = false;
    Text seen_;
    StoredForm form_{ItemText::ForItems(Charset(u"windows-1252"), true), path_};
};

/// One call of OpenServerForPath.
struct OpenCall {
    Text path;
    bool readOnly = false;
    bool lock = false;

    friend bool operator==(const OpenCall&, const OpenCall&) = default;
};

struct FakeConnection : mvConnection {
    std::vector<KnownHost> Hosts() override { return hosts; }
    SelectedItem SelectItem(const SelectRequest& request, mvItem* start) override
    {
        auto picked = SelectItems(request, start);
        return picked.empty() ? SelectedItem{} : picked.front();
    }
    std::vector<SelectedItem> SelectItems(const SelectRequest& request, mvItem* start) override
    {
        requests.emplace_back(request, start ? start->Path() : Text());
        if (whilePicking) whilePicking();
        if (picks.empty()) return {};
        auto picked = std::move(picks.front());
        picks.pop_front();
        return picked;
    }
    Text DialectOf(TextView /*serverName*/) override { return dialect; }
    Text dialect;
    std::shared_ptr<mvItem> OpenServerForPath(TextView path, bool readOnly, bool lock) override
    {
        opens.push_back({Text(path), readOnly, lock});
        if (!openFailures.empty()) {
            auto failure = std::move(openFailures.front());
            openFailures.pop_front();
            if (failure) throw Error(*failure);
        }
        auto item = std::make_shared<FakeItem>(store, path);
        item->apart = readOnly && !lock;
        if (lock && !readOnly && item->IsItem()) item->LockItem(true);
        return item;
    }
    std::unique_ptr<ItemReader> Reader(const ItemPlace& account) override
    {
        return reader ? reader(account) : mvConnection::Reader(account);
    }
    Text ColorOf(const ItemPlace& account) const override
    {
        const auto found = colors.find(account.database);
        return found == colors.end() ? Text() : found->second;
    }
    bool KeepsHistory(const ItemPlace& /*account*/) const override { return keepsHistory; }
    FakeStore store;
    bool keepsHistory = true;
    std::map<Text, Text> colors; ///< by account
    std::vector<KnownHost> hosts;
    std::function<std::unique_ptr<ItemReader>(const ItemPlace&)> reader; ///< makes those of all accounts
    std::deque<std::optional<Error>> openFailures;                       ///< one a call; an empty one lets it through
    std::deque<std::vector<SelectedItem>> picks; ///< answers of the picker; none left: cancelled
    std::function<void()> whilePicking;
    std::vector<OpenCall> opens;
    std::vector<std::pair<SelectRequest, Text>> requests; ///< with the start's path
};

} // namespace nib::test
