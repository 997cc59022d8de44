#pragma once
#include "app/CommandRooms.h"
#include "shell/SessionParts.h"

namespace nib {

/// What the rooms add to the life of the program, from the load of the settings to the clean end.
class SessionRooms final : public SessionParts {
public:
    explicit SessionRooms(SettingsStore& store) : store_(store) {}

    /// Once, before the program starts; both outlive the session.
    void Plug(Program& program, frmMain& mainWindow);

    void LoadSettings() override;
    void SaveSettings() override;
    void LoadForms() override { commands_->LoadForms(); }
    void UnloadForms() override { commands_->UnloadForms(); }

private:
    SettingsStore& store_;
    Program* program_ = nullptr;
    std::unique_ptr<CommandRooms> commands_;
};

} // namespace nib
