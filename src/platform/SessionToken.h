#pragma once
#include <cstdint>
#include <functional>

namespace nib {

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
