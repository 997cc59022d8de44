#include "shell/CommandState.h"

#include "shell/Program.h"
#include "shell/menus/MenuModel.h"

namespace nib {

void UpdateToolBar(const CommandContext& context)
{
    MenuModel& menus = context.program.Menus();
    MenuBatch batch(menus);
    for (auto table :
         {FileCommandRows(), EditCommandRows(), SearchCommandRows(), ViewCommandRows(), WindowCommandRows()})
        for (const CommandRow& row : table) {
            const MenuTool* onMenu = menus.Find(Band::MainMenu, row.key);
            const MenuTool* onToolBar = menus.Find(Band::ToolBar, row.key);
            if (!onMenu && !onToolBar) continue;
            bool enabled = row.enabled(context);
            bool checked = row.checked && row.checked(context);
            if (onMenu) menus.SetState(Band::MainMenu, *onMenu, enabled, checked);
            if (onToolBar) menus.SetState(Band::ToolBar, *onToolBar, enabled, checked);
        }
    // With a document F1 belongs to the text.
    menus.SetShortcut(Band::MainMenu, u"HelpTopics", context.document ? u"" : u"F1");
}

} // namespace nib
