#pragma once

namespace nib {

/// Mends what the desktop's colours and the style make of each other, so that it can be seen. For the start, before
/// there is a window.
void MendLooks();

} // namespace nib
