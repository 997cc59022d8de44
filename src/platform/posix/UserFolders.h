#pragma once
#include <string>

namespace nib {

/// $HOME, "/" when it is no path from the root.
std::string HomeFolder();
/// The folder that an environment variable names; `below` (with its slash) the home folder unless that is an absolute
/// path.
std::string UserFolder(const char* variable, const char* below);
/// Data of the user on this machine: $XDG_DATA_HOME or ~/.local/share.
std::string LocalDataFolder();

} // namespace nib
