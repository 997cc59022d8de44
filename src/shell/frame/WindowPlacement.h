#pragma once
// Where windows stand: the frame on the desktop, child windows in the frame. The frame's measures are twips, 1440 to
// the logical inch, so that the stored values mean the same on every screen.

#include "base/Twips.h"
#include "persistence/store/SettingsStore.h"
#include "shell/FileCommands.h"

#include <algorithm>
#include <vector>

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
    std::vector<FrameBounds> screens{}; ///< what windows may cover of each monitor, the usual one first
};

/// Where the frame stood when the program last ended, and whether that is still a place to stand.
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

/// Fits stored bounds, which may be anything, to the desktop, and puts them into one monitor as a whole.
FrameBounds FitToDesktop(FrameBounds bounds, const Desktop& desktop);
/// Moves a window into the screen that shows most of it, or the first; one that is too large becomes as large as that.
FrameBounds FitToScreens(FrameBounds bounds, const std::vector<FrameBounds>& screens);

enum class Arrangement { Cascade = 0, TileHorizontal = 1, TileVertical = 2 };

struct Cell {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    friend bool operator==(const Cell&, const Cell&) = default;
};

/// The places of `count` windows in an area: tiles fill it without gap or overlap; a cascade steps down by `step`, the
/// height of a title bar, so that every title is in sight as long as there is room for them. Its front window comes
/// last.
std::vector<Cell> ArrangedCells(Arrangement how, int32_t count, int32_t width, int32_t height, int32_t step);

/// The child windows from front to back. Stepping on sends the front one to the back and stepping back undoes that, so
/// that a round visits every window.
template <typename Child>
class ChildOrder {
public:
    /// Comes to the front, as a click brings it.
    void ToFront(Child* child)
    {
        Remove(child);
        order_.insert(order_.begin(), child);
    }
    void Remove(Child* child) { std::erase(order_, child); }
    Child* Front() const { return order_.empty() ? nullptr : order_.front(); }
    const std::vector<Child*>& All() const { return order_; }
    /// The child that is now in front; null when there is none.
    Child* Step(bool backward)
    {
        if (order_.size() > 1) {
            auto turn = backward ? order_.end() - 1 : order_.begin() + 1;
            std::rotate(order_.begin(), turn, order_.end());
        }
        return Front();
    }

private:
    std::vector<Child*> order_;
};

} // namespace nib
