#pragma once
#include "persistence/store/SettingsHive.h"

#include <map>

namespace nib::test {

/// A hive that lives as long as the test.
struct MemoryHive : SettingsHive {
    std::optional<String> Get(TextView keyPath, TextView valueName) override
    {
        const auto found = values.find(Name(keyPath, valueName));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void Set(TextView keyPath, TextView valueName, TextView text) override
    {
        values[Name(keyPath, valueName)] = {Text(text)};
    }

    static std::pair<Text, Text> Name(TextView keyPath, TextView valueName)
    {
        return {ToUpper(keyPath), ToUpper(valueName)};
    }
    std::map<std::pair<Text, Text>, String> values;
};

} // namespace nib::test
