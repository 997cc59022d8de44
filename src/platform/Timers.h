#pragma once
#include <chrono>
#include <functional>
#include <memory>

namespace nib {

/// Wakes the program up, on the thread of its windows.
class Timers {
public:
    /// Rings until it ends.
    class Timer {
    public:
        virtual ~Timer() = default;
    };

    virtual ~Timers() = default;
    /// Calls `ring` each time so much time has passed. One that rings late is not made up for.
    virtual std::unique_ptr<Timer> Every(std::chrono::milliseconds interval, std::function<void()> ring) = 0;
};

} // namespace nib
