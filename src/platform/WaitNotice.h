#pragma once
#include "base/Text.h"

#include <chrono>

namespace nib {

/// Told while a command of the host runs: keeps the windows alive and lets the user stop it.
class WaitNotice {
public:
    virtual ~WaitNotice() = default;
    /// False when another command runs already: this one must not start.
    virtual bool Started(TextView command) = 0;
    /// Called about every 50 ms; false stops the command.
    virtual bool GoOn(std::chrono::milliseconds elapsed) = 0;
    /// Called once for each Started that answered true.
    virtual void Ended() = 0;
};

} // namespace nib
