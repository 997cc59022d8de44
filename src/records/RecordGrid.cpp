#include "records/RecordGrid.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"

#include <algorithm>

namespace nib {

RecordGrid::RecordGrid(SourceDocument& document, Dictionary dictionary)
    : record_(document), dictionary_(std::move(dictionary))
{
    if (record_.IsTooLarge()) throw Error(error_number::kInvalidCall, u"This record is too large for a grid.");
    fields_ = dictionary_.FieldsFor(record_);
    Refresh();
}

const DictionaryField* RecordGrid::FieldOf(int32_t attribute) const
{
    const auto at = fields_.find(attribute);
    return at == fields_.end() ? nullptr : at->second;
}

/// The attributes of the list under an empty name, then those of each association by the first of them.
std::vector<std::pair<Text, std::vector<int32_t>>> RecordGrid::Plan() const
{
    const int32_t last = std::max(record_.AttributeCount(), fields_.empty() ? 0 : fields_.rbegin()->first);
    std::vector<std::pair<Text, std::vector<int32_t>>> plan(1);
    for (int32_t attribute = 1; attribute <= last + 1; ++attribute) {
        const DictionaryField* field = FieldOf(attribute);
        const Text name = field ? field->association : Text();
        auto at = std::find_if(plan.begin(), plan.end(), [&](const auto& table) { return table.first == name; });
        if (at == plan.end()) at = plan.insert(at, {name, {}});
        at->second.push_back(attribute);
    }
    return plan;
}

bool RecordGrid::Refresh()
{
    const auto plan = Plan();
    const bool same = std::equal(
        plan.begin(), plan.end(), tables_.begin(), tables_.end(), [](const auto& planned, const auto& table) {
            return planned.first == table.Association() && (table.IsList() || planned.second == table.Attributes());
        });
    if (same) {
        tables_.front().SetAttributes(plan.front().second);
        return false;
    }
    tables_.clear();
    for (const auto& [name, attributes] : plan) tables_.emplace_back(*this, attributes, name);
    return true;
}

Text RecordGrid::Refusal(const GridCell& cell, TextView typed)
{
    const auto failure = FailureOf([&] { StoredValue(Stored(cell), typed, cell.field); });
    return failure ? failure->description : Text();
}

void RecordGrid::Type(const GridCell& cell, TextView typed)
{
    const Text before = Stored(cell);
    const Text after = StoredValue(before, typed, cell.field);
    if (after != before) record_.SetValue(cell.attribute, cell.value, after);
}

} // namespace nib
