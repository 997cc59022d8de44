#include "language/account/AccountIndex.h"

#include "diagnostics/Guarded.h"
#include "language/account/ProgramBytes.h"
#include "language/account/ProgramShape.h"
#include "platform/posix/FileContent.h"

#include <algorithm>

namespace nib {

namespace {

using Clock = std::chrono::steady_clock;

/// Includes that nearly all programs share are among them.
constexpr size_t kMostCached = 96;

/// A database that breaks again and again lies on a disk that keeps none.
constexpr int32_t kMostRebuilt = 2;

/// Days that a file without programs is not looked into again.
constexpr int32_t kLeftAlone = 7;

int32_t Today()
{
    using Days = std::chrono::duration<int32_t, std::ratio<86'400>>;
    return std::chrono::duration_cast<Days>(std::chrono::system_clock::now().time_since_epoch()).count();
}

/// What others see of an included program: without its places.
std::string Outside(ProgramFacts program)
{
    program.occurrences.clear();
    program.calls.clear();
    program.outline.clear();
    for (IncludeSite& include : program.includes) include.at = {};
    for (CommonBlock& common : program.commons) common.at = {};
    for (Routine& routine : program.routines) routine.first = routine.last = 0, routine.nameAt = {};
    return BytesOf(program);
}

Text HashStamp(TextView text)
{
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
    return u"#" + Hex(static_cast<int32_t>(HashBytes(bytes) >> 32)) + Hex(static_cast<int32_t>(HashBytes(bytes)));
}

} // namespace

/// A failure is one of the database, which the next Work builds anew.
template <typename Answer, typename Body>
Answer AccountIndex::FromStore(Body&& body, Answer fallback)
{
    if (!store_) Open();
    if (isBroken_ || !store_) return fallback;
    Answer answer = std::move(fallback);
    NoteFailure(FailureOf([&] { answer = body(); }));
    return answer;
}

/// What another editor holds for too long is whole.
void AccountIndex::NoteFailure(const std::optional<Error>& failure)
{
    if (!failure) return;
    store_->Rollback();
    isBroken_ = failure->number != error_number::kLocked;
}

AccountIndex::AccountIndex(Options options) : options_(std::move(options))
{
    Start();
}

void AccountIndex::Start()
{
    AccountLists::Rules rules;
    rules.isLeftAlone = [this](const Text& file) {
        const int32_t day = ToInt(FromStore([&] { return store_->Note(file); }, Text()));
        return day > 0 && Today() - day < kLeftAlone;
    };
    rules.leaveAlone = [this](const Text& file) {
        FromStore([&] { return store_->SetNote(file, Decimal(Today())), true; }, false);
    };
    lists_ = std::make_unique<AccountLists>(*options_.reader, *options_.dialect, std::move(rules));
    Forget();
}

void AccountIndex::Forget()
{
    cache_.clear();
    cached_.clear();
    names_.reset();
    ++revision_;
}

void AccountIndex::Open()
{
    isBroken_ = FailureOf([&] {
                    store_ = std::make_unique<IndexStore>(options_.database, options_.identity);
                    for (const StoredItem& item : store_->Items()) lists_->Know(item);
                }).has_value();
    ++revision_;
}

bool AccountIndex::Work(Deadline until)
{
    if (isLost_) return false;
    if (!store_) Open();
    if (isBroken_) {
        store_.reset();
        if (++rebuilt_ > kMostRebuilt) options_.database.clear();
        if (!options_.database.empty()) DeleteDatabase(options_.database);
        Start();
        Open();
        if (isBroken_) return false;
    }
    if (FromStore([&] { return store_->WasChangedByOthers(); }, false)) Forget();
    bool more = true;
    if (FailureOf([&] { more = lists_->Work(until); })) isLost_ = true;
    if (!lists_->HasGone() && (more || lists_->CountUnread() == 0)) {
        if (!more) Names(); // before somebody waits for them
        return more && !isLost_;
    }
    NoteFailure(FailureOf([&] {
        store_->Begin();
        while (const std::optional<ItemName> gone = lists_->TakeGone()) Drop(*gone);
        while (!more && Clock::now() < until) {
            const std::optional<ItemName> next = lists_->TakeUnread();
            if (!next) break;
            Process(*next);
        }
        store_->Commit();
    }));
    return !isLost_ && (isBroken_ || more || lists_->CountUnread() > 0);
}

void AccountIndex::Process(const ItemName& name)
{
    Text stamp;
    Text text;
    // Whoever changes it between the two calls has it read again.
    const auto failure = FailureOf([&] {
        stamp = options_.reader->Stamp(name.file, name.item);
        text = options_.reader->Read(name.file, name.item).value_or(Text());
    });
    if (failure && failure->number == error_number::kDeviceUnavailable) isLost_ = true;
    if (failure) return lists_->WasRead(name, std::move(stamp), false);
    if (stamp.empty()) stamp = HashStamp(text);
    Take(name, text, stamp, !store_->Users(ItemUse::Includes, ToUpper(name.item)).empty());
}

std::shared_ptr<const ProgramFacts> AccountIndex::Take(const ItemName& name, TextView text, const Text& stamp,
                                                       bool mustBe)
{
    const std::optional<ProgramFacts> before = store_->Get(name);
    std::shared_ptr<const ProgramFacts> program;
    if (mustBe || LooksLikeProgram(text, *options_.dialect)) {
        program = std::make_shared<const ProgramFacts>(options_.analyse(name, text));
    }
    store_->Put(name, stamp, program.get());
    lists_->WasRead(name, stamp, program != nullptr);
    const bool differs = !before != !program || (before && Outside(*before) != Outside(*program));
    ItemName listed = name;
    const AccountLists::Item* item = lists_->Find(listed);
    if (differs) RenewIncluders(name, item ? item->noticed : lists_->Now());
    for (const IncludeSite& site : program ? program->includes : std::vector<IncludeSite>()) {
        // Whatever it looks like, it is a part of a program.
        for (const ItemName& included : lists_->Named(site.item)) {
            ItemName at = included;
            const AccountLists::Item* known = lists_->Find(at);
            if (known && known->wasRead && !known->isProgram) lists_->Want(included);
        }
    }
    if (names_ && program) names_->Set(name, program->outline);
    if (names_ && !program) names_->Remove(name);
    Cache(name, program);
    ++revision_;
    return program;
}

/// Their facts are made from the text of the item: as it stood when they were read.
void AccountIndex::RenewIncluders(const ItemName& name, uint64_t since)
{
    for (const ItemName& user : Includers(name)) {
        ItemName listed = user;
        const AccountLists::Item* item = lists_->Find(listed);
        if (user == name || !item || item->read > since) continue;
        // An editor that ends before they are read leaves a sign for the next one.
        store_->Forget(user);
        lists_->Want(user);
        Cache(user, nullptr);
    }
}

std::vector<ItemName> AccountIndex::Includers(const ItemName& name)
{
    std::vector<ItemName> found;
    std::set<ItemName> seen{name};
    std::vector<Text> names{name.item};
    while (!names.empty()) {
        const Text next = std::move(names.back());
        names.pop_back();
        for (ItemName& user : Users(ItemUse::Includes, next)) {
            if (!seen.insert(user).second) continue;
            names.push_back(user.item);
            found.push_back(std::move(user));
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

void AccountIndex::Drop(const ItemName& name)
{
    RenewIncluders(name, lists_->Now());
    store_->Remove(name);
    if (names_) names_->Remove(name);
    Cache(name, nullptr);
    ++revision_;
}

std::optional<ItemName> AccountIndex::Find(TextView file, TextView item)
{
    ItemName name{Text(file), Text(item)};
    if (lists_->Find(name)) return name;
    // Whoever includes something of a file says that it has programs.
    if (lists_->HoldsNone(file) && Read(name)) lists_->WantFile(file);
    return std::nullopt;
}

std::vector<ItemName> AccountIndex::ProgramsNamed(TextView item) const
{
    std::vector<ItemName> named = lists_->Named(item);
    std::erase_if(named, [&](ItemName name) {
        const AccountLists::Item* known = lists_->Find(name);
        return !known || (known->wasRead && !known->isProgram);
    });
    return named;
}

std::shared_ptr<const ProgramFacts> AccountIndex::Get(const ItemName& name)
{
    if (const auto known = cached_.find(name); known != cached_.end()) {
        cache_.splice(cache_.begin(), cache_, known->second);
        return known->second->second;
    }
    ItemName listed = name;
    const AccountLists::Item* item = lists_->Find(listed);
    if (!item) return nullptr;
    return FromStore(
        [&]() -> std::shared_ptr<const ProgramFacts> {
            std::optional<ProgramFacts> stored = item->wasRead && item->isProgram ? store_->Get(name) : std::nullopt;
            if (stored) {
                auto program = std::make_shared<const ProgramFacts>(*std::move(stored));
                Cache(name, program);
                return program;
            }
            const std::optional<Text> text = Read(name);
            if (!text) return nullptr;
            Text stamp = options_.reader->Stamp(name.file, name.item);
            if (stamp.empty()) stamp = HashStamp(*text);
            return Take(name, *text, stamp, true);
        },
        std::shared_ptr<const ProgramFacts>());
}

std::vector<ItemName> AccountIndex::Users(ItemUse use, TextView name)
{
    return FromStore([&] { return store_->Users(use, ToUpper(name)); }, std::vector<ItemName>());
}

Text AccountIndex::StampOf(const ItemName& name)
{
    ItemName listed = name;
    Text stamp = OrDefault([&] { return options_.reader->Stamp(name.file, name.item); }, Text());
    if (!stamp.empty()) return stamp;
    const AccountLists::Item* item = lists_->Find(listed);
    return item ? item->stamp : Text();
}

std::optional<Text> AccountIndex::Read(const ItemName& name)
{
    std::optional<Text> text;
    const auto failure = FailureOf([&] { text = options_.reader->Read(name.file, name.item); });
    if (failure && failure->number == error_number::kDeviceUnavailable) isLost_ = true;
    return text;
}

std::vector<Text> AccountIndex::Ids(TextView file)
{
    return OrDefault([&] { return options_.reader->Ids(file); }, std::vector<Text>());
}

NameList& AccountIndex::Names()
{
    if (!names_) {
        names_.emplace();
        FromStore(
            [&] {
                store_->EachOutline([&](const ItemName& name, const auto& outline) { names_->Set(name, outline); });
                return true;
            },
            false);
    }
    return *names_;
}

void AccountIndex::Cache(const ItemName& name, std::shared_ptr<const ProgramFacts> program)
{
    if (const auto known = cached_.find(name); known != cached_.end()) {
        cache_.erase(known->second);
        cached_.erase(known);
    }
    if (!program) return;
    cache_.emplace_front(name, std::move(program));
    cached_[name] = cache_.begin();
    if (cache_.size() <= kMostCached) return;
    cached_.erase(cache_.back().first);
    cache_.pop_back();
}

} // namespace nib
