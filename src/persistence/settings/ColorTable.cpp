#include "persistence/settings/ColorTable.h"

#include "editing/MvEdit.h"

#include <algorithm>
#include <iterator>

namespace nib {

namespace {

constexpr ColorRow kStandardColors[] = {
    {u"Black", 0x000000},     {u"Dark Blue", 0x800000}, {u"Dark Green", 0x008000}, {u"Turquoise", 0x808000},
    {u"Dark Red", 0x000080},  {u"Purple", 0x800080},    {u"Olive", 0x008080},      {u"Light Gray", 0xC0C0C0},
    {u"Dark Gray", 0x808080}, {u"Blue", 0xFF0000},      {u"Green", 0x00FF00},      {u"Cyan", 0xFFFF00},
    {u"Red", 0x0000FF},       {u"Magenta", 0xFF00FF},   {u"Yellow", 0x00FFFF},     {u"White", 0xFFFFFF},
};

/// Names and indices.
constexpr ColorRow kSystemColors[] = {
    {u"3D Dark Shadow", 21},
    {u"3D Face", 15},
    {u"3D Highlight", 20},
    {u"3D Light", 22},
    {u"3D Shadow", 16},
    {u"Active Border", 10},
    {u"Active Caption Background", 2},
    {u"Active Caption Text", 9},
    {u"Alternate Button Face", 25},
    {u"Application Workspace", 12},
    {u"Button Text", 18},
    {u"Desktop Background", 1},
    {u"Gradient Active Caption", 27},
    {u"Gradient Inactive Caption", 28},
    {u"Gray Text", 17},
    {u"Hotlight", 26},
    {u"Inactive Border", 11},
    {u"Inactive Caption Background", 3},
    {u"Inactive Caption Text", 19},
    {u"Menu Background", 4},
    {u"Menu Bar Background", 30},
    {u"Menu Highlight", 29},
    {u"Menu Text", 7},
    {u"Scrollbar", 0},
    {u"Selected Item Background", 13},
    {u"Selected Item Text", 14},
    {u"Tooltip Background", 24},
    {u"Tooltip Text", 23},
    {u"Window Background", 5},
    {u"Window Frame", 6},
    {u"Window Text", 8},
};

constexpr uint32_t kSystemBit = 0x80000000U;

constexpr int32_t SystemValue(int32_t index)
{
    return static_cast<int32_t>(kSystemBit | static_cast<uint32_t>(index));
}
constexpr bool IsSystem(int32_t value)
{
    return static_cast<uint32_t>(value) & kSystemBit;
}
constexpr int32_t IndexOf(int32_t value)
{
    return value & 0xFFFF;
}

template <size_t Count>
const ColorRow* FindValue(const ColorRow (&rows)[Count], int32_t value)
{
    auto found =
        std::find_if(std::begin(rows), std::end(rows), [&](const ColorRow& row) { return row.value == value; });
    return found == std::end(rows) ? nullptr : found;
}

Text Components(int32_t color)
{
    return u"R=" + Decimal(color & 0xFF) + u" G=" + Decimal(color >> 8 & 0xFF) + u" B=" + Decimal(color >> 16 & 0xFF);
}

Text NameInTip(int32_t value, const SystemColors& system)
{
    if (!IsSystem(value)) {
        const ColorRow* row = FindValue(kStandardColors, value);
        return row ? Text(row->name) + u" (standard color) " : Text(u"custom color: ");
    }
    const ColorRow* row = FindValue(kSystemColors, IndexOf(value));
    if (row && system(IndexOf(value))) return Text(row->name) + u" (system color) ";
    return u"unknown system color " + Decimal(IndexOf(value)) + u" ";
}

constexpr TextView kSeen[] = {
    u"FontName",       u"FontSize",      u"BackColor",     u"NormalColor", u"NormalStyle",    u"KeywordColor",
    u"KeywordStyle",   u"StringColor",   u"StringStyle",   u"LabelColor",  u"LabelStyle",     u"CommentColor",
    u"CommentStyle",   u"ReservedColor", u"ReservedStyle", u"TabSize",     u"CollapseBlocks", u"StatementColor",
    u"StatementStyle", u"FunctionColor", u"FunctionStyle", u"NumberColor", u"NumberStyle",
};

} // namespace

std::vector<ColorRow> ColorRows(const SystemColors& system)
{
    std::vector<ColorRow> rows{{u"Standard Colors", color_row::kStandardHeading}};
    rows.insert(rows.end(), std::begin(kStandardColors), std::end(kStandardColors));
    rows.push_back({u"System Colors", color_row::kSystemHeading});
    for (const ColorRow& row : kSystemColors)
        if (system(row.value)) rows.push_back({row.name, SystemValue(row.value)});
    rows.push_back({u"Custom Color >>", color_row::kCustom});
    return rows;
}

size_t RowOfColor(const std::vector<ColorRow>& rows, int32_t value)
{
    auto found = std::find_if(rows.begin(), rows.end(), [&](const ColorRow& row) { return row.value == value; });
    bool named = found != rows.end() && !color_row::IsHeading(value);
    return named ? static_cast<size_t>(found - rows.begin()) : rows.size() - 1;
}

int32_t ResolveColor(int32_t value, const SystemColors& system)
{
    return IsSystem(value) ? system(IndexOf(value)).value_or(0) : value & 0xFFFFFF;
}

Text ColorTip(int32_t value, const SystemColors& system)
{
    return NameInTip(value, system) + Components(ResolveColor(value, system));
}

void ShowOnSample(const MvEdit& settings, MvEdit& sample)
{
    for (TextView name : kSeen) CopySetting(SettingNamed(name), settings, sample);
    sample.Keywords.SetRules(settings.Keywords.Rules());
}

MvEdit SampleSettings()
{
    MvEdit sample;
    sample.Keywords.SetKeywordList(keyword_class::kUser, u" ", kSampleUserWords);
    return sample;
}

} // namespace nib
