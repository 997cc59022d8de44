#pragma once
// What the automation objects want of the rooms above them.

#include "base/Text.h"

namespace nib {

class mvDocument;

/// The program around the automation objects.
class AutomationShell {
public:
    virtual ~AutomationShell() = default;
    /// Shows the main window and brings it to the front.
    virtual void ShowMainWindow() = 0;
    virtual bool MainWindowVisible() const = 0;
    virtual void SetMainWindowVisible(bool visible) = 0;
    virtual void LoadHostConfiguration() = 0;
    /// A tool in the Tools menu. Throws error_number::kKeyInUse.
    virtual void AddCommand(TextView name, TextView caption, int32_t shortcut) = 0;
    virtual void PrintText(mvDocument& document) = 0;
    /// A box or dialog waits for the user.
    virtual bool IsModal() const = 0;
    /// Ends the program in a moment; StayOn takes that back.
    virtual void EndSoon() = 0;
    virtual void StayOn() = 0;
};

/// What clients are told without having asked.
class AutomationEvents {
public:
    virtual ~AutomationEvents() = default;
    virtual void Quit() = 0;
    virtual void Custom(TextView name) = 0;
    virtual void DocumentClose(int32_t documentId) = 0;
};

} // namespace nib
