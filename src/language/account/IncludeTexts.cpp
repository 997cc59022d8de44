#include "language/account/IncludeTexts.h"

#include "language/Dialect.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kMostKnown = 64;

bool Holds(const std::vector<Text>& names, TextView name)
{
    return std::any_of(names.begin(), names.end(), [&](const Text& one) { return EqualsNoCase(one, name); });
}

} // namespace

std::optional<ItemName> IncludeTexts::Resolve(TextView file, TextView item)
{
    if (auto found = index_.Find(file, item)) return found;
    for (const Text& other : files_)
        if (auto found = index_.Find(other, item)) return found;
    return std::nullopt;
}

IncludeSource::Answer IncludeTexts::Find(TextView file, TextView item, std::shared_ptr<const ProgramText>& text)
{
    const std::optional<ItemName> name = Resolve(file, item);
    if (!name) return WhyMissing(file, item);
    text = open_ ? open_(*name) : nullptr;
    if (!text) text = Stored(*name);
    return text ? Answer::Found : Answer::Unknown;
}

/// Whoever says that an item is missing has seen all places where it could be.
IncludeSource::Answer IncludeTexts::WhyMissing(TextView file, TextView item)
{
    const bool ofSystem = Holds(files_, file) || (item.size() > 2 && EqualsNoCase(item.substr(item.size() - 2), u".H"));
    if (ofSystem || !index_.IsCertain() || !Holds(index_.Files(), u"VOC")) return Answer::Unknown;
    if (Holds(index_.Files(), file)) return Answer::NoItem;
    // VOC may lead to another account.
    return index_.Read({u"VOC", Text(file)}) || index_.Read({u"VOC", ToUpper(file)}) ? Answer::Unknown : Answer::NoFile;
}

std::shared_ptr<const ProgramText> IncludeTexts::Stored(const ItemName& name)
{
    const Text stamp = index_.StampOf(name);
    Known& known = known_[name];
    known.used = ++clock_;
    if (known.text && known.stamp == stamp) return known.text;
    const std::optional<Text> text = index_.Read(name);
    known.stamp = stamp;
    known.text = text ? std::make_shared<const ProgramText>(&dialect_, LinesOfProgram(*text)) : nullptr;
    std::shared_ptr<const ProgramText> answer = known.text;
    if (known_.size() > kMostKnown) {
        const auto used = [](const auto& a, const auto& b) { return a.second.used < b.second.used; };
        known_.erase(std::min_element(known_.begin(), known_.end(), used));
    }
    return answer;
}

} // namespace nib
