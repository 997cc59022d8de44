#pragma once
#include "base/Text.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace nib {

class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual bool HasText() const { return !GetText().empty(); }
    virtual Text GetText() const = 0;
    virtual void SetText(TextView text) = 0;
    /// The desktop's primary selection (middle-button paste); a desktop without one ignores it.
    virtual Text GetPrimary() const { return {}; }
    virtual void SetPrimary(TextView) {}
};

/// Private fonts of this process, and the families that the screen offers.
class Fonts {
public:
    virtual ~Fonts() = default;
    /// `fileName` is a full path; true when it was added.
    virtual bool Add(TextView fileName) = 0;
    virtual void Remove(TextView fileName) = 0;
    virtual std::vector<Text> Families() const = 0;
    /// The folder that the program was started from.
    virtual Text ProgramFolder() const = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    /// Milliseconds since some moment; only differences mean anything.
    virtual int64_t NowMs() const = 0;
};

/// Goes on evenly whatever happens to the date and time of the machine.
class SteadyClock final : public Clock {
public:
    int64_t NowMs() const override
    {
        using namespace std::chrono;
        return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    }
};

inline const SteadyClock kSteadyClock;

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

/// Tells the running copies of the program apart, and from those that have ended.
class SessionToken {
public:
    virtual ~SessionToken() = default;
    /// The number of this copy: no other running one has it, and `isUsed` is false for it. Asked for once. 0 when none
    /// can be had.
    virtual uint32_t Take(const std::function<bool(uint32_t)>& isUsed) = 0;
    /// A copy of this program that runs now has the number.
    virtual bool IsAlive(uint32_t number) = 0;
};

} // namespace nib
