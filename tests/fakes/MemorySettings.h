#pragma once
#include "editing/SettingsContext.h"

#include <functional>
#include <map>
#include <vector>

namespace nib::test {

using StoredValues = std::map<Text, Text, std::less<>>;

/// Keeps what it is told, and which names were asked for and written, in order.
class MemorySettings final : public SettingsStore {
public:
    Text Get(TextView valueName, TextView fallback) override
    {
        ++reads;
        auto found = values.find(valueName);
        return found == values.end() || found->second.empty() ? Text(fallback) : found->second;
    }
    void Save(TextView valueName, TextView value, TextView fallback = {}) override
    {
        written.emplace_back(valueName);
        values[Text(valueName)] = value == fallback ? TextView{} : value;
    }

    StoredValues values;
    std::vector<Text> written;
    int64_t reads = 0;
};

} // namespace nib::test
