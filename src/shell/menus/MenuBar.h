#pragma once
// Menus, tool bar, status bar and document tabs as one thing: tools on bands. The logic keeps their state; whoever
// draws them listens here.

#include "base/Text.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace nib {

enum class Band : int32_t { MainMenu, ToolBar, StatusBar, Popup, TabContext, Taskbar };
inline constexpr int32_t kBandCount = 6;

/// A command, menu, panel or tab on a band. A menu holds further tools; so does the band itself, as the root of its
/// tools.
struct MenuTool {
    Text key;
    Text caption; ///< "&" marks the access key
    Text shortcut;
    Text tip;
    Text icon;    ///< name of an icon, empty for none
    Text tag;     ///< whatever its user remembers with it
    Text minText; ///< of a panel: the text that it is made wide enough for
    bool isMenu = false;
    bool checkable = false;
    bool checked = false;
    bool enabled = true;
    bool visible = true;
    bool beginGroup = false;  ///< a separator above
    uint8_t changed = 0;      ///< MenuModel's: what its listener has not heard of
    MenuTool* menu = nullptr; ///< the one that holds it; null for the root of a band
    std::vector<std::unique_ptr<MenuTool>> tools;
};

/// What changed of a tool, as bits.
namespace tool_change {
inline constexpr uint8_t kCaption = 1;
inline constexpr uint8_t kShortcut = 2;
inline constexpr uint8_t kEnabled = 4;
inline constexpr uint8_t kChecked = 8;
inline constexpr uint8_t kVisible = 16;
inline constexpr uint8_t kGroup = 32;
inline constexpr uint8_t kTip = 64;
} // namespace tool_change

/// Icon sizes of the tool bar.
inline constexpr int32_t kSmallIcons = -1;
inline constexpr int32_t kLargeIcons = -2;

struct BandState {
    bool visible = true;
    int32_t iconSize = kSmallIcons;
    bool hotTrack = true; ///< buttons stand out under the mouse only
};

struct ToolChange {
    Band band;
    const MenuTool* tool;
    uint8_t what; ///< bits of tool_change
};

/// A place on the screen.
struct ScreenPoint {
    int32_t x = 0;
    int32_t y = 0;
};

/// Draws the tools. Told only of what really changed.
class MenuBar {
public:
    virtual ~MenuBar() = default;
    /// One call for all that a batch changed.
    virtual void ToolsChanged(std::span<const ToolChange> changes) = 0;
    virtual void ToolAdded(Band band, const MenuTool& tool) = 0;
    /// Called while the tool still lives.
    virtual void ToolRemoved(Band band, const MenuTool& tool) = 0;
    virtual void BandChanged(Band band) = 0;
    /// Opens a pop-up band at the point, or where the mouse is; does not wait for it to close.
    virtual void PopUp(Band band, std::optional<ScreenPoint> at) = 0;
};

/// What the user does with the tools. Tabs are named by the number that they were added with.
class MenuEvents {
public:
    virtual ~MenuEvents() = default;
    /// A checkable tool has its new state already.
    virtual void ToolClick(Band band, const MenuTool& tool) = 0;
    /// Before the menu is shown.
    virtual void MenuOpening(const MenuTool& menu) = 0;
    virtual void TabActivate(int32_t tab) = 0;
    virtual void TabClose(int32_t tab) = 0;
    virtual void TabContextMenu(int32_t tab, ScreenPoint at) = 0;
};

} // namespace nib
