#pragma once
#include <cstdint>

namespace nib {

/// Counts the minutes from one auto-save pass to the next.
class AutoSaveTicks {
public:
    /// One minute more; true when a pass is due. While recovery is off no minute counts.
    bool Tick(bool autoRecover)
    {
        if (!autoRecover || ++AutoSaveMinuteCount_ < kMinutes) return false;
        AutoSaveMinuteCount_ = 0;
        return true;
    }
    int32_t AutoSaveMinuteCount() const { return AutoSaveMinuteCount_; }

private:
    static constexpr int32_t kMinutes = 5;
    int32_t AutoSaveMinuteCount_ = 0;
};

} // namespace nib
