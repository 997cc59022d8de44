#pragma once
#include "editing/MvEdit.h"
#include "fakes/MemorySettings.h"
#include "platform/MessageBoxes.h"

namespace nib::test {

/// A store, and an editor's settings loaded from it.
struct Loading {
    MemorySettings store;
    Text defaultFont = u"Courier New";
    int32_t answer = message_box::kAnswerNo;
    std::vector<std::pair<Text, int32_t>> asked;

    explicit Loading(std::initializer_list<StoredValues::value_type> stored = {}, Text version = u"7.1")
    {
        store.values = stored;
        store.values[u""] = std::move(version);
    }
    MvEdit Load()
    {
        MvEdit settings;
        settings.LoadSettings({store, nullptr, defaultFont, [&](TextView text, int32_t flags) {
                                   asked.emplace_back(text, flags);
                                   return answer;
                               }});
        return settings;
    }
};

inline StoredValues Saved(const MvEdit& settings)
{
    MemorySettings store;
    settings.SaveSettings(store);
    return store.values;
}

} // namespace nib::test
