#pragma once
#include <functional>
#include <vector>

namespace nib {

/// Runs work on a thread of its own while the windows are painted, timers ring and, if that is wanted, keys are taken.
class QtBackground {
public:
    /// Returns when `work` has ended, or throws what it threw. Work that is wanted out of such a wait is simply done.
    /// Unless `typing`, what the user does waits for the end, too.
    void Run(const std::function<void()>& work, bool typing);
    bool IsBusy() const { return busy_; }
    /// While work goes on: `what` is done once that has ended and whoever waits for it has returned, and before
    /// anything that the user does from now on. Else answers false.
    bool Postpone(std::function<void()> what);

private:
    bool busy_ = false;
    std::vector<std::function<void()>> postponed_;
};

} // namespace nib
