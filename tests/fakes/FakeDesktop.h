#pragma once
// Time, fonts and the number of a running copy.

#include "platform/Desktop.h"

#include <list>
#include <set>

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

struct FakeFonts final : Fonts {
    std::vector<Text> families{u"Arial", u"DejaVu Sans Mono"};
    std::vector<Text> removed;

    bool Add(TextView) override { return true; }
    void Remove(TextView fileName) override { removed.emplace_back(fileName); }
    std::vector<Text> Families() const override { return families; }
    Text ProgramFolder() const override { return u"/opt/nib"; }
};

struct FakeSessionToken final : SessionToken {
    uint32_t Take(const std::function<bool(uint32_t)>& isUsed) override
    {
        if (next == 0) return 0;
        while (isUsed(next)) ++next;
        alive.insert(next);
        return next;
    }
    bool IsAlive(uint32_t number) override { return alive.contains(number); }

    uint32_t next = 0x0012AB34; ///< 0: none can be had
    std::set<uint32_t> alive;
};

} // namespace nib::test
