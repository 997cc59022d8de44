#pragma once
#include "platform/Clock.h"

namespace nib::test {

struct FakeClock final : Clock {
    int64_t now = 5000;
    int64_t NowMs() const override { return now; }
};

} // namespace nib::test
