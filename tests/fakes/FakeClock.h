#pragma once
#include "platform/Desktop.h"

#include <list>

namespace nib::test {

/// Time that passes when the test says so; timers ring as it does.
struct FakeClock final : Clock, Timers {
    int64_t now = 5000;
    int64_t NowMs() const override { return now; }

    std::unique_ptr<Timer> Every(std::chrono::milliseconds interval, std::function<void()> ring) override
    {
        auto& alarm = alarms_.emplace_back(Alarm{now + interval.count(), interval.count(), std::move(ring)});
        return std::make_unique<Ringing>(alarms_, &alarm);
    }
    void Advance(std::chrono::milliseconds time)
    {
        const int64_t end = now + time.count();
        for (;;) {
            Alarm* next = nullptr;
            for (Alarm& alarm : alarms_)
                if (alarm.due <= end && (!next || alarm.due < next->due)) next = &alarm;
            if (!next) break;
            now = next->due;
            next->due += next->interval;
            const auto ring = next->ring; // which may end its timer
            ring();
        }
        now = end;
    }
    size_t RunningTimers() const { return alarms_.size(); }

private:
    struct Alarm {
        int64_t due;
        int64_t interval;
        std::function<void()> ring;
    };
    struct Ringing final : Timer {
        Ringing(std::list<Alarm>& all, const Alarm* one) : alarms(all), alarm(one) {}
        ~Ringing() override
        {
            alarms.remove_if([this](const Alarm& candidate) { return &candidate == alarm; });
        }
        std::list<Alarm>& alarms;
        const Alarm* alarm;
    };
    std::list<Alarm> alarms_;
};

} // namespace nib::test
