#pragma once
#include "platform/Desktop.h"

namespace nib {

class QtTimers final : public Timers {
public:
    std::unique_ptr<Timer> Every(std::chrono::milliseconds interval, std::function<void()> ring) override;
};

} // namespace nib
