#include "shell/assist/OutlineModel.h"

namespace nib {

namespace {

/// Both in upper case.
bool Holds(TextView name, TextView letters)
{
    for (const char16_t c : name)
        if (!letters.empty() && letters.front() == c) letters.remove_prefix(1);
    return letters.empty();
}

} // namespace

void OutlineModel::SetEntries(std::vector<OutlineEntry> entries)
{
    entries_ = std::move(entries);
    Choose();
}

void OutlineModel::SetFilter(TextView filter)
{
    filter_ = ToUpper(filter);
    Choose();
}

void OutlineModel::Choose()
{
    shown_.clear();
    for (const OutlineEntry& entry : entries_)
        if (Holds(ToUpper(entry.name), filter_)) shown_.push_back(entry);
}

std::optional<size_t> OutlineModel::At(int32_t line) const
{
    // Entries may lie within others, of which the last one that begins above is the innermost.
    std::optional<size_t> above;
    std::optional<size_t> within;
    for (size_t i = 0; i < shown_.size() && shown_[i].at.start.line <= line; ++i) {
        above = i;
        if (line <= shown_[i].last) within = i;
    }
    return within ? within : above;
}

} // namespace nib
