#pragma once
// The frame and the forms beside it, as the logic sees them.

#include "base/DynamicArray.h"

namespace nib {

class MenuModel;
class Program;
class modAutoRecover;
class mvDocument;

/// Every call is harmless before Load and once the window has gone.
class MainWindow {
public:
    virtual ~MainWindow() = default;
    /// `program` outlives the window's use of it.
    virtual void Load(Program& program) = 0;
    virtual void Show() = 0;
    virtual void Unload() = 0;
    /// Unloads in a moment, once the call that asks for it is over.
    virtual void ArmShutdownTimer() {}
    /// Takes that back as long as the moment has not passed.
    virtual void DisarmShutdownTimer() {}
    /// Hiding leaves everything in it as it is.
    virtual bool Visible() const { return true; }
    virtual void SetVisible(bool) {}
    /// A box or dialog waits for the user.
    virtual bool IsModal() const { return false; }
    virtual void ToForeground() = 0;
    /// Panels are numbered from 1.
    virtual void SetStatusText(int32_t panel, TextView text) = 0;
    virtual void ShowStatusPanel(int32_t panel, bool visible) = 0;
    virtual void SetWaitCursor(bool wait) = 0;
    /// Enabled and checked states of all commands, afresh from the active document.
    virtual void UpdateToolBar() = 0;
    /// Lets waiting messages of the desktop through.
    virtual void ProcessMessages() = 0;
    /// The DocumentID of the active child window; 0 when there is none.
    virtual int32_t ActiveDocument() const = 0;
    virtual MenuModel& Menus() = 0;
    /// Puts the child windows in order: 0 cascade, 1 tile horizontally, 2 tile vertically.
    virtual void Arrange(int32_t mode) = 0;
};

/// What commands want of forms. They live from Load to Unload.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual void Load(Program& program) = 0;
    virtual void Unload() = 0;
    virtual void Find() = 0;
    virtual void FindNext() = 0;
    virtual void Replace() = 0;
    virtual void Results() = 0;
    virtual void Properties(mvDocument& document) = 0;
    virtual void Settings() = 0;
    virtual void About() = 0;
    virtual void HelpTopics() = 0;
    /// Opens with `target`, which takes what was gone to.
    virtual void Goto(Text& target) = 0;
    virtual void Print(mvDocument& document) = 0;
    /// The files of these names, which an earlier session left in the folder.
    virtual void OfferRecovered(modAutoRecover& recovery, TextView folder, const DynamicArray& names) = 0;
};

} // namespace nib
