#pragma once
// The layout of the menus as data. A row names a command of the command table; a caption, shortcut or check mark that
// stands on several bands is written once, in the menus.

#include "shell/menus/MenuModel.h"

namespace nib {

struct BandRow {
    Band band;
    const char16_t* key;
    const char16_t* title = u"";
};

inline constexpr BandRow kBands[kBandCount] = {
    {Band::MainMenu, u"MainMenu"}, {Band::ToolBar, u"ToolBar"},   {Band::StatusBar, u"StatusBar"},
    {Band::Popup, u"Popup"},       {Band::TabContext, u"tabctx"}, {Band::Taskbar, u"Taskbar", u"Document list"},
};

/// A menu of the menu bar, or a sub-menu.
struct MenuRow {
    const char16_t* key;
    const char16_t* caption;
    const char16_t* menu = u""; ///< key of the menu that it stands in; "" for the menu bar
    bool beginsGroup = false;
    const char16_t* before = u""; ///< key of the tool that it stands above; "" for the end of the menu
};

extern const std::span<const MenuRow> kMenus;

/// A tool of a menu, of the menu bar or as a pop-up. An empty caption: the one of the menu tool with the same key.
struct MenuToolRow {
    const char16_t* menu; ///< key of the menu; "" for the band itself
    const char16_t* key;
    const char16_t* caption;
    const char16_t* shortcut = u"";
    bool beginsGroup = false;
};

extern const std::span<const MenuToolRow> kMainMenu;
extern const std::span<const MenuToolRow> kPopup;
extern const std::span<const MenuToolRow> kTabContext;

struct ToolBarRow {
    const char16_t* key;
    const char16_t* tip;
    bool beginsGroup = false;
    const char16_t* caption = u""; ///< empty: as in the menus
};

extern const std::span<const ToolBarRow> kToolBar;

struct PanelRow {
    const char16_t* key;
    const char16_t* text; ///< at the start; of the panels of fixed width, what they must have room for
    const char16_t* tip;
    bool fixedWidth;
    bool shown;                  ///< at the start
    const char16_t* opens = u""; ///< a menu or command of the menu bar
};

extern const std::span<const PanelRow> kStatusBar;

/// What a tool is on every band.
struct ToolLookRow {
    const char16_t* key;
    const char16_t* icon;
    bool checkable = false;
};

extern const std::span<const ToolLookRow> kToolLooks;

} // namespace nib
