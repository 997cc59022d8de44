#include "language/service/Renamer.h"

#include "language/Dialect.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

bool IsNumber(TextView name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), units::IsDigit);
}

Text Shown(const SourceUnit& unit)
{
    return unit.account ? unit.name.file + u" " + unit.name.item : unit.name.item;
}

} // namespace

/// A name that can be given another one at all.
Text Renamer::WhyNotHere(const std::optional<NamedPlace>& place)
{
    if (!place) return u"There is no name here.";
    const Symbol& symbol = place->Name();
    if (symbol.kind == SymbolKind::File || symbol.kind == SymbolKind::Item)
        return u"What an item is called is not changed from within a program.";
    if (NameReach::IsCalled(*place)) {
        const size_t callees = reach_.Callees(place->unit, symbol.name).size();
        if (symbol.kind == SymbolKind::External && callees == 0)
            return u"It is not known what " + symbol.name + u" is.";
        if (callees > 1) return u"Several items are called " + symbol.name + u".";
        if (place->unit.account && !place->unit.account->index->IsCertain())
            return u"Not all programs of the account have been read yet.";
        return {};
    }
    if (place->unit.account && place->unit.account->index->IsBusy() && symbol.routine == 0)
        return u"Not all programs of the account have been read yet.";
    // What sets it may be in an item that cannot be seen.
    const bool missing = std::any_of(place->facts->includes.begin(), place->facts->includes.end(),
                                     [](const IncludeSite& site) { return !site.found; });
    const bool own = symbol.routine != 0 || symbol.kind == SymbolKind::Label || symbol.kind == SymbolKind::Parameter;
    if (!missing || own) return {};
    for (const FoundPlace& found : reach_.All(*place))
        if (found.at.use == Use::Sets || found.at.use == Use::Declares) return {};
    return u"An included item was not found, and " + symbol.name + u" may be of it.";
}

std::optional<TextRange> Renamer::Prepare(const Text& path, Position at, Text& refusal)
{
    const std::optional<NamedPlace> place = reach_.At(path, at);
    refusal = WhyNotHere(place);
    return refusal.empty() ? std::optional(place->at.at) : std::nullopt;
}

Text Renamer::WhyNotCalled(const NamedPlace& place, const Text& name, bool isLabel) const
{
    if (isLabel && IsNumber(name)) return {};
    const Dialect& dialect = place.unit.account ? *place.unit.account->dialect : sources_.Language();
    const bool whole = !name.empty() && dialect.BeginsName(name.front()) &&
                       std::all_of(name.begin(), name.end(), [&](char16_t c) { return dialect.IsInName(c); });
    if (!whole) return name + u" is no name.";
    if (!dialect.Find(name).empty()) return name + u" is a word of the language.";
    return {};
}

/// The unit has the new name already, or the old one in a statement that was not understood.
Text Renamer::WhyNotIn(const SourceUnit& unit, const NamedPlace& place, const Text& name, const PathEdit& edits)
{
    const std::shared_ptr<const ProgramFacts> facts = sources_.Facts(unit);
    if (!facts) return Shown(unit) + u" cannot be read.";
    Symbol wanted = place.Name();
    const Text old = wanted.name;
    wanted.name = name;
    const bool sameName = SameName(old, name);
    for (const Symbol& symbol : facts->symbols)
        if (!sameName && IsAlike(symbol, wanted)) return Shown(unit) + u" has a name " + name + u" already.";

    const std::shared_ptr<const ProgramText> lines = sources_.Lines(unit);
    if (!lines) return Shown(unit) + u" cannot be read.";
    std::vector<Position> known;
    for (const Occurrence& one : facts->occurrences) known.push_back(one.at.start);
    for (int32_t at = 0; at < lines->LineCount(); ++at) {
        const BasicLine& line = lines->At(at).tokens;
        for (const BasicToken& token : line.Tokens()) {
            using Kind = BasicToken::Kind;
            if (token.kind != Kind::Word && token.kind != Kind::Target) continue;
            const TextView word = line.Of(token);
            if (!SameName(word, old) && (sameName || !SameName(word, name))) continue;
            if (!std::binary_search(known.begin(), known.end(), Position{token.start, at}))
                return u"Line " + Decimal(at + 1) + u" of " + Shown(unit) + u" is not understood.";
        }
    }
    for (const QuickMend::Edit& edit : edits.edits) {
        const Text line = sources_.LineOf(unit, edit.range.start.line);
        const auto start = static_cast<size_t>(edit.range.start.col);
        if (start > line.size() || !SameName(TextView(line).substr(start, old.size()), old))
            return Shown(unit) + u" has been changed meanwhile.";
    }
    return {};
}

RenamePlan Renamer::Plan(const Text& path, Position at, const Text& name)
{
    RenamePlan plan;
    const std::optional<NamedPlace> place = reach_.At(path, at);
    plan.refusal = WhyNotHere(place);
    if (!plan.refusal.empty()) return plan;
    const Symbol& symbol = place->Name();
    plan.refusal = WhyNotCalled(*place, name, symbol.kind == SymbolKind::Label);
    // A program may always be called as its item is.
    std::vector<SourceUnit> meant = reach_.Callees(place->unit, symbol.name);
    meant.push_back(place->unit);
    const auto isOther = [&](const SourceUnit& unit) { return std::ranges::find(meant, unit) == meant.end(); };
    if (NameReach::IsCalled(*place) && std::ranges::any_of(reach_.Callees(place->unit, name), isOther))
        plan.refusal = u"There is a program " + name + u" already.";
    if (!plan.refusal.empty()) return plan;

    std::vector<SourceUnit> units;
    for (const FoundPlace& found : reach_.All(*place)) {
        const TextRange& range = found.at.at;
        if (symbol.kind == SymbolKind::Label && found.at.use == Use::Declares && !IsNumber(name)) {
            // "10 PRINT" needs no colon, "TEN PRINT" is no label.
            const Text line = sources_.LineOf(found.unit, range.end.line);
            const size_t next = line.find_first_not_of(u' ', static_cast<size_t>(range.end.col));
            if (next == Text::npos || line[next] != u':') plan.refusal = u"A label without a colon is a number.";
        }
        if (units.empty() || !(units.back() == found.unit)) {
            units.push_back(found.unit);
            plan.edits.push_back({found.unit.path, {}, {}});
        }
        if (range.end.col - range.start.col != static_cast<int32_t>(symbol.name.size())) continue;
        plan.edits.back().edits.push_back({range, name});
        plan.edits.back().lines.push_back(sources_.LineOf(found.unit, range.start.line));
    }
    for (size_t i = 0; i < units.size() && plan.refusal.empty(); ++i)
        plan.refusal = WhyNotIn(units[i], *place, name, plan.edits[i]);
    if (!plan.refusal.empty()) plan.edits.clear();
    std::erase_if(plan.edits, [](const PathEdit& one) { return one.edits.empty(); });
    return plan;
}

} // namespace nib
