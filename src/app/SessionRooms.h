#pragma once
#include "app/AutomationRoom.h"
#include "app/CommandRooms.h"
#include "documents/DocumentSettings.h"
#include "persistence/recovery/modAutoRecover.h"
#include "platform/posix/PosixFileStates.h"
#include "platform/posix/PosixFileTransfer.h"
#include "platform/posix/PosixSessionToken.h"
#include "shell/SessionParts.h"

namespace nib {

/// What the rooms add to the life of the program, from the load of the settings to the clean end.
class SessionRooms final : public SessionParts {
public:
    SessionRooms(SettingsStore& store, const std::string& backupFolder);

    /// Once, before the program starts.
    void Plug(Program& program, frmMain& mainWindow, QtPrinting& printing, AutomationRoom& automation);

    void LoadSettings() override;
    void SaveSettings() override;
    void ScanRecovery() override { recovery_->CheckAutoRecover(); }
    void EndRecovery() override { recovery_->EndAutoSaveSession(); }
    void AutoSavePass() override { recovery_->AutoSaveDocuments(); }
    int32_t HoldAutoSaveGuard() override { return recovery_->HoldAutoSaveGuard(); }
    void ReleaseAutoSaveGuard(int32_t generation) override { recovery_->ReleaseAutoSaveGuard(generation); }
    bool LoadHostConfiguration() override;
    void ReleaseHostConfiguration() override { hostConfiguration_.reset(); }
    void LoadForms() override { commands_->LoadForms(); }
    void UnloadForms() override { commands_->UnloadForms(); }
    void RaiseQuit() override { automation_->RaiseQuit(); }

private:
    SettingsStore& store_;
    PosixFileTransfer copies_;
    PosixFileStates states_;
    PosixSessionToken token_{PosixSessionToken::UsualFolders()};
    Program* program_ = nullptr;
    AutomationRoom* automation_ = nullptr;
    std::unique_ptr<CommandRooms> commands_;
    std::unique_ptr<modAutoRecover> recovery_;
    std::unique_ptr<HostConfiguration> hostConfiguration_;
};

} // namespace nib
