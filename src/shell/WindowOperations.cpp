#include "shell/WindowOperations.h"

namespace nib {

void CloseWindow(mvDocument& document)
{
    if (!document.View() || document.View()->QueryUnload(0)) return;
    // The question has usually closed it already.
    if (document.View()) document.View()->Unload();
}

void ToggleWindowState(clsDocView& view, int32_t state)
{
    view.SetWindowState(view.WindowState() == state ? window_state::kNormal : state);
}

} // namespace nib
