#pragma once
// What is known of an account's items, on disk. Several editors may use one at a time.
//
// Nothing in it is worth more than the time that it takes to read the account: whatever is wrong with it, it is
// deleted and built anew.

#include "language/Program.h"
#include "language/account/Database.h"

#include <functional>
#include <optional>
#include <tuple>
#include <vector>

namespace nib {

/// An item of an account.
struct ItemName {
    Text file;
    Text item;

    friend bool operator==(const ItemName&, const ItemName&) = default;
    friend bool operator<(const ItemName& a, const ItemName& b)
    {
        return std::tie(a.file, a.item) < std::tie(b.file, b.item);
    }
};

struct StoredItem {
    ItemName name;
    Text stamp; ///< of the text that it was read from; empty when it is to be read again
    bool isProgram = false;
};

/// How an item is of use to others, or they to it.
enum class ItemUse : int32_t {
    Includes,
    Calls,
    Declares,
    Shares, ///< a COMMON that has a name
};

class IndexStore {
public:
    /// `identity` tells all that the facts depend on beside the items: what was kept under another one is deleted.
    /// Without a path it goes with this object. Throws Error.
    IndexStore(std::string path, const Text& identity);

    /// What follows until Commit is written at one go.
    void Begin();
    void Commit();
    void Rollback() { transaction_.reset(); }

    /// Whether another editor has written something since this was asked last.
    bool WasChangedByOthers();
    std::vector<StoredItem> Items();
    /// Null: it is no program.
    void Put(const ItemName& name, const Text& stamp, const ProgramFacts* program);
    void Remove(const ItemName& name);
    /// It is to be read again, by this editor or a later one.
    void Forget(const ItemName& name);

    std::optional<ProgramFacts> Get(const ItemName& name);
    /// Items that use the name, which is in capitals.
    std::vector<ItemName> Users(ItemUse use, const Text& name);
    /// The outline of every program.
    void EachOutline(const std::function<void(ItemName name, std::vector<OutlineEntry> outline)>& each);

    /// What was found out about a file as a whole; empty when nothing was.
    Text Note(const Text& file);
    void SetNote(const Text& file, const Text& note);

private:
    /// All that is prepared once.
    struct Statements;
    struct Closer {
        void operator()(Statements* statements) const;
    };

    void Prepare(const Text& identity);
    void PutUses(int64_t id, const ProgramFacts& program);

    std::unique_ptr<Database> database_;
    std::unique_ptr<Statements, Closer> run_;
    std::unique_ptr<Transaction> transaction_;
    int64_t version_ = 0; ///< of what others write
};

/// Deletes a database with all that belongs to it.
void DeleteDatabase(const std::string& path);

} // namespace nib
