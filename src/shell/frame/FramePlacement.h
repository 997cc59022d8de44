#pragma once
// Where the frame stood when the program last ended, and whether that is still a place to stand. All measures are
// twips.

#include "base/Twips.h"
#include "persistence/store/SettingsStore.h"
#include "shell/WindowOperations.h"

namespace nib {

struct FrameBounds {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    friend bool operator==(const FrameBounds&, const FrameBounds&) = default;
};

/// The monitors together, and the one that new windows come up on.
struct Desktop {
    FrameBounds all;
    int32_t screenWidth = 0;
    int32_t screenHeight = 0;
};

class FramePlacement {
public:
    void Load(SettingsStore& store, const Desktop& desktop);
    /// Each move and resize comes here; only those of a normal window count.
    void Placed(int32_t state, const FrameBounds& now);
    void Save(SettingsStore& store, int32_t state) const;

    int32_t State() const { return state_; }
    /// Of the normal window, whatever the state.
    const FrameBounds& Bounds() const { return bounds_; }

    bool toolbarVisible = true;
    bool statusbarVisible = true;

private:
    int32_t state_ = window_state::kNormal;
    FrameBounds bounds_;
};

/// Fits stored bounds, which may be anything, to the desktop.
FrameBounds FitToDesktop(FrameBounds bounds, const Desktop& desktop);

} // namespace nib
