#include "language/service/LanguageService.h"

#include "language/ProgramFindings.h"
#include "language/service/BlockClosers.h"
#include "language/service/Completer.h"
#include "language/service/Renamer.h"
#include "language/service/WordHelp.h"

#include <algorithm>

namespace nib {

LanguageService::LanguageService(ServiceOptions options) : sources_(std::make_unique<Sources>(std::move(options))) {}

LanguageService::~LanguageService() = default;

void LanguageService::AddAccount(const Text& path, AccountAccess access)
{
    sources_->AddAccount(path, std::move(access));
}

bool LanguageService::Work()
{
    return sources_->Work();
}

IndexState LanguageService::State() const
{
    return sources_->State();
}

uint64_t LanguageService::Revision() const
{
    return sources_->Revision();
}

void LanguageService::Open(const Text& path, std::vector<Text> lines)
{
    sources_->Open(path, lines);
}

void LanguageService::Change(const Text& path, int32_t first, int32_t removed, std::vector<Text> lines)
{
    sources_->Change(path, first, removed, lines);
}

void LanguageService::Close(const Text& path)
{
    sources_->Close(path);
}

const ProgramFacts* LanguageService::Get(const Text& path)
{
    OpenText* text = sources_->Find(path);
    return text ? &sources_->Get(*text) : nullptr;
}

std::vector<ProgramFinding> LanguageService::Findings(const Text& path)
{
    OpenText* text = sources_->Find(path);
    if (!text) return {};
    const ProgramFacts& facts = sources_->Get(*text);
    std::vector<ProgramFinding> findings = facts.findings;
    if (!text->account) return findings;
    std::vector<ProgramFinding> more = text->account->findings.Of(facts, text->name);
    DropSilenced(*text->analyser.Lines(), more);
    std::move(more.begin(), more.end(), std::back_inserter(findings));
    std::erase_if(findings, [&](const ProgramFinding& one) { return text->account->rules.Ignores(one.code); });
    std::stable_sort(findings.begin(), findings.end(),
                     [](const ProgramFinding& a, const ProgramFinding& b) { return a.at.start < b.at.start; });
    return findings;
}

std::vector<LookedWord> LanguageService::Words(const Text& path, int32_t firstLine, int32_t lastLine)
{
    OpenText* text = sources_->Find(path);
    if (!text) return {};
    sources_->Get(*text);
    return text->analyser.Words(firstLine, lastLine);
}

Completions LanguageService::Complete(const Text& path, Position at)
{
    OpenText* text = sources_->Find(path);
    return text ? Completer(*sources_).At(*text, at) : Completions();
}

std::optional<HoverText> LanguageService::Hover(const Text& path, Position at)
{
    return WordHelp(*sources_).Hover(path, at);
}

std::optional<SignatureHelp> LanguageService::Signature(const Text& path, Position at)
{
    return WordHelp(*sources_).Signature(path, at);
}

std::vector<PathRange> LanguageService::Ranges(const std::vector<FoundPlace>& places)
{
    std::vector<PathRange> ranges;
    ranges.reserve(places.size());
    for (const FoundPlace& place : places)
        ranges.push_back({place.unit.path, place.at.at, sources_->LineOf(place.unit, place.at.at.start.line)});
    return ranges;
}

std::vector<PathRange> LanguageService::Definition(const Text& path, Position at)
{
    NameReach reach(*sources_);
    const std::optional<NamedPlace> name = reach.At(path, at);
    if (name) return Ranges(reach.Declarations(*name));
    const std::optional<SourceUnit> item = reach.IncludedAt(path, at);
    return item ? Ranges({{*item, {}}}) : std::vector<PathRange>();
}

std::vector<PathRange> LanguageService::References(const Text& path, Position at, bool withDeclaration)
{
    NameReach reach(*sources_);
    const std::optional<NamedPlace> name = reach.At(path, at);
    const std::optional<SourceUnit> item = name ? std::nullopt : reach.IncludedAt(path, at);
    if (item) return Ranges(reach.Inclusions(*item));
    if (!name) return {};
    std::vector<FoundPlace> places = reach.All(*name);
    if (!withDeclaration) std::erase_if(places, [](const FoundPlace& place) { return place.at.use == Use::Declares; });
    return Ranges(places);
}

std::vector<Occurrence> LanguageService::Highlights(const Text& path, Position at)
{
    const std::optional<NamedPlace> name = NameReach(*sources_).At(path, at);
    std::vector<Occurrence> same;
    if (!name) return same;
    for (const Occurrence& one : name->facts->occurrences)
        if (one.symbol == name->at.symbol) same.push_back(one);
    return same;
}

std::optional<TextRange> LanguageService::PrepareRename(const Text& path, Position at, Text& refusal)
{
    return Renamer(*sources_).Prepare(path, at, refusal);
}

RenamePlan LanguageService::Rename(const Text& path, Position at, const Text& name)
{
    return Renamer(*sources_).Plan(path, at, name);
}

std::vector<FoundSymbol> LanguageService::Find(const Text& query, size_t most)
{
    std::vector<std::pair<int32_t, FoundSymbol>> all;
    for (const auto& [path, account] : sources_->Accounts()) {
        for (NameList::Hit& hit : account->index->Names().Find(query, most)) {
            // Its line is read by those who look at it: most do not.
            all.push_back({hit.score, {std::move(hit.name), hit.kind, {account->PathOf(hit.item), hit.at, {}}}});
        }
    }
    std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<FoundSymbol> found;
    for (auto& [score, symbol] : all)
        if (found.size() < most) found.push_back(std::move(symbol));
    return found;
}

std::optional<Text> LanguageService::CloserFor(const Text& path, int32_t line)
{
    OpenText* text = sources_->Find(path);
    if (!text) return std::nullopt;
    sources_->Get(*text);
    return MissingCloser(text->analyser, *text->dialect, line);
}

} // namespace nib
