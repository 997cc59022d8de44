#pragma once
#include "base/Error.h"
#include "persistence/store/SettingsStore.h"

#include <functional>
#include <map>
#include <vector>

namespace nib::test {

using StoredValues = std::map<Text, Text, std::less<>>;

/// Keeps what it is told, and which names were asked for and written, in order.
struct MemorySettings : SettingsStore {
    Text Get(TextView valueName, TextView fallback) override
    {
        ++reads;
        auto found = values.find(valueName);
        return found == values.end() || found->second.empty() ? Text(fallback) : found->second;
    }
    void Save(TextView valueName, TextView value, TextView fallback = {}) override
    {
        if (failing) throw Error{71, u"Not saved"};
        written.emplace_back(valueName);
        values[Text(valueName)] = value == fallback ? TextView{} : value;
    }

    StoredValues values;
    std::vector<Text> written;
    int64_t reads = 0;
    bool failing = false;
};

} // namespace nib::test
