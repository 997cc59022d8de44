#include "language/Dialects.h"

#include "diagnostics/Guarded.h"
#include "editing/BlockStyles.h"
#include "language/BuiltInDialects.h"
#include "platform/posix/FileContent.h"

#include <algorithm>

namespace nib {

namespace {

constexpr std::string_view kEnding{".dialect"};

/// Nobody writes a longer one.
constexpr size_t kLargest = size_t{1} << 20;

/// Of the styles that keywords have, one that may stand anywhere.
int32_t StyleOf(BlockRole role)
{
    switch (role) {
    case BlockRole::Opens:
    case BlockRole::Routine: return block::kUserBegin;
    case BlockRole::Continues: return block::kUserMiddle;
    case BlockRole::Closes: break;
    }
    return block::kUserEnd;
}

int32_t LookOf(WordKind kind)
{
    switch (kind) {
    case WordKind::Statement: return word_look::kStatement;
    case WordKind::Function: return word_look::kFunction;
    case WordKind::Clause: return word_look::kClause;
    case WordKind::Variable: break;
    }
    return word_look::kVariable;
}

} // namespace

LexRules RulesOf(const Dialect& dialect)
{
    LexRules rules;
    for (const DialectBlock& row : dialect.blocks) {
        const int32_t where = (row.first ? block_condition::kFirst : 0) | (row.last ? block_condition::kLast : 0);
        rules.blockWords.Append({row.words, StyleOf(row.role) | where, keyword_class::kReserved});
    }
    for (const DialectWord& word : dialect.Words()) {
        clsKeyword* look = rules.looks.Find(word.name);
        if (!look) look = rules.looks.Append({word.name, 0, 0});
        look->Block |= LookOf(word.kind);
        if (look->Class != 0 || (word.kind != WordKind::Statement && word.kind != WordKind::Clause)) continue;
        rules.forms.push_back(word.form);
        look->Class = static_cast<int32_t>(rules.forms.size());
    }
    rules.inNames = dialect.inNames;
    rules.beginNames = dialect.beginNames;
    rules.comments = dialect.comments;
    rules.directives = dialect.directives;
    rules.continuations = dialect.continuations;
    rules.blankBeforeColon = dialect.blankBeforeColon;
    return rules;
}

Dialects::Dialects()
{
    for (const BuiltInDialect& row : BuiltInDialects()) Add(FromUtf8(row.name), FromUtf8(row.text));
}

void Dialects::Add(TextView name, Text text)
{
    Entry* held = EntryOf(name);
    if (!held) held = &entries_.emplace_back(Entry{Text(name), {}, nullptr, nullptr});
    held->text = std::move(text);
    // Others may stand on the one that was there.
    for (Entry& entry : entries_) {
        entry.dialect.reset();
        entry.rules.reset();
    }
}

void Dialects::AddFolder(const std::string& folder)
{
    std::vector<FolderEntry> files;
    ListFolder(folder, files);
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    for (const FolderEntry& file : files) {
        if (file.isFolder || !file.name.ends_with(kEnding) || file.name.size() == kEnding.size()) continue;
        const Text name = FromUtf8(file.name.substr(0, file.name.size() - kEnding.size()));
        const auto read = [&] { return FromUtf8(ReadWholeFile(folder + "/" + file.name, kLargest).Bytes()); };
        if (std::optional<Text> text = OrDefault([&] { return std::optional(read()); }, std::optional<Text>()))
            Add(name, std::move(*text));
        else
            notes_.push_back({name, 0, u"The file cannot be read."});
    }
}

Dialects::Entry* Dialects::EntryOf(TextView name)
{
    const auto at = std::find_if(entries_.begin(), entries_.end(),
                                 [&](const Entry& entry) { return EqualsNoCase(entry.name, name); });
    return at == entries_.end() ? nullptr : &*at;
}

const Dialect* Dialects::Find(TextView name)
{
    Entry* entry = EntryOf(name);
    if (!entry) return nullptr;
    if (entry->dialect) return entry->dialect.get();
    auto dialect = std::make_unique<Dialect>();
    const Text base = BaseOfDialect(entry->text);
    entry->reading = true;
    const Dialect* below = nullptr;
    if (!base.empty()) {
        const Entry* other = EntryOf(base);
        below = other && !other->reading ? Find(base) : nullptr;
        if (!below) notes_.push_back({entry->name, 0, u"There is no dialect " + base + u" to build on."});
    }
    entry->reading = false;
    if (below) *dialect = *below;
    dialect->name = entry->name;
    std::vector<DialectNote> notes;
    ReadDialect(entry->text, *dialect, notes);
    notes_.insert(notes_.end(), notes.begin(), notes.end());
    entry->dialect = std::move(dialect);
    return entry->dialect.get();
}

const LexRules* Dialects::Rules(TextView name)
{
    const Dialect* dialect = Find(name);
    if (!dialect) return nullptr;
    Entry* entry = EntryOf(name);
    if (!entry->rules) entry->rules = std::make_unique<LexRules>(RulesOf(*dialect));
    return entry->rules.get();
}

std::vector<Text> Dialects::Names() const
{
    std::vector<Text> names;
    for (const Entry& entry : entries_) names.push_back(entry.name);
    return names;
}

} // namespace nib
