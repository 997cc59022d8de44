#pragma once
#include "base/Text.h"

namespace nib {

/// The frame, as the logic sees it. Every call is harmless once the window has gone.
class MainWindow {
public:
    virtual ~MainWindow() = default;
    virtual void Load() = 0;
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
    virtual void SetTitle(TextView title) = 0;
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
};

} // namespace nib
