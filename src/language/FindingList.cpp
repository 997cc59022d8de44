#include "language/FindingList.h"

#include <algorithm>

namespace nib {

int32_t FindingList::AddItem(Text name, Place includedAt)
{
    items_.push_back({std::move(name), ProgramLine(includedAt)});
    return static_cast<int32_t>(items_.size());
}

int32_t FindingList::ProgramLine(Place place) const
{
    return place.item == 0 ? place.line : items_[static_cast<size_t>(place.item - 1)].line;
}

Text FindingList::Describe(Place place) const
{
    Text text = u"line " + Decimal(place.line);
    if (place.item != 0) text += u" of " + items_[static_cast<size_t>(place.item - 1)].name;
    return text;
}

void FindingList::Add(Place place, TextView text)
{
    Text whole = place.item == 0 ? Text() : u"in " + Describe(place) + u": ";
    findings_.push_back({ProgramLine(place), whole.append(text)});
}

void FindingList::DropBehind(int32_t line)
{
    std::erase_if(findings_, [line](const Finding& finding) { return finding.line > line; });
}

std::vector<Finding> FindingList::Take()
{
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    auto same = [](const Finding& a, const Finding& b) { return a.line == b.line && a.text == b.text; };
    findings_.erase(std::unique(findings_.begin(), findings_.end(), same), findings_.end());
    return std::move(findings_);
}

} // namespace nib
