#pragma once
#include <chrono>
#include <cstdint>

namespace nib {

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

} // namespace nib
