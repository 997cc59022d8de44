#include "shell/AutomationHost.h"

#include "base/Error.h"
#include "shell/Commands.h"
#include "shell/Program.h"
#include "shell/menus/FrameKeys.h"
#include "shell/menus/MenuModel.h"

namespace nib {

void AutomationHost::ShowMainWindow()
{
    program_.Window().SetVisible(true);
    program_.Window().ToForeground();
}

bool AutomationHost::MainWindowVisible() const
{
    return program_.Window().Visible();
}

void AutomationHost::SetMainWindowVisible(bool visible)
{
    program_.Window().SetVisible(visible);
}

void AutomationHost::LoadHostConfiguration()
{
    program_.LoadHostConfiguration();
}

void AutomationHost::AddCommand(TextView name, TextView caption, int32_t shortcut)
{
    if (IsReservedKey(name)) throw Error{error_number::kKeyInUse, Text(name) + u" is a command of the program."};
    MenuTool tool;
    tool.key = name;
    tool.caption = caption;
    tool.shortcut = ShortcutName(shortcut);
    program_.Menus().Add(Band::MainMenu, u"Tools", std::move(tool));
    commands_.emplace(name);
}

void AutomationHost::PrintText(mvDocument& document)
{
    program_.Forms().Print(document);
}

bool AutomationHost::IsModal() const
{
    return program_.Window().IsModal();
}

void AutomationHost::EndSoon()
{
    program_.Window().ArmShutdownTimer();
}

void AutomationHost::StayOn()
{
    program_.Window().DisarmShutdownTimer();
}

} // namespace nib
