#include "language/service/Sources.h"

#include "diagnostics/Guarded.h"
#include "language/Dialect.h"
#include "language/account/ProgramShape.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <cctype>

namespace nib {

namespace {

/// How long a question may wait for the account.
constexpr auto kPiece = std::chrono::milliseconds(8);

constexpr size_t kMostRecent = 64;

/// Goes up with all that is found in a program by another rule than before.
constexpr TextView kAnalysis{u"1"};

/// One database for each account, whatever stands in its path.
std::string DatabaseOf(const std::string& folder, const Text& account)
{
    if (folder.empty() || MakeFolders(folder) != 0) return {};
    const auto keep = [](unsigned char c, size_t) { return c < 0x80 && std::isalnum(c) != 0; };
    std::string name = PercentEncode(ToFileName(account), keep);
    if (name.size() > 200) name = name.substr(0, 180) + std::to_string(HashBytes(name));
    return folder + "/" + name + ".db";
}

/// What the facts of all programs depend on beside their texts.
Text IdentityOf(const Dialect& dialect, const AccountRules& rules)
{
    Text all = dialect.name;
    for (const DialectWord& word : dialect.Words()) all += word.name + u"\n" + word.form + u"\n";
    for (const DialectBlock& block : dialect.blocks) all += block.words + u"\n";
    all += dialect.inNames + u"\n" + dialect.comments + dialect.continuations + dialect.directives;
    for (const Text& file : rules.includeFiles) all += u"\n" + file;
    const std::string_view bytes(reinterpret_cast<const char*>(all.data()), all.size() * sizeof(char16_t));
    return Text(kAnalysis) + u" " + Decimal(static_cast<int64_t>(HashBytes(bytes)));
}

AccountRules RulesOf(AccountAccess& access, const Dialect& dialect)
{
    AccountRules rules{std::move(access.includeFiles), std::move(access.ignored)};
    // What an account says of itself; many say nothing, or nobody but a server can read it.
    const auto read = [&] { return access.reader->Read(u"VOC", u"NIB"); };
    if (const auto record = OrDefault(read, std::optional<Text>())) ReadRules(*record, rules);
    ReadRules(OrDefault([&] { return access.reader->ProgramRules(); }, Text()), rules);
    rules.includeFiles.insert(rules.includeFiles.end(), dialect.includeFiles.begin(), dialect.includeFiles.end());
    return rules;
}

} // namespace

ServedAccount::ServedAccount(Text accountPath, AccountAccess access, const ServiceOptions& options,
                             IncludeTexts::OpenTexts openTexts, Catalogue::OpenItems openItems,
                             AccountFindings::Programs programs)
    : path(std::move(accountPath)), place(ParsePath(path)), dialect(access.dialect ? access.dialect : options.dialect),
      rules(RulesOf(access, *dialect)),
      index(std::make_unique<AccountIndex>(AccountIndex::Options{
          std::move(access.reader), dialect, DatabaseOf(options.indexFolder, path), IdentityOf(*dialect, rules),
          [this](const ItemName& name, TextView text) {
              ProgramAnalyser analyser(dialect, name.file, name.item);
              analyser.Replace(0, 0, LinesOfProgram(text));
              return analyser.Analyse(stored);
          }})),
      stored(*index, *dialect, rules.includeFiles, {}),
      current(*index, *dialect, rules.includeFiles, std::move(openTexts)), catalogue(*index, std::move(openItems)),
      findings(*index, catalogue, std::move(programs))
{
}

Text ServedAccount::PathOf(const ItemName& name) const
{
    return ComposeHostPath({place.provider, place.serverName, place.database, name.file, name.item});
}

void Sources::AddAccount(const Text& path, AccountAccess access)
{
    if (!access.reader) return;
    // Whoever comes again has a reader that reaches the host.
    for (auto& [textPath, text] : open_)
        if (text->account && text->account->path == path) text->account = nullptr;
    accounts_.erase(path);
    const auto key = [path](const ItemName& name) { return std::pair(path, name); };
    auto openText = [this, key](const ItemName& name) -> std::shared_ptr<const ProgramText> {
        ServedAccount& account = *accounts_.at(key(name).first);
        OpenText* open = FindOpen(account, name);
        if (asked_) (*asked_)[name] = open ? Text() : account.index->StampOf(name);
        return open ? open->analyser.Lines() : nullptr;
    };
    auto openItems = [this, path](TextView name) {
        std::vector<ItemName> items;
        for (const auto& [textPath, text] : open_) {
            if (!text->account || text->account->path != path) continue;
            const ProgramFacts& facts = Get(*text);
            if (EqualsNoCase(facts.routines.front().name, name)) items.push_back(text->name);
        }
        return items;
    };
    auto programs = [this, path](const ItemName& name) { return Facts(UnitOf(*accounts_.at(path), name)); };
    auto account = std::make_unique<ServedAccount>(path, std::move(access), options_, openText, openItems, programs);
    ServedAccount* added = account.get();
    accounts_[path] = std::move(account);
    for (auto& [textPath, text] : open_) {
        const SourceUnit unit = UnitOf(textPath);
        if (unit.account != added) continue;
        const ProgramText& known = *text->analyser.Lines();
        std::vector<Text> lines;
        lines.reserve(static_cast<size_t>(known.LineCount()));
        for (int32_t k = 0; k < known.LineCount(); ++k) lines.emplace_back(known.At(k).tokens.Whole());
        text = Read(unit, lines);
    }
    ++revision_;
}

bool Sources::Work()
{
    bool more = false;
    lastRead_ = {};
    for (auto& [path, account] : accounts_)
        more = account->index->Work(std::chrono::steady_clock::now() + kPiece) || more;
    return more;
}

IndexState Sources::State() const
{
    IndexState state;
    for (const auto& [path, account] : accounts_) {
        const int32_t unread = account->index->CountUnread();
        state.all += account->index->CountItems();
        state.done += account->index->CountItems() - unread;
        state.busy = state.busy || account->index->IsBusy();
    }
    return state;
}

uint64_t Sources::Revision() const
{
    uint64_t revision = revision_;
    for (const auto& [path, account] : accounts_) revision += account->index->Revision();
    return revision;
}

std::unique_ptr<OpenText> Sources::Read(SourceUnit unit, std::span<const Text> lines) const
{
    auto text = std::make_unique<OpenText>(std::move(unit), *options_.dialect);
    text->analyser.Replace(0, 0, lines);
    if (text->account && !text->name.item.empty()) {
        Text beginning;
        for (const Text& line : lines.first(std::min<size_t>(lines.size(), 200))) beginning += line + u"\n";
        if (LooksLikeProgram(beginning, *text->dialect)) text->account->index->Expect(text->name.file);
    }
    return text;
}

void Sources::Open(const Text& path, std::span<const Text> lines)
{
    auto text = Read(UnitOf(path), lines);
    TouchUsers(*text);
    open_[path] = std::move(text);
    ++revision_;
}

void Sources::Change(const Text& path, int32_t first, int32_t removed, std::span<const Text> lines)
{
    OpenText* text = Find(path);
    if (!text) return;
    text->analyser.Replace(first, removed, lines);
    text->changed = true;
    TouchUsers(*text);
    ++revision_;
    if (lines.size() != 1) return;
    // What is being typed is what will be wanted again.
    const ProgramText& known = *text->analyser.Lines();
    if (first < 0 || first >= known.LineCount()) return;
    const BasicLine& line = known.At(first).tokens;
    for (const BasicToken& token : line.Tokens()) {
        if (token.kind != BasicToken::Kind::Word) continue;
        const Text word = ToUpper(line.Of(token));
        std::erase(text->recent, word);
        text->recent.insert(text->recent.begin(), word);
    }
    if (text->recent.size() > kMostRecent) text->recent.resize(kMostRecent);
}

void Sources::Close(const Text& path)
{
    const auto text = open_.find(path);
    if (text == open_.end()) return;
    const auto closed = std::move(text->second);
    open_.erase(text);
    TouchUsers(*closed);
    if (closed->account) closed->account->index->Look(closed->name);
    ++revision_;
}

/// Those that include it are read anew.
void Sources::TouchUsers(const OpenText& text)
{
    for (auto& [path, other] : open_)
        if (other->account == text.account && other->includes.contains(text.name)) other->changed = true;
}

OpenText* Sources::Find(const Text& path)
{
    const auto text = open_.find(path);
    return text == open_.end() ? nullptr : text->second.get();
}

OpenText* Sources::FindOpen(const ServedAccount& account, const ItemName& name)
{
    return Find(account.PathOf(name));
}

bool Sources::IsStale(OpenText& text) const
{
    if (text.changed) return true;
    if (!text.account || text.seen == text.account->index->Revision()) return false;
    text.seen = text.account->index->Revision();
    if (!text.analyser.Complete()) return true;
    return std::any_of(text.includes.begin(), text.includes.end(), [&](const auto& include) {
        return !include.second.empty() && text.account->index->StampOf(include.first) != include.second;
    });
}

const ProgramFacts& Sources::Get(OpenText& text)
{
    /// Of a text without an account.
    class Nothing final : public IncludeSource {
        Answer Find(TextView, TextView, std::shared_ptr<const ProgramText>&) override { return Answer::Unknown; }
    };
    if (!IsStale(text)) return text.analyser.Known();
    text.changed = false;
    text.includes.clear();
    if (!text.account) {
        Nothing nothing;
        return text.analyser.Analyse(nothing);
    }
    text.seen = text.account->index->Revision();
    text.analyser.SetIncluded(!text.account->index->Users(ItemUse::Includes, text.name.item).empty());
    asked_ = &text.includes;
    const ProgramFacts& facts = text.analyser.Analyse(text.account->current);
    asked_ = nullptr;
    return facts;
}

SourceUnit Sources::UnitOf(const Text& path)
{
    const ItemPlace place = OrDefault([&] { return ParsePath(path); }, ItemPlace());
    SourceUnit unit{nullptr, {place.folder, place.itemId}, path};
    if (place.provider != kHostProvider) return unit;
    const auto account = accounts_.find(ComposeHostPath({place.provider, place.serverName, place.database, {}, {}}));
    if (account != accounts_.end()) unit.account = account->second.get();
    return unit;
}

SourceUnit Sources::UnitOf(ServedAccount& account, const ItemName& name) const
{
    return {&account, name, account.PathOf(name)};
}

std::vector<SourceUnit> Sources::OpenUnits(ServedAccount& account) const
{
    std::vector<SourceUnit> units;
    for (const auto& [path, text] : open_)
        if (text->account == &account) units.push_back({&account, text->name, path});
    return units;
}

std::shared_ptr<const ProgramFacts> Sources::Facts(const SourceUnit& unit)
{
    // What is open lives as long as the question.
    if (OpenText* text = Find(unit.path)) return {std::shared_ptr<void>(), &Get(*text)};
    return unit.account ? unit.account->index->Get(unit.name) : nullptr;
}

std::shared_ptr<const ProgramText> Sources::Lines(const SourceUnit& unit)
{
    if (OpenText* text = Find(unit.path)) return text->analyser.Lines();
    const std::optional<Text> text = unit.account ? unit.account->index->Read(unit.name) : std::nullopt;
    return text ? std::make_shared<const ProgramText>(unit.account->dialect, LinesOfProgram(*text)) : nullptr;
}

Text Sources::LineOf(const SourceUnit& unit, int32_t line)
{
    if (line < 0) return {};
    if (OpenText* text = Find(unit.path)) {
        const ProgramText& lines = *text->analyser.Lines();
        return line < lines.LineCount() ? Text(lines.At(line).tokens.Whole()) : Text();
    }
    if (lastRead_.first != unit.path) {
        const std::optional<Text> text = unit.account ? unit.account->index->Read(unit.name) : std::nullopt;
        lastRead_ = {unit.path, text ? LinesOfProgram(*text) : std::vector<Text>()};
    }
    return static_cast<size_t>(line) < lastRead_.second.size() ? lastRead_.second[static_cast<size_t>(line)] : Text();
}

} // namespace nib
