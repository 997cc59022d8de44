#pragma once
#include "platform/Desktop.h"

#include <set>

namespace nib::test {

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
