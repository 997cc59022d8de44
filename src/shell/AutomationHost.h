#pragma once
// The program as automation sees it, and the commands that automation adds to its menus.

#include "automation/Application.h"
#include "shell/CommandPorts.h"

#include <set>

namespace nib {

class MenuModel;
class Program;

class AutomationHost final : public AutomationShell, public ExtendedCommands {
public:
    /// All outlive it.
    AutomationHost(Program& program, MenuModel& menus, const CommandPorts& ports, AutomationEvents& events)
        : program_(program), menus_(menus), ports_(ports), events_(events)
    {
    }

    // AutomationShell
    void ShowMainWindow() override;
    bool MainWindowVisible() const override;
    void SetMainWindowVisible(bool visible) override;
    void LoadHostConfiguration() override;
    void AddCommand(TextView name, TextView caption, int32_t shortcut) override;
    void PrintText(mvDocument& document) override;
    void Compile(mvDocument& document) override;
    bool IsModal() const override;
    void EndSoon() override;
    void StayOn() override;

    // ExtendedCommands
    Text Look(TextView key) const override;
    void Raise(mvDocument& document, TextView name) override;

private:
    Program& program_;
    MenuModel& menus_;
    const CommandPorts& ports_;
    AutomationEvents& events_;
    std::set<Text, std::less<>> commands_;
};

} // namespace nib
