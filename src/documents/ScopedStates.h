#pragma once
// States of the program that a document must never leave behind, whatever way it goes.

#include "documents/DocumentServices.h"

namespace nib {

class WaitCursor {
public:
    explicit WaitCursor(DocumentShell& shell) : shell_(shell) { shell_.SetWaitCursor(true); }
    ~WaitCursor() { shell_.SetWaitCursor(false); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    DocumentShell& shell_;
};

/// No auto-save pass runs meanwhile.
class AutoSaveHold {
public:
    explicit AutoSaveHold(DocumentShell& shell) : shell_(shell) { shell_.HoldAutoSave(true); }
    ~AutoSaveHold() { shell_.HoldAutoSave(false); }
    AutoSaveHold(const AutoSaveHold&) = delete;
    AutoSaveHold& operator=(const AutoSaveHold&) = delete;

private:
    DocumentShell& shell_;
};

/// A text in status panel 1 for the length of a host call.
class StatusNote {
public:
    StatusNote(DocumentShell& shell, TextView text) : shell_(shell) { shell_.SetStatusText(1, text); }
    ~StatusNote() { shell_.SetStatusText(1, u""); }
    StatusNote(const StatusNote&) = delete;
    StatusNote& operator=(const StatusNote&) = delete;

private:
    DocumentShell& shell_;
};

} // namespace nib
