#include "shell/AutomationHost.h"

#include "base/Error.h"
#include "shell/Commands.h"
#include "shell/Program.h"
#include "shell/menus/MenuModel.h"
#include "shell/menus/modSSKeys.h"

namespace nib {

namespace {

[[noreturn]] void Missing(TextView what)
{
    throw Error{error_number::kNotImplemented, Text(what) + u" is not part of this program."};
}

} // namespace

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
    menus_.Add(Band::MainMenu, u"Tools", std::move(tool));
    commands_.emplace(name);
}

void AutomationHost::PrintText(mvDocument& document)
{
    if (!ports_.printer) Missing(u"Printing");
    ports_.printer->PrintText(document);
}

void AutomationHost::Compile(mvDocument& document)
{
    if (!ports_.compiler) Missing(u"Compiling");
    ports_.compiler->Compile(document);
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

Text AutomationHost::Look(TextView key) const
{
    return commands_.contains(key) ? Text(key) : Text();
}

void AutomationHost::Raise(mvDocument&, TextView name)
{
    events_.Custom(name);
}

} // namespace nib
