#pragma once
#include "base/Error.h"
#include "language/account/AccountLists.h"
#include "language/account/NameList.h"

#include <list>

namespace nib {

/// What is known of all programs of an account. It reads them in pieces, and keeps what it has found on disk.
///
/// Calls throw nothing of a database: one that is broken is built anew by the next Work, and answers are those of an
/// account that has not been read yet.
class AccountIndex {
public:
    /// Makes the facts of a program and of what it includes, as that stands at the time.
    using Analyse = std::function<ProgramFacts(const ItemName& name, TextView text)>;

    struct Options {
        std::unique_ptr<ItemReader> reader;
        const Dialect* dialect = nullptr; ///< outlives it
        std::string database;             ///< empty: kept nowhere
        Text identity;                    ///< all that Analyse depends on beside the items
        Analyse analyse;
    };

    explicit AccountIndex(Options options);

    /// Reads for a while; false when there is nothing more for now.
    bool Work(Deadline until);
    /// A program of the file has been seen.
    void Expect(TextView file) { lists_->WantFile(file); }
    /// Somebody may have changed the item.
    void Look(const ItemName& name) { lists_->Look(name); }
    /// Goes up with each program that has become another one.
    uint64_t Revision() const { return revision_; }
    int32_t CountItems() const { return lists_->CountItems(); }
    /// Not all has been read once.
    bool IsBusy() const { return !isLost_ && !lists_->IsComplete(); }
    int32_t CountUnread() const { return lists_->CountUnread(); }
    /// All has been read, and nothing was kept from view.
    bool IsCertain() const { return !isLost_ && lists_->IsCertain(); }

    const std::vector<Text>& Files() const { return lists_->Files(); }
    /// As it is called in the account, where case counts only as far as it has to.
    std::optional<ItemName> Find(TextView file, TextView item);
    /// Programs that are called so, in any case.
    std::vector<ItemName> ProgramsNamed(TextView item) const;
    std::vector<ItemName> ItemsNamed(TextView item) const { return lists_->Named(item); }
    /// Of a file with programs, as they were listed.
    std::vector<Text> ItemsOf(TextView file) const { return lists_->ItemsOf(file); }
    /// Of any file; none when they cannot be had.
    std::vector<Text> Ids(TextView file);
    /// Null when it is no program. An item that some program includes is one.
    std::shared_ptr<const ProgramFacts> Get(const ItemName& name);
    /// Programs that use the name, in any case.
    std::vector<ItemName> Users(ItemUse use, TextView name);
    /// Those that an item is a part of, be it by way of others.
    std::vector<ItemName> Includers(const ItemName& name);
    /// Tells its present text from others, as far as that is known without a look.
    Text StampOf(const ItemName& name);
    /// The text with CR LF between its lines; nothing when it cannot be had.
    std::optional<Text> Read(const ItemName& name);
    NameList& Names();

private:
    void Open();
    void Start();
    void Forget();
    void Process(const ItemName& name);
    std::shared_ptr<const ProgramFacts> Take(const ItemName& name, TextView text, const Text& stamp, bool mustBe);
    void RenewIncluders(const ItemName& name, uint64_t since);
    void Drop(const ItemName& name);
    void Cache(const ItemName& name, std::shared_ptr<const ProgramFacts> program);
    template <typename Answer, typename Body>
    Answer FromStore(Body&& body, Answer fallback);
    void NoteFailure(const std::optional<Error>& failure);

    Options options_;
    std::unique_ptr<IndexStore> store_;
    std::unique_ptr<AccountLists> lists_;
    std::list<std::pair<ItemName, std::shared_ptr<const ProgramFacts>>> cache_; ///< used last comes first
    std::map<ItemName, decltype(cache_)::iterator> cached_;
    std::optional<NameList> names_;
    uint64_t revision_ = 1;
    int32_t rebuilt_ = 0;
    bool isBroken_ = false;
    bool isLost_ = false; ///< the host
};

} // namespace nib
