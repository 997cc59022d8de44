#include "platform/posix/UserFolders.h"

#include <cstdlib>

namespace nib {

std::string HomeFolder()
{
    const char* home = getenv("HOME");
    return home && *home == '/' ? home : "/";
}

std::string UserFolder(const char* variable, const char* below)
{
    const char* folder = getenv(variable);
    return folder && *folder == '/' ? std::string(folder) : HomeFolder() + below;
}

std::string LocalDataFolder()
{
    return UserFolder("XDG_DATA_HOME", "/.local/share");
}

} // namespace nib
