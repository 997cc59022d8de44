#include "platform/posix/FileHold.h"

#include "platform/posix/FileName.h"

#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

namespace nib {

namespace {

constexpr std::chrono::milliseconds kPause{1};

/// Where the file really is, so that all names of it lead to one lock.
std::string RealFolder(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(AbsolutePath(path), error);
    return FolderOf(error ? AbsolutePath(path) : real.string());
}

} // namespace

FileHold::FileHold(const std::string& path, std::chrono::milliseconds patience)
    : folder_(open(RealFolder(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (folder_ && flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) break;
        if (std::chrono::steady_clock::now() >= end) break;
        std::this_thread::sleep_for(kPause);
    }
}

} // namespace nib
