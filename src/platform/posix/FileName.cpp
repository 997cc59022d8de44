#include "platform/posix/FileName.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include <fcntl.h>
#include <sys/stat.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr char16_t kRawByte = 0xDC00;

bool IsRawByte(char16_t c)
{
    return c >= kRawByte + 0x80 && c <= kRawByte + 0xFF;
}

bool IsMode(const std::string& path, mode_t type)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == type;
}

} // namespace

Text FromFileName(std::string_view bytes)
{
    if (IsValidUtf8(bytes)) return FromUtf8(bytes);
    Text out;
    const auto size = static_cast<int64_t>(bytes.size());
    for (int64_t i = 0; i < size;) {
        const int64_t start = i;
        UChar32 c = 0;
        U8_NEXT(bytes.data(), i, size, c);
        if (c >= 0) {
            out += FromUtf8(bytes.substr(static_cast<size_t>(start), static_cast<size_t>(i - start)));
        } else {
            i = start + 1;
            const auto byte = static_cast<unsigned char>(bytes[static_cast<size_t>(start)]);
            out.push_back(static_cast<char16_t>(kRawByte + byte));
        }
    }
    return out;
}

std::string ToFileName(TextView text)
{
    std::string out;
    out.reserve(text.size());
    size_t plain = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (!IsRawByte(text[i]) || (i > plain && U16_IS_LEAD(text[i - 1]))) continue;
        out += ToUtf8(text.substr(plain, i - plain));
        out.push_back(static_cast<char>(text[i] - kRawByte));
        plain = i + 1;
    }
    return out += ToUtf8(text.substr(plain));
}

std::string FolderOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string LastPart(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string AbsolutePath(const std::string& path)
{
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

int MakeFolders(const std::string& path)
{
    if (path.empty()) return 0;
    if (mkdir(path.c_str(), 0700) == 0) return SyncFolder(FolderOf(path));
    if (errno == ENOENT && FolderOf(path) != path) {
        if (int error = MakeFolders(FolderOf(path)); error != 0) return error;
        if (mkdir(path.c_str(), 0700) == 0) return SyncFolder(FolderOf(path));
    }
    struct stat status {};
    const int error = errno;
    return error == EEXIST && stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? 0 : error;
}

int SyncFolder(const std::string& folder)
{
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // A folder may be written to and not read, and some file systems cannot sync one.
    if (handle < 0) return errno == EACCES ? 0 : errno;
    const int error = fsync(handle) == 0 ? 0 : errno;
    close(handle);
    return error == EINVAL || error == ENOTSUP || error == EROFS ? 0 : error;
}

int RenameNew(const std::string& from, const std::string& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    // Not every file system can do that in one step.
    if (errno != EINVAL && errno != ENOSYS) return errno;
    struct stat status {};
    if (lstat(to.c_str(), &status) == 0) return EEXIST;
    return rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

std::string RandomSuffix()
{
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz234567";
    std::random_device source;
    std::string suffix;
    for (int i = 0; i < 8; ++i) suffix.push_back(kLetters[source() & 31U]);
    return suffix;
}

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
