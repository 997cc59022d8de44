#include "language/account/Catalogue.h"

#include "hosts/CatalogueRecord.h"

#include <algorithm>

namespace nib {

namespace {

using Clock = std::chrono::steady_clock;

constexpr TextView kVoc{u"VOC"};

/// Folders in which systems keep what has been catalogued, by its name.
constexpr TextView kCatalogues[] = {u"gcat", u"cat", u"CATDIR"};

/// Names that systems give their own programs begin so.
constexpr TextView kSystemSigns{u"!*$-_"};

constexpr auto kRefreshAfter = std::chrono::seconds(20);

} // namespace

void Catalogue::Refresh()
{
    if (looked_ && Clock::now() - *looked_ < kRefreshAfter) return;
    looked_ = Clock::now();
    records_.clear();
    catalogued_.clear();
    const std::vector<Text>& files = index_.Files();
    const auto has = [&](TextView name) { return std::find(files.begin(), files.end(), name) != files.end(); };
    // One that is hashed has no ids to be seen.
    hasVoc_ = has(kVoc);
    hasCatalogue_ = false;
    for (TextView name : kCatalogues) {
        if (!has(name)) continue;
        hasCatalogue_ = true;
        for (const Text& id : index_.Ids(name)) catalogued_.insert(ToUpper(id));
    }
}

std::optional<Text> Catalogue::VocRecord(const Text& name)
{
    if (!hasVoc_) return std::nullopt;
    const auto [at, isNew] = records_.try_emplace(name);
    if (isNew) at->second = index_.Read({Text(kVoc), name});
    return at->second;
}

std::optional<ItemName> Catalogue::FromVoc(const Text& name)
{
    const std::optional<Text> record = VocRecord(name);
    if (!record) return std::nullopt;
    const auto program = CataloguedProgram([&](int32_t attribute) {
        const TextView line = Field(*record, u'\n', attribute);
        return Text(line.substr(0, line.find(u'\r')));
    });
    return program ? index_.Find(program->file, program->item) : std::nullopt;
}

CallTarget Catalogue::Find(TextView name, TextView file)
{
    CallTarget target;
    if (name.empty()) return target;
    Refresh();
    const Text capitals = ToUpper(name);
    for (const Text& spelling : {Text(name), capitals})
        if (auto program = FromVoc(spelling); program && target.programs.empty())
            target.programs = {*std::move(program)};
    if (!target.programs.empty()) return target;

    target.programs = index_.ProgramsNamed(name);
    if (target.programs.empty()) {
        target.programs = open_(name);
        for (ItemName& item : index_.Users(ItemUse::Declares, name))
            if (std::ranges::find(target.programs, item) == target.programs.end())
                target.programs.push_back(std::move(item));
    }
    const auto nearer = [&](const ItemName& a, const ItemName& b) {
        const auto far = [&](const ItemName& one) { return std::pair(one.file != file, one.item != name); };
        return far(a) < far(b);
    };
    std::stable_sort(target.programs.begin(), target.programs.end(), nearer);
    if (!target.programs.empty()) return target;

    const bool isSystems = kSystemSigns.find(name.front()) != TextView::npos;
    // The catalogue of a server is not to be seen from its folders, unless it is one of them.
    const bool seesAll = index_.IsCertain() && (hasVoc_ || hasCatalogue_);
    target.isNowhere = seesAll && !isSystems && !catalogued_.contains(capitals) && !IsInVoc(Text(name)) &&
                       !IsInVoc(capitals) && index_.ItemsNamed(name).empty();
    return target;
}

} // namespace nib
