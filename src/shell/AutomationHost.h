#pragma once
// The program as automation sees it, and the commands that automation adds to its menus.

#include "automation/AutomationShell.h"

#include <set>

namespace nib {

class Program;

class AutomationHost final : public AutomationShell {
public:
    /// All outlive it.
    AutomationHost(Program& program, AutomationEvents& events) : program_(program), events_(events) {}

    // AutomationShell
    void ShowMainWindow() override;
    bool MainWindowVisible() const override;
    void SetMainWindowVisible(bool visible) override;
    void LoadHostConfiguration() override;
    void AddCommand(TextView name, TextView caption, int32_t shortcut) override;
    void PrintText(mvDocument& document) override;
    bool IsModal() const override;
    void EndSoon() override;
    void StayOn() override;

    /// A command that a client added.
    bool Knows(TextView key) const { return commands_.contains(key); }
    /// Tells the client that the user picked it.
    void Raise(TextView key) { events_.Custom(key); }

private:
    Program& program_;
    AutomationEvents& events_;
    std::set<Text, std::less<>> commands_;
};

} // namespace nib
