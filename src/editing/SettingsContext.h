#pragma once
#include "persistence/store/SettingsStore.h"

#include <functional>

namespace nib {

/// What releases before 7.0 left behind on this machine.
class OldSettings {
public:
    virtual ~OldSettings() = default;
    /// A value of the section "Settings" of "Ventrino MultiValue Editor"; `fallback` when there is none.
    virtual Text Get(TextView valueName, TextView fallback) = 0;
};

/// What loading needs from outside.
struct SettingsContext {
    SettingsStore& store;
    OldSettings* older = nullptr; ///< none: nothing is stored there
    Text defaultFontName;
    /// Shows a message box and answers the button; see platform/MessageBoxes.h.
    std::function<int32_t(TextView text, int32_t flags)> ask;
};

} // namespace nib
