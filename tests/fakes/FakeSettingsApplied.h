#pragma once
#include "persistence/SettingsModel.h"

namespace nib::test {

struct FakeSettingsApplied final : SettingsApplied {
    std::vector<int32_t> toolSizes;
    int32_t fontChanges = 0;

    void SetToolSize(int32_t size) override { toolSizes.push_back(size); }
    void FontChanged() override { ++fontChanges; }
};

} // namespace nib::test
