#include "shell/frame/FramePlacement.h"

#include <algorithm>

namespace nib {

namespace {

/// A new window leaves an eighth of the screen free on every side.
constexpr double kDefaultOffset = 0.125;
constexpr double kDefaultExtent = 0.75;
/// A window that begins in the last tenth of the desktop could not be got hold of.
constexpr double kReachable = 0.9;
/// Smaller than this no menu can be used.
constexpr int32_t kLeastWidth = 4800;
constexpr int32_t kLeastHeight = 3600;

int32_t Part(int32_t whole, double part)
{
    return Saturated(whole * part);
}

int32_t FitStart(int32_t start, int32_t allStart, int32_t allExtent, int32_t screenExtent)
{
    if (start < allStart) return allStart;
    if (start > kReachable * (double(allStart) + allExtent)) return Part(screenExtent, kDefaultOffset);
    return start;
}

int32_t FitExtent(int32_t extent, int32_t least, int32_t allExtent)
{
    return std::clamp(extent, std::min(least, allExtent), std::max(allExtent, 0));
}

/// A number as it is stored; anything else counts as not stored.
int32_t NumberOr(TextView text, int32_t fallback)
{
    text = Trim(text);
    size_t digits = !text.empty() && (text[0] == u'-' || text[0] == u'+') ? 1 : 0;
    bool number = text.size() > digits && text[digits] >= u'0' && text[digits] <= u'9';
    return number ? ToInt(text) : fallback;
}

struct BoundsRow {
    const char16_t* name;
    int32_t FrameBounds::*member;
    double part;
    bool across;
};

constexpr BoundsRow kBounds[] = {
    {u"MainLeft", &FrameBounds::left, kDefaultOffset, true},
    {u"MainTop", &FrameBounds::top, kDefaultOffset, false},
    {u"MainWidth", &FrameBounds::width, kDefaultExtent, true},
    {u"MainHeight", &FrameBounds::height, kDefaultExtent, false},
};

struct BandRow {
    const char16_t* name;
    bool FramePlacement::*member;
};

constexpr BandRow kBands[] = {
    {u"ToolbarVisible", &FramePlacement::toolbarVisible},
    {u"StatusbarVisible", &FramePlacement::statusbarVisible},
};

} // namespace

FrameBounds FitToDesktop(FrameBounds bounds, const Desktop& desktop)
{
    return {FitStart(bounds.left, desktop.all.left, desktop.all.width, desktop.screenWidth),
            FitStart(bounds.top, desktop.all.top, desktop.all.height, desktop.screenHeight),
            FitExtent(bounds.width, kLeastWidth, desktop.all.width),
            FitExtent(bounds.height, kLeastHeight, desktop.all.height)};
}

void FramePlacement::Load(SettingsStore& store, const Desktop& desktop)
{
    int32_t state = NumberOr(store.Get(u"MainState", u"0"), window_state::kNormal);
    state_ = state == window_state::kMinimized || state == window_state::kMaximized ? state : window_state::kNormal;
    for (const BoundsRow& row : kBounds) {
        int32_t usual = Part(row.across ? desktop.screenWidth : desktop.screenHeight, row.part);
        bounds_.*row.member = NumberOr(store.Get(row.name, Decimal(usual)), usual);
    }
    bounds_ = FitToDesktop(bounds_, desktop);
    for (const BandRow& row : kBands) this->*row.member = !EqualsNoCase(Trim(store.Get(row.name, u"True")), u"False");
}

void FramePlacement::Placed(int32_t state, const FrameBounds& now)
{
    if (state == window_state::kNormal) bounds_ = now;
}

void FramePlacement::Save(SettingsStore& store, int32_t state) const
{
    if (state != window_state::kMinimized) store.Save(u"MainState", Decimal(state));
    for (const BoundsRow& row : kBounds) store.Save(row.name, Decimal(bounds_.*row.member));
    for (const BandRow& row : kBands) store.Save(row.name, this->*row.member ? u"True" : u"False");
}

} // namespace nib
