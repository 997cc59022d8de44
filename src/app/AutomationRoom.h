#pragma once
#include "automation/DBusServer.h"
#include "shell/AutomationHost.h"
#include "shell/Program.h"
#include "shell/frame/frmMain.h"

namespace nib {

/// Automation, tied to the program. Lives no longer than either.
class AutomationRoom {
public:
    AutomationRoom(Program& program, frmMain& mainWindow, StartMode mode)
        : program_(program), host_(program, mainWindow.Menus(), mainWindow.Ports(), server_),
          application_(program.Services(), host_, server_, mode == StartMode::Automation)
    {
        mainWindow.Ports().extended = &host_;
    }
    ~AutomationRoom() { server_.Stop(); }
    AutomationRoom(const AutomationRoom&) = delete;
    AutomationRoom& operator=(const AutomationRoom&) = delete;

    /// Before Main, so that nobody starts a second copy for a client while this one comes up.
    void Serve() { server_.Serve(application_, program_.Log()); }
    /// After Main.
    void Ready() { server_.Ready(); }
    void RaiseQuit() { application_.RaiseQuit(); }

private:
    Program& program_;
    DBusServer server_;
    AutomationHost host_;
    Application application_;
};

} // namespace nib
