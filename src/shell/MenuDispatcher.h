#pragma once
// Where every click on a menu, tool or tab arrives, and where menus are made ready before they open.

#include "shell/Commands.h"
#include "shell/Program.h"
#include "shell/menus/MenuModel.h"

namespace nib {

class MenuDispatcher final : public MenuEvents {
public:
    /// All outlive it. `bar` opens the pop-ups.
    MenuDispatcher(Program& program, MenuBar& bar) : program_(program), menus_(program.Menus()), bar_(bar) {}

    // MenuEvents
    void ToolClick(Band band, const MenuTool& tool) override;
    void MenuOpening(const MenuTool& menu) override;
    void TabActivate(int32_t tab) override;
    void TabClose(int32_t tab) override;
    void TabContextMenu(int32_t tab, ScreenPoint at) override;

    /// By key, as a keyboard filter or another form calls it.
    bool Run(TextView key);
    void UpdateToolBar();
    /// The context menu of the active document; at the mouse when no point is given.
    void ShowContextMenu(HitKind kind, std::optional<ScreenPoint> at = {});
    void BuildRecentMenu();
    void BuildWindowMenu();
    /// The active document, through the main window's ActiveDocument.
    CommandContext Context() const;

private:
    const MenuTool& AddEntry(TextView menu, TextView prefix, int32_t number, TextView name, TextView before);
    void NameOwnCharset();
    bool IsSharedName(TextView name) const;
    void PrepareContextMenu(HitKind kind);
    void PrepareTabMenu(int32_t state, bool active);

    Program& program_;
    MenuModel& menus_;
    MenuBar& bar_;
};

} // namespace nib
