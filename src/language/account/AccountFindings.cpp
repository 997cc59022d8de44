#include "language/account/AccountFindings.h"

#include "language/FindingCodes.h"

#include <algorithm>

namespace nib {

namespace {

/// The routine that a call of the item runs; null when it is none that says what it takes.
const Routine* EntryOf(const ProgramFacts& program)
{
    if (program.routines.empty()) return nullptr;
    const Routine& entry = program.routines.front();
    return entry.kind == SymbolKind::Subroutine || entry.kind == SymbolKind::Function ? &entry : nullptr;
}

/// What of a member two programs have to agree about.
struct Member {
    int32_t dimensions = 0;
    std::vector<int32_t> sizes;
    Text name;
};

using CommonShape = std::vector<Member>;

CommonShape ShapeOf(const ProgramFacts& program, const CommonBlock& block)
{
    CommonShape shape;
    for (int32_t member : block.members) {
        const Symbol& symbol = program.symbols[static_cast<size_t>(member)];
        shape.push_back({symbol.dimensions, symbol.sizes, symbol.name});
    }
    return shape;
}

bool Agree(const Member& a, const Member& b)
{
    if (a.dimensions != b.dimensions) return false;
    for (size_t i = 0; i < std::min(a.sizes.size(), b.sizes.size()); ++i)
        if (a.sizes[i] != b.sizes[i] && a.sizes[i] >= 0 && b.sizes[i] >= 0)
            return false; // what is no number is not known
    return true;
}

/// The first member that differs; none when one shape is the other's beginning.
std::optional<size_t> FirstDifference(const CommonShape& a, const CommonShape& b)
{
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        if (!Agree(a[i], b[i])) return i;
    return std::nullopt;
}

bool Same(const CommonShape& a, const CommonShape& b)
{
    return a.size() == b.size() && !FirstDifference(a, b);
}

Phrase Sized(const Member& member)
{
    if (member.dimensions == 0) return Wording::NoArray;
    Text sizes;
    for (int32_t size : member.sizes) sizes += (sizes.empty() ? u"" : u",") + (size < 0 ? Text(u"?") : Decimal(size));
    return u"(" + sizes + u")";
}

/// How `shape` differs from `other`, that of `where`.
Phrase Difference(const CommonShape& shape, const CommonShape& other, const Text& where)
{
    if (const std::optional<size_t> at = FirstDifference(shape, other))
        return {Wording::MemberDiffers,
                {Decimal(static_cast<int64_t>(*at) + 1), shape[*at].name, Sized(shape[*at]), Sized(other[*at]), where}};
    return {shape.size() == 1 ? Wording::OneMember : Wording::Members,
            {Decimal(static_cast<int64_t>(shape.size())), Decimal(static_cast<int64_t>(other.size())), where}};
}

Text Shown(const ItemName& name)
{
    return name.file + u" " + name.item;
}

/// Its own block of the name, not that of an include; null when there is none.
const CommonBlock* BlockNamed(const ProgramFacts& program, TextView name)
{
    const auto at = std::find_if(program.commons.begin(), program.commons.end(), [&](const CommonBlock& block) {
        return block.item == 0 && EqualsNoCase(block.name, name);
    });
    return at == program.commons.end() ? nullptr : &*at;
}

/// The members of all its blocks without a name, which are one.
CommonShape UnnamedShape(const ProgramFacts& program)
{
    CommonShape shape;
    for (const CommonBlock& block : program.commons) {
        if (!block.name.empty()) continue;
        const CommonShape part = ShapeOf(program, block);
        shape.insert(shape.end(), part.begin(), part.end());
    }
    return shape;
}

} // namespace

void AccountFindings::Look::Tell(TextView code, TextRange at, Phrase message)
{
    found.push_back({Text(code), FindingKindOf(code).level, at, std::move(message), {}});
}

std::vector<ProgramFinding> AccountFindings::Of(const ProgramFacts& program, const ItemName& name)
{
    Look look{program, name, {}};
    for (const CallSite& call : program.calls)
        if (!call.name.empty() && call.arguments >= 0) Call(look, call);
    for (const CommonBlock& block : program.commons)
        if (block.item == 0 && !block.name.empty()) NamedCommon(look, block);
    return std::move(look.found);
}

void AccountFindings::Call(Look& look, const CallSite& call)
{
    const auto local = std::find_if(look.program.routines.begin(), look.program.routines.end(),
                                    [&](const Routine& one) { return one.local && EqualsNoCase(one.name, call.name); });
    if (local != look.program.routines.end()) return Count(look, call, local->parameters.size(), local->fewer);
    const CallTarget target = catalogue_.Find(call.name, look.name.file);
    // A function may go by another name here than the program that it is.
    if (target.isNowhere && !call.function)
        look.Tell(finding_code::kUnknownCall, call.at, {Wording::NoSubroutine, {call.name}});
    // Which of several it is stands in a catalogue that is not known here.
    std::optional<size_t> takes;
    bool fewer = false;
    for (const ItemName& item : target.programs) {
        const std::shared_ptr<const ProgramFacts> callee = programs_(item);
        const Routine* entry = callee ? EntryOf(*callee) : nullptr;
        if (!entry) return;
        // A subroutine that is used as a function sets its first argument to the value.
        const bool sets = call.function && entry->kind == SymbolKind::Subroutine && !entry->parameters.empty();
        const size_t count = entry->parameters.size() - (sets ? 1 : 0);
        if (takes && *takes != count) return;
        takes = count;
        fewer = fewer || entry->fewer;
        if (target.programs.size() == 1) UnnamedCommon(look, call, item, *callee);
    }
    if (takes) Count(look, call, *takes, fewer);
}

void AccountFindings::Count(Look& look, const CallSite& call, size_t takes, bool fewer)
{
    const auto given = static_cast<size_t>(call.arguments);
    if (takes == given || (fewer && given < takes)) return;
    look.Tell(finding_code::kArgumentCount, call.at,
              {takes == 1 ? Wording::TakesOneHere : Wording::TakesHere,
               {call.name, Decimal(static_cast<int64_t>(takes)), Decimal(call.arguments)}});
}

/// The area without a name is that of the caller: a subroutine may know less of it, but nothing else of it.
void AccountFindings::UnnamedCommon(Look& look, const CallSite& call, const ItemName& calleeName,
                                    const ProgramFacts& callee)
{
    const CommonShape mine = UnnamedShape(look.program);
    const CommonShape other = UnnamedShape(callee);
    if (mine.empty() || (other.size() <= mine.size() && !FirstDifference(mine, other))) return;
    look.Tell(finding_code::kCommonShape, call.at,
              {Wording::CommonDiffers, {Difference(mine, other, Shown(calleeName))}});
}

/// Told where it differs from what most programs of the account say; where there is no such shape, at each.
void AccountFindings::NamedCommon(Look& look, const CommonBlock& block)
{
    struct Kind {
        CommonShape shape;
        ItemName where;
        size_t programs = 0;
    };
    const CommonShape mine = ShapeOf(look.program, block);
    const auto weight = [&](const ItemName& name) { return index_.Includers(name).size() + 1; };
    std::vector<Kind> kinds{{mine, look.name, weight(look.name)}};
    for (const ItemName& item : index_.Users(ItemUse::Shares, block.name)) {
        if (item == look.name) continue;
        const std::shared_ptr<const ProgramFacts> program = programs_(item);
        const CommonBlock* other = program ? BlockNamed(*program, block.name) : nullptr;
        if (!other) continue;
        const CommonShape shape = ShapeOf(*program, *other);
        const auto same = std::find_if(kinds.begin(), kinds.end(), [&](Kind& kind) { return Same(kind.shape, shape); });
        if (same != kinds.end())
            same->programs += weight(item);
        else
            kinds.push_back({shape, item, weight(item)});
    }
    const auto most = std::max_element(kinds.begin() + 1, kinds.end(),
                                       [](const Kind& a, const Kind& b) { return a.programs < b.programs; });
    if (most == kinds.end() || most->programs < kinds.front().programs) return;
    look.Tell(finding_code::kCommonShape, block.at,
              {Wording::NamedCommonDiffers, {block.name, Difference(mine, most->shape, Shown(most->where))}});
}

} // namespace nib
