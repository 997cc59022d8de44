#include "language/account/IndexStore.h"

#include "diagnostics/Guarded.h"
#include "language/account/ProgramBytes.h"

#include <set>
#include <utility>

#include <unistd.h>

namespace nib {

namespace {

/// Goes up with the tables below, and with what is known of a program.
constexpr int32_t kVersion = 1;

constexpr const char* kTables = R"(
CREATE TABLE IF NOT EXISTS identity(value BLOB);
CREATE TABLE IF NOT EXISTS files(file BLOB PRIMARY KEY, note BLOB) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS items(id INTEGER PRIMARY KEY, file BLOB, item BLOB, stamp BLOB, program INTEGER,
                                 outline BLOB, facts BLOB, UNIQUE(file, item));
CREATE TABLE IF NOT EXISTS uses(kind INTEGER, name BLOB, item INTEGER, PRIMARY KEY(kind, name, item)) WITHOUT ROWID;
CREATE INDEX IF NOT EXISTS usesOf ON uses(item);
)";

} // namespace

struct IndexStore::Statements {
    explicit Statements(Database& database) : db(database) {}

    Database& db;
    Statement version{db, "PRAGMA data_version"};
    Statement items{db, "SELECT file, item, stamp, program FROM items"};
    Statement put{db, "INSERT INTO items(file, item, stamp, program, outline, facts) VALUES(?, ?, ?, ?, ?, ?) "
                      "ON CONFLICT(file, item) DO UPDATE SET stamp = excluded.stamp, program = excluded.program, "
                      "outline = excluded.outline, facts = excluded.facts RETURNING id"};
    Statement id{db, "SELECT id FROM items WHERE file = ? AND item = ?"};
    Statement remove{db, "DELETE FROM items WHERE id = ?"};
    Statement forget{db, "UPDATE items SET stamp = x'' WHERE file = ? AND item = ?"};
    Statement facts{db, "SELECT facts FROM items WHERE file = ? AND item = ? AND program = 1"};
    Statement outlines{db, "SELECT file, item, outline FROM items WHERE program = 1"};
    Statement use{db, "INSERT OR IGNORE INTO uses(kind, name, item) VALUES(?, ?, ?)"};
    Statement noUses{db, "DELETE FROM uses WHERE item = ?"};
    Statement users{db, "SELECT file, items.item FROM uses JOIN items ON id = uses.item "
                        "WHERE kind = ? AND name = ? ORDER BY file, items.item"};
    Statement note{db, "SELECT note FROM files WHERE file = ?"};
    Statement setNote{db, "INSERT OR REPLACE INTO files(file, note) VALUES(?, ?)"};
};

void IndexStore::Closer::operator()(Statements* statements) const
{
    delete statements;
}

void DeleteDatabase(const std::string& path)
{
    for (const char* end : {"", "-wal", "-shm", "-journal"}) unlink((path + end).c_str());
}

IndexStore::IndexStore(std::string path, const Text& identity)
{
    const auto open = [&] {
        run_.reset();
        database_ = std::make_unique<Database>(path);
        Prepare(Decimal(kVersion) + u" " + identity);
    };
    const std::optional<Error> failure = FailureOf(open);
    if (!failure) return;
    run_.reset();
    database_.reset();
    const bool broken = !path.empty() && failure->number != error_number::kLocked;
    if (broken) DeleteDatabase(path);
    // Where nothing can be kept it does without.
    if (broken && !FailureOf(open)) return;
    path.clear();
    open();
}

void IndexStore::Prepare(const Text& identity)
{
    // A power failure may take the last transactions, never the whole.
    database_->Run("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA cache_size = -8000;"
                   "PRAGMA journal_size_limit = 4000000");
    database_->Run(kTables);
    {
        Transaction whole(*database_);
        Statement known(*database_, "SELECT value FROM identity");
        const bool same = known.Step() && known.Name(0) == identity;
        known.Reset();
        if (!same) {
            database_->Run("DELETE FROM identity; DELETE FROM uses; DELETE FROM items; DELETE FROM files");
            Statement(*database_, "INSERT INTO identity VALUES(?)").With(identity).Run();
        }
        whole.Commit();
    }
    run_.reset(new Statements(*database_));
}

void IndexStore::Begin()
{
    if (!transaction_) transaction_ = std::make_unique<Transaction>(*database_);
}

void IndexStore::Commit()
{
    if (const auto transaction = std::move(transaction_)) transaction->Commit();
}

bool IndexStore::WasChangedByOthers()
{
    Statement& row = run_->version.With();
    const int64_t version = row.Step() ? row.Number(0) : 0;
    row.Reset();
    return version != std::exchange(version_, version);
}

std::vector<StoredItem> IndexStore::Items()
{
    std::vector<StoredItem> items;
    Statement& row = run_->items.With();
    while (row.Step()) items.push_back({{row.Name(0), row.Name(1)}, row.Name(2), row.Number(3) != 0});
    return items;
}

void IndexStore::Put(const ItemName& name, const Text& stamp, const ProgramFacts* program)
{
    const std::string outline = program ? BytesOf(program->outline) : std::string();
    const std::string facts = program ? BytesOf(*program) : std::string();
    const int32_t isProgram = program ? 1 : 0;
    Statement& put = run_->put.With(name.file, name.item, stamp, isProgram, outline, facts);
    const int64_t id = put.Step() ? put.Number(0) : 0;
    put.Reset();
    run_->noUses.With(id).Run();
    if (program) PutUses(id, *program);
}

void IndexStore::PutUses(int64_t id, const ProgramFacts& program)
{
    std::set<std::pair<ItemUse, Text>> uses;
    for (const IncludeSite& include : program.includes) uses.emplace(ItemUse::Includes, ToUpper(include.item));
    for (const CallSite& call : program.calls)
        if (!call.name.empty()) uses.emplace(ItemUse::Calls, ToUpper(call.name));
    for (const Routine& routine : program.routines)
        if (!routine.name.empty() && !routine.local) uses.emplace(ItemUse::Declares, ToUpper(routine.name));
    for (const CommonBlock& block : program.commons)
        if (block.item == 0 && !block.name.empty()) uses.emplace(ItemUse::Shares, ToUpper(block.name));
    for (const auto& [kind, name] : uses) run_->use.With(static_cast<int32_t>(kind), name, id).Run();
}

void IndexStore::Remove(const ItemName& name)
{
    Statement& found = run_->id.With(name.file, name.item);
    if (!found.Step()) return;
    const int64_t id = found.Number(0);
    found.Reset();
    run_->noUses.With(id).Run();
    run_->remove.With(id).Run();
}

void IndexStore::Forget(const ItemName& name)
{
    run_->forget.With(name.file, name.item).Run();
}

std::optional<ProgramFacts> IndexStore::Get(const ItemName& name)
{
    Statement& row = run_->facts.With(name.file, name.item);
    if (!row.Step()) return std::nullopt;
    ProgramFacts program = ProgramOf(row.Bytes(0));
    row.Reset();
    return program;
}

std::vector<ItemName> IndexStore::Users(ItemUse use, const Text& name)
{
    std::vector<ItemName> users;
    Statement& row = run_->users.With(static_cast<int32_t>(use), name);
    while (row.Step()) users.push_back({row.Name(0), row.Name(1)});
    return users;
}

void IndexStore::EachOutline(const std::function<void(ItemName name, std::vector<OutlineEntry> outline)>& each)
{
    Statement& row = run_->outlines.With();
    while (row.Step()) each({row.Name(0), row.Name(1)}, OutlineOf(row.Bytes(2)));
}

Text IndexStore::Note(const Text& file)
{
    Statement& row = run_->note.With(file);
    if (!row.Step()) return {};
    Text note = row.Name(0);
    row.Reset();
    return note;
}

void IndexStore::SetNote(const Text& file, const Text& note)
{
    run_->setNote.With(file, note).Run();
}

} // namespace nib
