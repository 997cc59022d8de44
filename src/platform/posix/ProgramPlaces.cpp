#include "platform/posix/ProgramPlaces.h"

#include "platform/posix/FileName.h"

#include <sys/stat.h>

namespace nib {

namespace {

bool IsMode(const std::string& path, mode_t type)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == type;
}

} // namespace

ProgramPlaces ProgramPlaces::Around(TextView programFolder)
{
    const std::string folder = ToFileName(programFolder);
    ProgramPlaces places{Text(programFolder), Text(programFolder), Text(programFolder)};
    const std::string prefix = FolderOf(folder);
    const std::string data = prefix + "/share/nibpad71";
    if (IsMode(folder + "/accounts", S_IFDIR) || !IsMode(data, S_IFDIR)) return places;
    places.data = FromFileName(data);
    const std::string site = (prefix == "/usr" ? "" : prefix) + "/etc/nibpad71";
    // Without a switch file no folder must come into being in etc.
    places.settings = IsMode(site + "/isolation.ini", S_IFREG) ? FromFileName(site) : places.data;
    return places;
}

} // namespace nib
