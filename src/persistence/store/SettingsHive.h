#pragma once
#include "base/Text.h"

#include <optional>

namespace nib {

/// The user's own settings, shared by all programs of the user: strings under a key path ("\" between its parts) and a
/// value name, both compared ignoring case. A string may be empty, and so may a name.
class SettingsHive {
public:
    struct String {
        Text text;
        bool expandable = false; ///< holds references to the environment that the reader resolves
    };

    virtual ~SettingsHive() = default;
    /// No answer when there is no such value or the hive cannot be read.
    virtual std::optional<String> Get(TextView keyPath, TextView valueName) = 0;
    /// Stores a plain string. What cannot be brought to disk is kept for this run.
    virtual void Set(TextView keyPath, TextView valueName, TextView text) = 0;
};

} // namespace nib
