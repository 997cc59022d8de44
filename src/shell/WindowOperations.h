#pragma once
#include "documents/mvDocument.h"

namespace nib {

/// States of a document's window.
namespace window_state {
inline constexpr int32_t kNormal = 0;
inline constexpr int32_t kMinimized = 1;
inline constexpr int32_t kMaximized = 2;
} // namespace window_state

/// As the window's own close button does, with its question.
void CloseWindow(mvDocument& document);
/// The window leaves `state` when it is in it, else takes it on.
void ToggleWindowState(clsDocView& view, int32_t state);

} // namespace nib
