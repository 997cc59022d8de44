#include "shell/menus/FrameKeys.h"

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

enum class Held { No, Yes, Any };
/// Where the key must be pressed.
enum class Place { Frame, Lines };

struct KeyRow {
    FrameKey key;
    Held shift;
    Held ctrl;
    Held alt;
    Place place;
    KeyAction action;
};

/// The first row that fits counts.
constexpr KeyRow kRows[] = {
    {FrameKey::Tab, Held::Yes, Held::Yes, Held::Any, Place::Frame, KeyAction::PreviousDocument},
    {FrameKey::Tab, Held::No, Held::Yes, Held::Any, Place::Frame, KeyAction::NextDocument},
    {FrameKey::Tab, Held::No, Held::No, Held::No, Place::Lines, KeyAction::IndentBlock},
    {FrameKey::Tab, Held::Yes, Held::No, Held::No, Place::Lines, KeyAction::OutdentBlock},
    {FrameKey::F6, Held::No, Held::Yes, Held::No, Place::Frame, KeyAction::NextDocument},
};

bool Fits(Held wanted, bool held)
{
    return wanted == Held::Any || (wanted == Held::Yes) == held;
}

bool Fits(Place wanted, const KeyboardState& state)
{
    return wanted == Place::Frame || (state.textFocused && state.multiLineSelection);
}

constexpr int32_t kLast = 79;

struct Range {
    int32_t first;
    const char16_t* prefix;
};

constexpr Range kFunctionKeys[] = {{63, u"Ctrl+Shift+F"}, {51, u"Shift+F"}, {39, u"Ctrl+F"}, {27, u"F"}};
constexpr int32_t kFirstEditKey = 75;
constexpr const char16_t* kEditKeys[] = {u"Ctrl+Ins", u"Shift+Ins", u"Del", u"Shift+Del", u"Alt+Bkspc"};

} // namespace

KeyAction FilterKey(const KeyStroke& stroke, const KeyboardState& state)
{
    if (!state.frameActive) return KeyAction::Pass;
    auto row = std::find_if(std::begin(kRows), std::end(kRows), [&](const KeyRow& r) {
        return r.key == stroke.key && Fits(r.shift, stroke.shift) && Fits(r.ctrl, stroke.ctrl) &&
               Fits(r.alt, stroke.alt) && Fits(r.place, state);
    });
    if (row == std::end(kRows)) return KeyAction::Pass;
    return stroke.down ? row->action : KeyAction::Swallow;
}

Text ShortcutName(int32_t number)
{
    if (number < 1 || number > kLast) return {};
    if (number >= kFirstEditKey) return kEditKeys[number - kFirstEditKey];
    auto range = std::find_if(std::begin(kFunctionKeys), std::end(kFunctionKeys),
                              [&](const Range& row) { return number >= row.first; });
    if (range != std::end(kFunctionKeys)) return range->prefix + Decimal(number - range->first + 1);
    return u"Ctrl+" + Text(1, static_cast<char16_t>(u'A' + number - 1));
}

} // namespace nib
