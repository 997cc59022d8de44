#pragma once
#include "base/Text.h"

namespace nib {

/// Named string values of the user that outlive the program.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual Text Get(TextView valueName, TextView fallback) = 0;
    virtual void Save(TextView valueName, TextView value, TextView fallback = {}) = 0;
};

} // namespace nib
