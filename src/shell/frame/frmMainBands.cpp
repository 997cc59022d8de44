// Menus, tool bar, status bar and document tabs of the frame; part of frmMain.

#include "documents/mvDocument.h"
#include "shell/Program.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"

namespace nib {

void frmMain::LoadBands()
{
    dispatcher_ = std::make_unique<MenuDispatcher>(*program_, menuBar_);
    menuBar_.SetEvents(dispatcher_.get());
    menus_.ShowBand(Band::StatusBar, placement_.statusbarVisible);
    menus_.ShowBand(Band::ToolBar, placement_.toolbarVisible);
    const MvEdit& settings = program_->EditorSettings();
    menus_.SetIconSize(Band::ToolBar, settings.ToolbarLargeIcons ? kLargeIcons : kSmallIcons);
    menus_.SetHotTrack(Band::ToolBar, settings.ToolbarHotTrack);
}

void frmMain::SetStatusText(int32_t panel, TextView text)
{
    menus_.SetPanelText(panel, text);
}

void frmMain::ShowStatusPanel(int32_t panel, bool visible)
{
    menus_.ShowPanel(panel, visible);
}

void frmMain::UpdateToolBar()
{
    if (loaded_ && !unloading_) dispatcher_->UpdateToolBar();
}

void frmMain::ShowTab(frmDocument& form)
{
    mvDocument* document = form.ViewObject();
    if (!document) return;
    Text name = document->DisplayName();
    if (document->IsDirty()) name.insert(0, 1, u'*');
    menus_.SetTab(document->DocumentID(), name, form.Title());
}

bool frmMain::Run(TextView key)
{
    return dispatcher_->Run(key);
}

bool frmMain::CanRun(TextView key) const
{
    return StateOfCommand(key, dispatcher_->Context()).enabled;
}

void frmMain::ShowContextMenu(HitKind kind, QPoint at)
{
    dispatcher_->ShowContextMenu(kind, ScreenPoint{at.x(), at.y()});
}

} // namespace nib
