#pragma once
// What is asked about programs, by the windows of the editor and by nib-lsp alike. It stands on one thread of its own;
// texts that are open are handed to it as they change and hide what is stored.
//
// A path names a text as mvDocument::Path does: "mvdb:*/DEMO/BP/INVOICE", "file:/home/x/prog.b".

#include "hosts/ItemReader.h"
#include "language/Program.h"

#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace nib {

class Dialect;
class Sources;
struct FoundPlace;

struct PathRange {
    Text path;
    TextRange range;
    Text line; ///< that it stands in, for lists
};

struct Completion {
    enum class Kind : uint8_t {
        Statement,
        Function,
        Clause,
        Variable,
        Constant,
        Label,
        Subroutine,
        Item,
        File,
        Closer
    };
    Text label;
    Kind kind = Kind::Variable;
    Text insert; ///< what takes the place of the word before the caret
    Text detail; ///< its form, on one line
    Text help;
};
struct Completions {
    TextRange replaces;
    std::vector<Completion> best; ///< first; at most kMostCompletions
    bool more = false;
};

struct HoverText {
    TextRange at;
    Text form; ///< in code letters
    Text help; ///< plain text, may hold LF
};

struct SignatureHelp {
    Text form;
    std::vector<std::pair<int32_t, int32_t>> parameters; ///< start and end in the form
    int32_t active = 0;
    Text help;
};

struct PathEdit {
    Text path;
    std::vector<QuickMend::Edit> edits; ///< ascend and lie apart
    std::vector<Text> lines;            ///< that each edit stands in, for the preview
};
struct RenamePlan {
    Text refusal; ///< why it cannot be done; then there are no edits
    std::vector<PathEdit> edits;
};

struct FoundSymbol {
    Text name;
    SymbolKind kind = SymbolKind::Program;
    PathRange at;
};

/// How far the accounts have been read.
struct IndexState {
    int32_t done = 0; ///< items
    int32_t all = 0;
    bool busy = false;
};

/// What an account gives to those who ask about its programs.
struct AccountAccess {
    std::unique_ptr<ItemReader> reader; ///< made on the thread of the windows, used on that of the service
    std::vector<Text> includeFiles;     ///< looked into before those of the dialect
    std::vector<Text> ignored;          ///< codes of findings
    const Dialect* dialect = nullptr;   ///< null: that of the service; outlives it
};

struct ServiceOptions {
    /// Outlives the service.
    const Dialect* dialect = nullptr;
    /// Of the databases of accounts. Empty: what is known of an account goes with the service.
    std::string indexFolder;
};

class LanguageService {
public:
    static constexpr size_t kMostCompletions = 200;

    explicit LanguageService(ServiceOptions options);
    ~LanguageService();

    /// `path` is that of the account ("mvdb:*/DEMO"). Texts of accounts that are not added are looked at one by one.
    void AddAccount(const Text& path, AccountAccess access);
    /// A piece of what is to be done between questions, some milliseconds of it: reading accounts, noticing what others
    /// have changed in them. True when the next piece can follow at once, else some hundred milliseconds later.
    bool Work();
    IndexState State() const;
    /// Goes up when something that was answered may have another answer, be it that a text or an account has changed.
    uint64_t Revision() const;

    // Open texts. `lines` hold no line ends.
    void Open(const Text& path, std::vector<Text> lines);
    /// `removed` lines from `first` on give way to others.
    void Change(const Text& path, int32_t first, int32_t removed, std::vector<Text> lines);
    void Close(const Text& path);

    /// Null when it is not open. Good until the next change of it.
    const ProgramFacts* Get(const Text& path);
    /// Its own findings and those that the account tells of, ascending.
    std::vector<ProgramFinding> Findings(const Text& path);
    std::vector<LookedWord> Words(const Text& path, int32_t firstLine, int32_t lastLine);

    Completions Complete(const Text& path, Position at);
    std::optional<HoverText> Hover(const Text& path, Position at);
    std::optional<SignatureHelp> Signature(const Text& path, Position at);
    /// More than one where several items are called alike.
    std::vector<PathRange> Definition(const Text& path, Position at);
    /// In the whole account where the name reaches that far.
    std::vector<PathRange> References(const Text& path, Position at, bool withDeclaration);
    std::vector<Occurrence> Highlights(const Text& path, Position at);
    /// The name that can be renamed here.
    std::optional<TextRange> PrepareRename(const Text& path, Position at, Text& refusal);
    RenamePlan Rename(const Text& path, Position at, const Text& name);
    /// Items, subroutines and labels whose names hold the letters in this order, best first.
    std::vector<FoundSymbol> Find(const Text& query, size_t most);
    /// The word that closes the block which the line above `line` opened, if nothing does yet.
    std::optional<Text> CloserFor(const Text& path, int32_t line);

private:
    std::vector<PathRange> Ranges(const std::vector<FoundPlace>& places);

    std::unique_ptr<Sources> sources_;
};

} // namespace nib
