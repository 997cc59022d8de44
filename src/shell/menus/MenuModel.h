#pragma once
// Menus, tool bar, status bar and document tabs as one thing: tools on bands. The logic keeps their state; whoever
// draws them listens here.

#include "base/Text.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
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
    Text tag;     ///< whatever its user remembers with it; of a panel: the menu or command behind it
    Text minText; ///< of a panel: the text that it is made wide enough for
    Text color;   ///< of a panel or tab, by its name or as #RRGGBB; empty for none
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
inline constexpr uint8_t kColor = 128;
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

/// The live state of menus, tool bar, status bar and document tabs. Tools are found by key, whatever its case. Setters
/// that change nothing are free, and what they change reaches the listener once a batch.
class MenuModel {
public:
    /// As designed: all bands of the menu table.
    MenuModel();
    MenuModel(const MenuModel&) = delete;
    MenuModel& operator=(const MenuModel&) = delete;

    /// Not owned; null for none. Hears nothing of what stood before.
    void SetListener(MenuBar* listener) { listener_ = listener; }

    const MenuTool& Root(Band band) const { return roots_[Index(band)]; }
    const BandState& State(Band band) const { return states_[Index(band)]; }
    /// Anywhere on the band, sub-menus included; null when there is none.
    const MenuTool* Find(Band band, TextView key) const;
    /// The same, where a missing tool is a fault of the program: throws error_number::kBadIndex.
    const MenuTool& Tool(Band band, TextView key) const;

    void SetCaption(Band band, TextView key, TextView caption);
    void SetShortcut(Band band, TextView key, TextView shortcut);
    void SetTip(Band band, TextView key, TextView tip);
    void SetColor(Band band, TextView key, TextView color);
    void SetEnabled(Band band, TextView key, bool enabled);
    void SetChecked(Band band, TextView key, bool checked);
    /// Both at once, of a tool of this band that was found already.
    void SetState(Band band, const MenuTool& tool, bool enabled, bool checked);
    void SetVisible(Band band, TextView key, bool visible);
    void SetBeginGroup(Band band, TextView key, bool beginGroup);
    /// Of the band itself.
    void SetTag(Band band, TextView tag);

    void SetBandVisible(Band band, bool visible);
    /// kSmallIcons or kLargeIcons.
    void SetIconSize(Band band, int32_t size);
    void SetHotTrack(Band band, bool hotTrack);

    /// Adds `tool` to the menu `menu` ("" for the band itself) before the tool `before` ("" or unknown: at the end).
    /// Throws error_number::kKeyInUse.
    const MenuTool& Add(Band band, TextView menu, MenuTool tool, TextView before = {});
    void Remove(Band band, TextView key);
    /// All tools of the menu whose key begins with `prefix`.
    void RemoveBeginning(Band band, TextView menu, TextView prefix);

    /// Shows or hides the band and sets the check mark of its command in the View menu.
    void ShowBand(Band band, bool visible);

    // The status bar; panels are numbered from 1.
    void SetPanelText(int32_t panel, TextView text);
    void ShowPanel(int32_t panel, bool visible);

    // The document tabs; `tab` is the DocumentID.
    /// Adds the tab, or changes its caption and tip. The caption may be shortened before `name`, the place of what
    /// tells documents apart.
    void SetTab(int32_t tab, TextView caption, TextView tip, size_t name = 0);
    void SetTabColor(int32_t tab, TextView color);
    void RemoveTab(int32_t tab);
    /// The user has put the tab to another place, from 0.
    void MoveTab(int32_t tab, size_t place);
    /// In the order of the tabs.
    std::vector<int32_t> Tabs() const;
    /// The one tab that is marked as the active one; 0 for none.
    void SetActiveTab(int32_t tab);
    static int32_t TabOf(const MenuTool& tool);

    void BeginBatch() { ++batches_; }
    void EndBatch();

private:
    struct KeyHash {
        size_t operator()(TextView key) const;
    };
    struct KeyEqual {
        bool operator()(TextView a, TextView b) const;
    };
    /// The keys are those of the tools, which do not move.
    using Keys = std::unordered_map<TextView, MenuTool*, KeyHash, KeyEqual>;

    static size_t Index(Band band) { return static_cast<size_t>(band); }
    MenuTool& Get(Band band, TextView key);
    template <typename Value, typename NewValue>
    void Set(Band band, MenuTool& tool, Value MenuTool::*member, const NewValue& value, uint8_t what);
    void Forget(Band band, const MenuTool& tool);
    void Tell();
    void TellBand(Band band);

    std::array<MenuTool, kBandCount> roots_;
    std::array<BandState, kBandCount> states_;
    std::array<Keys, kBandCount> keys_;
    std::vector<std::pair<Band, MenuTool*>> dirty_; ///< tools with changes that the listener has not heard of
    MenuBar* listener_ = nullptr;
    int32_t batches_ = 0;
};

/// Changes while it lives reach the listener together.
class MenuBatch {
public:
    explicit MenuBatch(MenuModel& model) : model_(model) { model_.BeginBatch(); }
    ~MenuBatch() { model_.EndBatch(); }
    MenuBatch(const MenuBatch&) = delete;
    MenuBatch& operator=(const MenuBatch&) = delete;

private:
    MenuModel& model_;
};

} // namespace nib
