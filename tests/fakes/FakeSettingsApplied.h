#pragma once
#include "persistence/settings/SettingsModel.h"

namespace nib::test {

struct FakeSettingsApplied final : SettingsApplied {
    std::vector<bool> iconsLarge;
    int32_t fontChanges = 0;

    void IconsChosen(bool large) override { iconsLarge.push_back(large); }
    void FontChanged() override { ++fontChanges; }
};

} // namespace nib::test
