#include "shell/WindowOperations.h"

namespace nib {

void CloseWindow(mvDocument& document)
{
    if (document.View()) document.View()->QueryUnload();
}

void ToggleWindowState(clsDocView& view, int32_t state)
{
    view.SetWindowState(view.WindowState() == state ? window_state::kNormal : state);
}

} // namespace nib
