#include "app/SessionRooms.h"

#include "persistence/recovery/frmAutoRecover.h"
#include "platform/posix/FileName.h"
#include "shell/Program.h"
#include "shell/frame/frmMain.h"

namespace nib {

namespace {

/// Copies of what a user is at work on are nobody else's business.
constexpr mode_t kUserOnly = 0600;

} // namespace

SessionRooms::SessionRooms(SettingsStore& store, const std::string& backupFolder)
    : store_(store), copies_(backupFolder, kUserOnly)
{
}

void SessionRooms::Plug(Program& program, frmMain& mainWindow, QtPrinting& printing, AutomationRoom& automation)
{
    program_ = &program;
    automation_ = &automation;
    commands_ = std::make_unique<CommandRooms>(program, mainWindow, store_, printing);
    hostConfiguration_ = std::make_unique<HostConfiguration>(program.Services());
    auto offer = [this, &mainWindow](TextView folder, const DynamicArray& names) {
        frmAutoRecover(*recovery_).ShowDialog(folder, names, &mainWindow);
    };
    recovery_ = std::make_unique<modAutoRecover>(
        AutoRecoverPorts{program.Services(), copies_, token_, FromFileName(LocalDataFolder()), offer});
}

void SessionRooms::LoadSettings()
{
    auto ask = [this](TextView text, int32_t flags) { return program_->ShowMessage(text, flags); };
    program_->EditorSettings().LoadSettings({store_, nullptr, program_->DefaultFontName(), ask});
}

bool SessionRooms::LoadHostConfiguration()
{
    if (!hostConfiguration_) return true;
    hostConfiguration_->LoadHostConfiguration();
    return hostConfiguration_->HostConfigLoaded();
}

void SessionRooms::SaveSettings()
{
    program_->EditorSettings().SaveSettings(store_);
}

} // namespace nib
