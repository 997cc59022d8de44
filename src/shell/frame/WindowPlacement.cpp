#include "shell/frame/WindowPlacement.h"

#include <algorithm>
#include <utility>

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

/// Cut number `index` of `parts` even cuts through `whole`.
int32_t Cut(int32_t whole, int32_t index, int32_t parts)
{
    return static_cast<int32_t>(int64_t(whole) * index / parts);
}

/// Bands across `along`, each cut into windows; the last bands take one window more where the count does not come out
/// even. With `turned` the bands run the other way.
std::vector<Cell> Tiles(int32_t count, int32_t width, int32_t height, bool turned)
{
    if (turned) std::swap(width, height);
    std::vector<Cell> cells;
    auto rows = std::max(static_cast<int32_t>(std::sqrt(double(count))), 1);
    int32_t columns = count / rows;
    int32_t larger = count - rows * columns;
    for (int32_t column = 0; column < columns; ++column) {
        int32_t left = Cut(width, column, columns);
        int32_t right = Cut(width, column + 1, columns);
        int32_t inThis = rows + (column >= columns - larger ? 1 : 0);
        for (int32_t row = 0; row < inThis; ++row) {
            int32_t top = Cut(height, row, inThis);
            Cell cell{left, top, right - left, Cut(height, row + 1, inThis) - top};
            if (turned) cell = {cell.top, cell.left, cell.height, cell.width};
            cells.push_back(cell);
        }
    }
    return cells;
}

/// Windows shrink to a quarter of the height before the title bar of one is covered; the last of more than that go
/// round once more, and the front one comes last.
std::vector<Cell> Steps(int32_t count, int32_t width, int32_t height, int32_t step)
{
    const int32_t most = step > 0 ? std::max(height * 3 / 4 / step, 0) + 1 : 1;
    const int32_t places = std::min(count, most);
    const int32_t across = places > 1 ? std::min(step, width / 2 / (places - 1)) : 0;
    const Cell size{0, 0, std::min(width * 3 / 4, width - (places - 1) * across),
                    std::min(height * 3 / 4, height - (places - 1) * step)};
    const int32_t first = (places - count % places) % places;
    std::vector<Cell> cells;
    for (int32_t i = 0; i < count; ++i) {
        const int32_t place = (i + first) % places;
        cells.push_back({place * across, place * step, size.width, size.height});
    }
    return cells;
}

int64_t SharedArea(const FrameBounds& a, const FrameBounds& b)
{
    const auto shared = [](int64_t startA, int64_t extentA, int64_t startB, int64_t extentB) {
        return std::max<int64_t>(std::min(startA + extentA, startB + extentB) - std::max(startA, startB), 0);
    };
    return shared(a.left, a.width, b.left, b.width) * shared(a.top, a.height, b.top, b.height);
}

} // namespace

FrameBounds FitToDesktop(FrameBounds bounds, const Desktop& desktop)
{
    bounds = {FitStart(bounds.left, desktop.all.left, desktop.all.width, desktop.screenWidth),
              FitStart(bounds.top, desktop.all.top, desktop.all.height, desktop.screenHeight),
              FitExtent(bounds.width, kLeastWidth, desktop.all.width),
              FitExtent(bounds.height, kLeastHeight, desktop.all.height)};
    return FitToScreens(bounds, desktop.screens);
}

FrameBounds FitToScreens(FrameBounds bounds, const std::vector<FrameBounds>& screens)
{
    const auto shares = [&](const FrameBounds& a, const FrameBounds& b) {
        return SharedArea(bounds, a) < SharedArea(bounds, b);
    };
    const auto screen = std::max_element(screens.begin(), screens.end(), shares);
    if (screen == screens.end() || screen->width <= 0 || screen->height <= 0) return bounds;
    bounds.width = std::min(bounds.width, screen->width);
    bounds.height = std::min(bounds.height, screen->height);
    bounds.left = std::clamp(bounds.left, screen->left, screen->left + screen->width - bounds.width);
    bounds.top = std::clamp(bounds.top, screen->top, screen->top + screen->height - bounds.height);
    return bounds;
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

std::vector<Cell> ArrangedCells(Arrangement how, int32_t count, int32_t width, int32_t height, int32_t step)
{
    if (count < 1) return {};
    if (how == Arrangement::Cascade) return Steps(count, width, height, step);
    return Tiles(count, width, height, how == Arrangement::TileHorizontal);
}

} // namespace nib
