#include "shell/menus/modSSKeys.h"

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

constexpr int32_t kLast = 79;

struct Range {
    int32_t first;
    const char16_t* prefix;
};

constexpr Range kFunctionKeys[] = {{63, u"Ctrl+Shift+F"}, {51, u"Shift+F"}, {39, u"Ctrl+F"}, {27, u"F"}};
constexpr int32_t kFirstEditKey = 75;
constexpr const char16_t* kEditKeys[] = {u"Ctrl+Ins", u"Shift+Ins", u"Del", u"Shift+Del", u"Alt+Bkspc"};

} // namespace

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
