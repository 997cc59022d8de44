#include "app/SessionRooms.h"

#include "shell/Program.h"
#include "shell/frmMain.h"

namespace nib {

void SessionRooms::Plug(Program& program, frmMain& mainWindow)
{
    program_ = &program;
    commands_ = std::make_unique<CommandRooms>(program, mainWindow, store_);
}

void SessionRooms::LoadSettings()
{
    auto ask = [this](TextView text, int32_t flags) { return program_->ShowMessage(text, flags); };
    program_->EditorSettings().LoadSettings({store_, nullptr, program_->DefaultFontName(), ask});
}

void SessionRooms::SaveSettings()
{
    program_->EditorSettings().SaveSettings(store_);
}

} // namespace nib
