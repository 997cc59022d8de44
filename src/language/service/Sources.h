#pragma once
#include "hosts/mvConnect.h"
#include "language/ProgramAnalyser.h"
#include "language/account/AccountFindings.h"
#include "language/account/AccountRules.h"
#include "language/account/IncludeTexts.h"
#include "language/service/LanguageService.h"

namespace nib {

/// An account whose programs are known.
struct ServedAccount {
    ServedAccount(Text accountPath, AccountAccess access, const ServiceOptions& options,
                  IncludeTexts::OpenTexts openTexts, Catalogue::OpenItems openItems,
                  AccountFindings::Programs programs);

    Text PathOf(const ItemName& name) const;

    Text path;
    ItemPlace place;
    const Dialect* dialect;
    AccountRules rules;
    std::unique_ptr<AccountIndex> index;
    IncludeTexts stored;  ///< what is kept on disk is made from them
    IncludeTexts current; ///< open texts are read with them
    Catalogue catalogue;
    AccountFindings findings;
};

/// A program that questions are about.
struct SourceUnit {
    ServedAccount* account = nullptr;
    ItemName name;
    Text path;

    friend bool operator==(const SourceUnit& a, const SourceUnit& b) { return a.path == b.path; }
};

/// A text that is open in a window.
struct OpenText {
    OpenText(SourceUnit unit, const Dialect& ofOthers)
        : path(std::move(unit.path)), account(unit.account), name(unit.name),
          dialect(account ? account->dialect : &ofOthers), analyser(dialect, name.file, name.item)
    {
    }

    Text path;
    ServedAccount* account; ///< null: it is looked at alone
    ItemName name;
    const Dialect* dialect;
    ProgramAnalyser analyser;
    std::map<ItemName, Text>
        includes;      ///< what it was read with, and the stamps of these; those that are open have none
    uint64_t seen = 0; ///< revision of the account's index
    bool changed = true;
    std::vector<Text> recent; ///< words that were changed last
};

/// All texts that questions are about: open ones as they stand, the others as their accounts have them.
class Sources {
public:
    explicit Sources(ServiceOptions options) : options_(std::move(options)) {}

    const Dialect& Language() const { return *options_.dialect; }
    void AddAccount(const Text& path, AccountAccess access);
    bool Work();
    IndexState State() const;
    uint64_t Revision() const;

    void Open(const Text& path, std::span<const Text> lines);
    void Change(const Text& path, int32_t first, int32_t removed, std::span<const Text> lines);
    void Close(const Text& path);

    OpenText* Find(const Text& path);
    const std::map<Text, std::unique_ptr<ServedAccount>>& Accounts() const { return accounts_; }
    /// What is known of it as it stands.
    const ProgramFacts& Get(OpenText& text);
    SourceUnit UnitOf(const Text& path);
    SourceUnit UnitOf(ServedAccount& account, const ItemName& name) const;
    std::vector<SourceUnit> OpenUnits(ServedAccount& account) const;
    /// Null when it is no program.
    std::shared_ptr<const ProgramFacts> Facts(const SourceUnit& unit);
    /// Empty when there is none, or it cannot be read.
    Text LineOf(const SourceUnit& unit, int32_t line);
    /// Its tokens; null when it cannot be read.
    std::shared_ptr<const ProgramText> Lines(const SourceUnit& unit);

private:
    /// One that is a program says that there are some in its file.
    std::unique_ptr<OpenText> Read(SourceUnit unit, std::span<const Text> lines) const;
    OpenText* FindOpen(const ServedAccount& account, const ItemName& name);
    bool IsStale(OpenText& text) const;
    void TouchUsers(const OpenText& text);

    ServiceOptions options_;
    std::map<Text, std::unique_ptr<ServedAccount>> accounts_; ///< by path
    std::map<Text, std::unique_ptr<OpenText>> open_;          ///< the same
    std::map<ItemName, Text>* asked_ = nullptr;               ///< takes the includes of the text that is being read
    std::pair<Text, std::vector<Text>> lastRead_;             ///< a path and its lines
    uint64_t revision_ = 1;
};

} // namespace nib
