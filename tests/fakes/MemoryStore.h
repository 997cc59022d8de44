#pragma once
#include "persistence/store/SettingsStore.h"

#include <map>

namespace nib::test {

/// The user's values, for as long as the test lasts.
class MemoryStore final : public SettingsStore {
public:
    Text Get(TextView valueName, TextView fallback) override
    {
        auto found = values.find(Text(valueName));
        return found == values.end() ? Text(fallback) : found->second;
    }
    void Save(TextView valueName, TextView value, TextView) override { values[Text(valueName)] = value; }

    std::map<Text, Text> values;
};

} // namespace nib::test
