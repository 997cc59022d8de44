#include "platform/posix/PosixFileGuard.h"

#include "platform/posix/Descriptor.h"
#include "platform/posix/FileName.h"

#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

namespace nib {

namespace {

constexpr std::chrono::milliseconds kPause{1};

class FolderHold : public FileGuard::Hold {
public:
    explicit FolderHold(Descriptor folder) : folder_(std::move(folder)) {}

private:
    Descriptor folder_;
};

/// Where the file really is, so that all names of it lead to one lock.
std::string RealFolder(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(AbsolutePath(path), error);
    return FolderOf(error ? AbsolutePath(path) : real.string());
}

} // namespace

std::unique_ptr<FileGuard::Hold> PosixFileGuard::HoldFile(TextView path)
{
    Descriptor folder(open(RealFolder(ToFileName(path)).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto end = std::chrono::steady_clock::now() + patience_;
    while (folder && flock(folder.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) break;
        if (std::chrono::steady_clock::now() >= end) break;
        std::this_thread::sleep_for(kPause);
    }
    return std::make_unique<FolderHold>(std::move(folder));
}

} // namespace nib
