#include "language/service/NameReach.h"

#include <algorithm>

namespace nib {

namespace {

constexpr char16_t Capital(char16_t c)
{
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c;
}

bool IsRoutine(SymbolKind kind)
{
    return kind == SymbolKind::Program || kind == SymbolKind::Subroutine || kind == SymbolKind::Function;
}

/// Names of labels, of what is outside, and all others live side by side.
int32_t FamilyOf(SymbolKind kind)
{
    switch (kind) {
    case SymbolKind::Label: return 1;
    case SymbolKind::External: return 2;
    case SymbolKind::File: return 3;
    case SymbolKind::Item: return 4;
    default: return 0;
    }
}

/// It is called, or can be, by other items: no routine within the program has the name.
bool ReachesOut(const ProgramFacts& facts, const Symbol& symbol)
{
    if (symbol.kind == SymbolKind::External) return true;
    return IsRoutine(symbol.kind) &&
           std::none_of(facts.routines.begin(), facts.routines.end(),
                        [&](const Routine& one) { return one.local && SameName(one.name, symbol.name); });
}

void Sort(std::vector<FoundPlace>& found)
{
    const auto before = [](const FoundPlace& a, const FoundPlace& b) {
        return std::tie(a.unit.path, a.at.at.start) < std::tie(b.unit.path, b.at.at.start);
    };
    const auto same = [](const FoundPlace& a, const FoundPlace& b) {
        return a.unit.path == b.unit.path && a.at.at == b.at.at;
    };
    std::sort(found.begin(), found.end(), before);
    found.erase(std::unique(found.begin(), found.end(), same), found.end());
}

} // namespace

bool SameName(TextView a, TextView b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t one, char16_t other) { return Capital(one) == Capital(other); });
}

bool IsAlike(const Symbol& symbol, const Symbol& name)
{
    return FamilyOf(symbol.kind) == FamilyOf(name.kind) && SameName(symbol.name, name.name);
}

std::optional<NamedPlace> NameReach::At(const Text& path, Position at)
{
    const SourceUnit unit = sources_.UnitOf(path);
    const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(unit);
    if (!facts) return std::nullopt;
    const auto& all = facts->occurrences;
    auto found =
        std::partition_point(all.begin(), all.end(), [&](const Occurrence& one) { return one.at.start <= at; });
    // The caret behind a name is at it, unless the next one begins there.
    for (int back = 0; back < 2 && found != all.begin(); ++back) {
        --found;
        if (found->at.start.line == at.line && found->at.end >= at) return NamedPlace{unit, facts, *found};
    }
    return std::nullopt;
}

bool NameReach::IsCalled(const NamedPlace& name)
{
    return ReachesOut(*name.facts, name.Name());
}

std::vector<SourceUnit> NameReach::IncludesOf(const SourceUnit& unit)
{
    std::vector<SourceUnit> found;
    if (!unit.account) return found;
    std::set<ItemName> seen{unit.name};
    std::vector<SourceUnit> todo{unit};
    while (!todo.empty()) {
        const SourceUnit next = std::move(todo.back());
        todo.pop_back();
        const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(next);
        if (!facts) continue;
        for (const IncludeSite& site : facts->includes) {
            const auto item = Included(unit.account->current, next.name, site);
            if (!item || !seen.insert(*item).second) continue;
            todo.push_back(sources_.UnitOf(*unit.account, *item));
            found.push_back(todo.back());
        }
    }
    return found;
}

std::vector<SourceUnit> NameReach::Users(ServedAccount& account, ItemUse use, TextView name)
{
    std::vector<SourceUnit> users;
    for (const ItemName& item : account.index->Users(use, name)) users.push_back(sources_.UnitOf(account, item));
    // What is open may use it since it was stored.
    for (SourceUnit& open : sources_.OpenUnits(account))
        if (std::find(users.begin(), users.end(), open) == users.end()) users.push_back(std::move(open));
    return users;
}

std::vector<SourceUnit> NameReach::Joined(const SourceUnit& unit, const Symbol& name)
{
    std::vector<SourceUnit> joined{unit};
    if (!unit.account) return joined;
    std::set<Text> seen{unit.path};
    const auto mentions = [&](const SourceUnit& other) {
        const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(other);
        return facts && std::any_of(facts->symbols.begin(), facts->symbols.end(),
                                    [&](const Symbol& symbol) { return IsAlike(symbol, name); });
    };
    for (size_t at = 0; at < joined.size(); ++at) {
        const SourceUnit next = joined[at];
        std::vector<SourceUnit> near = IncludesOf(next);
        for (const ItemName& item : unit.account->index->Includers(next.name))
            near.push_back(sources_.UnitOf(*unit.account, item));
        for (SourceUnit& open : sources_.OpenUnits(*unit.account)) {
            const std::vector<SourceUnit> includes = IncludesOf(open);
            if (std::find(includes.begin(), includes.end(), next) != includes.end()) near.push_back(std::move(open));
        }
        for (SourceUnit& other : near)
            if (seen.insert(other.path).second && mentions(other)) joined.push_back(std::move(other));
    }
    return joined;
}

void NameReach::AddAlike(const SourceUnit& unit, const Symbol& name, std::vector<FoundPlace>& found)
{
    const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(unit);
    if (!facts) return;
    for (const Occurrence& one : facts->occurrences) {
        const Symbol& symbol = facts->symbols[static_cast<size_t>(one.symbol)];
        // What a local routine has for itself is another one.
        if (symbol.routine == 0 || symbol.kind == SymbolKind::Label)
            if (IsAlike(symbol, name)) found.push_back({unit, one});
    }
}

void NameReach::AddCalls(const SourceUnit& unit, TextView name, std::vector<FoundPlace>& found)
{
    const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(unit);
    if (!facts) return;
    for (const Occurrence& one : facts->occurrences) {
        const Symbol& symbol = facts->symbols[static_cast<size_t>(one.symbol)];
        if (SameName(symbol.name, name) && ReachesOut(*facts, symbol)) found.push_back({unit, one});
    }
}

/// The head of the program.
void NameReach::AddEntry(const SourceUnit& unit, std::vector<FoundPlace>& found)
{
    const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(unit);
    if (!facts || facts->routines.empty()) return;
    const TextRange at = facts->routines.front().nameAt;
    found.push_back({unit, {at, 0, Use::Declares}});
}

std::vector<SourceUnit> NameReach::Callees(const SourceUnit& from, TextView name)
{
    std::vector<SourceUnit> callees;
    if (!from.account) return callees;
    for (const ItemName& item : from.account->catalogue.Find(name, from.name.file).programs)
        callees.push_back(sources_.UnitOf(*from.account, item));
    return callees;
}

std::optional<SourceUnit> NameReach::IncludedAt(const Text& path, Position at)
{
    const SourceUnit unit = sources_.UnitOf(path);
    const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(unit);
    if (!facts || !unit.account) return std::nullopt;
    for (const IncludeSite& site : facts->includes) {
        if (site.at.start > at || site.at.end < at) continue;
        if (const auto item = Included(unit.account->current, unit.name, site))
            return sources_.UnitOf(*unit.account, *item);
    }
    return std::nullopt;
}

std::vector<FoundPlace> NameReach::Inclusions(const SourceUnit& item)
{
    std::vector<FoundPlace> found;
    for (const SourceUnit& user : Users(*item.account, ItemUse::Includes, item.name.item)) {
        const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(user);
        if (!facts) continue;
        for (const IncludeSite& site : facts->includes)
            if (Included(item.account->current, user.name, site) == item.name)
                found.push_back({user, {site.at, 0, Use::Names}});
    }
    Sort(found);
    return found;
}

std::vector<FoundPlace> NameReach::All(const NamedPlace& name)
{
    std::vector<FoundPlace> found;
    const Symbol& symbol = name.Name();
    if (IsCalled(name)) {
        std::vector<SourceUnit> users{name.unit};
        if (name.unit.account) {
            users = Users(*name.unit.account, ItemUse::Calls, symbol.name);
            for (const SourceUnit& callee : Callees(name.unit, symbol.name)) AddEntry(callee, found);
        }
        if (symbol.kind != SymbolKind::External) AddEntry(name.unit, found);
        for (const SourceUnit& user : users) AddCalls(user, symbol.name, found);
    } else if (symbol.routine != 0 || symbol.kind == SymbolKind::File || symbol.kind == SymbolKind::Item) {
        for (const Occurrence& one : name.facts->occurrences)
            if (one.symbol == name.at.symbol) found.push_back({name.unit, one});
    } else {
        for (const SourceUnit& unit : Joined(name.unit, symbol)) AddAlike(unit, symbol, found);
    }
    Sort(found);
    return found;
}

std::vector<FoundPlace> NameReach::Declarations(const NamedPlace& name)
{
    std::vector<FoundPlace> found;
    const Symbol& symbol = name.Name();
    if (IsCalled(name)) {
        for (const SourceUnit& callee : Callees(name.unit, symbol.name)) AddEntry(callee, found);
        if (found.empty() && symbol.kind != SymbolKind::External) AddEntry(name.unit, found);
        return found;
    }
    std::vector<FoundPlace> places;
    for (const Occurrence& one : name.facts->occurrences)
        if (one.symbol == name.at.symbol) places.push_back({name.unit, one});
    if (symbol.routine == 0)
        for (const SourceUnit& unit : IncludesOf(name.unit)) AddAlike(unit, symbol, places);
    const auto take = [&](Use use) {
        for (const FoundPlace& place : places)
            if (found.empty() && place.at.use == use) found.push_back(place);
    };
    for (Use use : {Use::Declares, Use::Sets, Use::Both}) take(use);
    return found;
}

} // namespace nib
