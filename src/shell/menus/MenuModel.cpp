#include "shell/menus/MenuModel.h"

#include "base/Error.h"
#include "shell/menus/MenuTable.h"

#include <algorithm>
#include <utility>

namespace nib {

namespace {

char16_t AsciiLower(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

template <typename Row>
MenuTool ToolOf(const Row& row)
{
    MenuTool tool;
    tool.key = row.key;
    tool.caption = row.caption;
    tool.beginGroup = row.beginsGroup;
    return tool;
}

MenuTool MenuOf(const MenuRow& row)
{
    MenuTool tool = ToolOf(row);
    tool.isMenu = true;
    return tool;
}

MenuTool PanelOf(const PanelRow& row)
{
    MenuTool tool;
    tool.key = row.key;
    tool.tip = row.tip;
    tool.visible = row.shown;
    (row.fixedWidth ? tool.minText : tool.caption) = row.text;
    tool.tag = row.opens;
    return tool;
}

void Dress(MenuTool& tool, const MenuTool* menuTool)
{
    if (menuTool && tool.caption.empty()) tool.caption = menuTool->caption;
    if (menuTool && tool.shortcut.empty()) tool.shortcut = menuTool->shortcut;
    auto look = std::find_if(kToolLooks.begin(), kToolLooks.end(), [&](auto& row) { return tool.key == row.key; });
    if (look == kToolLooks.end()) return;
    tool.icon = look->icon;
    tool.checkable = look->checkable;
}

MenuTool CommandOf(const MenuToolRow& row, const MenuTool* menuTool)
{
    MenuTool tool = ToolOf(row);
    tool.shortcut = row.shortcut;
    Dress(tool, menuTool);
    return tool;
}

const char16_t* ViewToolOf(Band band)
{
    return band == Band::ToolBar ? u"ViewToolbar" : band == Band::StatusBar ? u"ViewStatusbar" : u"";
}

Text PanelKey(int32_t panel)
{
    return u"Panel" + Decimal(panel);
}

} // namespace

size_t MenuModel::KeyHash::operator()(TextView key) const
{
    // Beyond ASCII letters may match that look different: they do not count.
    size_t hash = 14695981039346656037u;
    for (char16_t c : key)
        if (c < 0x80) hash = (hash ^ AsciiLower(c)) * 1099511628211u;
    return hash;
}

bool MenuModel::KeyEqual::operator()(TextView a, TextView b) const
{
    return a == b || EqualsNoCase(a, b);
}

MenuModel::MenuModel()
{
    for (const BandRow& row : kBands) {
        MenuTool& root = roots_[Index(row.band)];
        root.key = row.key;
        root.caption = row.title;
        root.isMenu = true;
    }
    for (const MenuRow& menu : kMenus) {
        Add(Band::MainMenu, menu.menu, MenuOf(menu), menu.before);
        for (const MenuToolRow& row : kMainMenu)
            if (TextView(row.menu) == menu.key) Add(Band::MainMenu, row.menu, CommandOf(row, nullptr));
    }
    for (const ToolBarRow& row : kToolBar) {
        MenuTool tool = ToolOf(row);
        tool.tip = row.tip;
        Dress(tool, Find(Band::MainMenu, row.key));
        Add(Band::ToolBar, {}, std::move(tool));
    }
    for (const PanelRow& row : kStatusBar) Add(Band::StatusBar, {}, PanelOf(row));
    for (Band band : {Band::Popup, Band::TabContext})
        for (const MenuToolRow& row : band == Band::Popup ? kPopup : kTabContext)
            Add(band, {}, CommandOf(row, Find(Band::MainMenu, row.key)));
    for (Band band : {Band::ToolBar, Band::StatusBar}) SetChecked(Band::MainMenu, ViewToolOf(band), true);
}

const MenuTool* MenuModel::Find(Band band, TextView key) const
{
    const Keys& keys = keys_[Index(band)];
    auto found = keys.find(key);
    return found == keys.end() ? nullptr : found->second;
}

const MenuTool& MenuModel::Tool(Band band, TextView key) const
{
    return const_cast<MenuModel*>(this)->Get(band, key);
}

MenuTool& MenuModel::Get(Band band, TextView key)
{
    auto found = keys_[Index(band)].find(key);
    if (found != keys_[Index(band)].end()) return *found->second;
    throw Error(error_number::kBadIndex,
                u"There is no tool \"" + Text(key) + u"\" on the band \"" + Root(band).key + u"\"");
}

template <typename Value, typename NewValue>
void MenuModel::Set(Band band, MenuTool& tool, Value MenuTool::*member, const NewValue& value, uint8_t what)
{
    if (tool.*member == value) return;
    tool.*member = value;
    if (!listener_) return;
    if (!tool.changed) dirty_.push_back({band, &tool});
    tool.changed |= what;
    if (!batches_) Tell();
}

void MenuModel::SetCaption(Band band, TextView key, TextView caption)
{
    Set(band, Get(band, key), &MenuTool::caption, caption, tool_change::kCaption);
}

void MenuModel::SetShortcut(Band band, TextView key, TextView shortcut)
{
    Set(band, Get(band, key), &MenuTool::shortcut, shortcut, tool_change::kShortcut);
}

void MenuModel::SetTip(Band band, TextView key, TextView tip)
{
    Set(band, Get(band, key), &MenuTool::tip, tip, tool_change::kTip);
}

void MenuModel::SetColor(Band band, TextView key, TextView color)
{
    Set(band, Get(band, key), &MenuTool::color, color, tool_change::kColor);
}

void MenuModel::SetEnabled(Band band, TextView key, bool enabled)
{
    Set(band, Get(band, key), &MenuTool::enabled, enabled, tool_change::kEnabled);
}

void MenuModel::SetChecked(Band band, TextView key, bool checked)
{
    Set(band, Get(band, key), &MenuTool::checked, checked, tool_change::kChecked);
}

void MenuModel::SetState(Band band, const MenuTool& tool, bool enabled, bool checked)
{
    auto& own = const_cast<MenuTool&>(tool); // every tool is this model's, which hands them out to be read only
    Set(band, own, &MenuTool::enabled, enabled, tool_change::kEnabled);
    Set(band, own, &MenuTool::checked, checked, tool_change::kChecked);
}

void MenuModel::SetVisible(Band band, TextView key, bool visible)
{
    Set(band, Get(band, key), &MenuTool::visible, visible, tool_change::kVisible);
}

void MenuModel::SetBeginGroup(Band band, TextView key, bool beginGroup)
{
    Set(band, Get(band, key), &MenuTool::beginGroup, beginGroup, tool_change::kGroup);
}

void MenuModel::SetTag(Band band, TextView tag)
{
    roots_[Index(band)].tag = tag;
}

void MenuModel::EndBatch()
{
    if (--batches_ == 0 && !dirty_.empty()) Tell();
}

void MenuModel::Tell()
{
    std::vector<ToolChange> changes;
    changes.reserve(dirty_.size());
    for (auto [band, tool] : dirty_) changes.push_back({band, tool, std::exchange(tool->changed, uint8_t{0})});
    dirty_.clear();
    if (listener_) listener_->ToolsChanged(changes);
}

void MenuModel::TellBand(Band band)
{
    if (listener_) listener_->BandChanged(band);
}

void MenuModel::SetBandVisible(Band band, bool visible)
{
    if (std::exchange(states_[Index(band)].visible, visible) != visible) TellBand(band);
}

void MenuModel::SetIconSize(Band band, int32_t size)
{
    if (std::exchange(states_[Index(band)].iconSize, size) != size) TellBand(band);
}

void MenuModel::SetHotTrack(Band band, bool hotTrack)
{
    if (std::exchange(states_[Index(band)].hotTrack, hotTrack) != hotTrack) TellBand(band);
}

const MenuTool& MenuModel::Add(Band band, TextView menu, MenuTool tool, TextView before)
{
    MenuTool& holder = menu.empty() ? roots_[Index(band)] : Get(band, menu);
    Keys& keys = keys_[Index(band)];
    if (keys.contains(tool.key)) throw Error(error_number::kKeyInUse, u"There is a tool \"" + tool.key + u"\" already");
    tool.menu = &holder;
    auto place = std::find_if(holder.tools.begin(), holder.tools.end(),
                              [&](auto& other) { return !before.empty() && EqualsNoCase(other->key, before); });
    MenuTool& added = **holder.tools.insert(place, std::make_unique<MenuTool>(std::move(tool)));
    keys.emplace(added.key, &added);
    if (listener_) listener_->ToolAdded(band, added);
    return added;
}

void MenuModel::Forget(Band band, const MenuTool& tool)
{
    if (listener_) listener_->ToolRemoved(band, tool);
    if (tool.changed) std::erase_if(dirty_, [&](auto& dirty) { return dirty.second == &tool; });
    for (auto& inner : tool.tools) Forget(band, *inner);
    keys_[Index(band)].erase(tool.key);
}

void MenuModel::Remove(Band band, TextView key)
{
    MenuTool& tool = Get(band, key);
    Forget(band, tool);
    std::erase_if(tool.menu->tools, [&](auto& other) { return other.get() == &tool; });
}

void MenuModel::RemoveBeginning(Band band, TextView menu, TextView prefix)
{
    MenuTool& holder = menu.empty() ? roots_[Index(band)] : Get(band, menu);
    std::erase_if(holder.tools, [&](auto& tool) {
        if (!StartsWithNoCase(tool->key, prefix)) return false;
        Forget(band, *tool);
        return true;
    });
}

void MenuModel::ShowBand(Band band, bool visible)
{
    SetBandVisible(band, visible);
    SetChecked(Band::MainMenu, ViewToolOf(band), visible);
}

void MenuModel::SetPanelText(int32_t panel, TextView text)
{
    if (Text key = PanelKey(panel); Find(Band::StatusBar, key)) SetCaption(Band::StatusBar, key, text);
}

void MenuModel::ShowPanel(int32_t panel, bool visible)
{
    if (Text key = PanelKey(panel); Find(Band::StatusBar, key)) SetVisible(Band::StatusBar, key, visible);
}

void MenuModel::SetTab(int32_t tab, TextView caption, TextView tip, size_t name)
{
    Text key = Decimal(tab);
    MenuBatch batch(*this);
    const Text place = Decimal(static_cast<int64_t>(name));
    if (Find(Band::Taskbar, key)) {
        Get(Band::Taskbar, key).tag = place; // changes with the caption alone
        SetCaption(Band::Taskbar, key, caption);
        SetTip(Band::Taskbar, key, tip);
        return;
    }
    MenuTool tool;
    tool.key = key;
    tool.caption = caption;
    tool.tip = tip;
    tool.tag = place;
    tool.checkable = true;
    Add(Band::Taskbar, {}, std::move(tool));
}

void MenuModel::RemoveTab(int32_t tab)
{
    if (Text key = Decimal(tab); Find(Band::Taskbar, key)) Remove(Band::Taskbar, key);
}

void MenuModel::SetTabColor(int32_t tab, TextView color)
{
    if (Text key = Decimal(tab); Find(Band::Taskbar, key)) SetColor(Band::Taskbar, key, color);
}

void MenuModel::MoveTab(int32_t tab, size_t place)
{
    auto& tabs = roots_[Index(Band::Taskbar)].tools;
    const auto found = std::find_if(tabs.begin(), tabs.end(), [&](auto& tool) { return TabOf(*tool) == tab; });
    if (found == tabs.end() || place >= tabs.size()) return;
    const auto to = tabs.begin() + static_cast<ptrdiff_t>(place);
    if (found < to)
        std::rotate(found, found + 1, to + 1);
    else
        std::rotate(to, found, found + 1);
}

std::vector<int32_t> MenuModel::Tabs() const
{
    std::vector<int32_t> tabs;
    for (auto& tool : Root(Band::Taskbar).tools) tabs.push_back(TabOf(*tool));
    return tabs;
}

void MenuModel::SetActiveTab(int32_t tab)
{
    MenuBatch batch(*this);
    for (auto& tool : Root(Band::Taskbar).tools) SetChecked(Band::Taskbar, tool->key, TabOf(*tool) == tab);
}

int32_t MenuModel::TabOf(const MenuTool& tool)
{
    return ToInt(tool.key);
}

} // namespace nib
