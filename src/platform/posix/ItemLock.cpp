#include "platform/posix/ItemLock.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"
#include "platform/posix/SystemError.h"

#include <cerrno>
#include <chrono>
#include <climits>
#include <thread>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace nib {

namespace {

constexpr int kAttempts = 8;
constexpr std::chrono::milliseconds kPause{2};
constexpr size_t kLongestName = 200;

std::string LockFolder(const std::string& accountFolder)
{
    return accountFolder + "/.locks";
}

std::string LockPath(const std::string& accountFolder, const std::string& name)
{
    const std::string path = LockFolder(accountFolder) + "/";
    if (name.size() <= kLongestName) return path + name;
    // FNV-1a. Two names that meet in it merely lock each other out.
    uint64_t hash = 14695981039346656037ULL;
    for (char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    return path + name.substr(0, kLongestName) + "%%" + std::to_string(hash);
}

/// The user, the machine and the process, a line each.
std::string OwnName()
{
    char host[HOST_NAME_MAX + 1] = {};
    gethostname(host, sizeof host - 1);
    const passwd* user = getpwuid(geteuid());
    return (user ? std::string(user->pw_name) : std::to_string(geteuid())) + "\n" + host + "\n" +
           std::to_string(getpid()) + "\n";
}

Text DescribeHolder(int file)
{
    char buffer[512];
    const ssize_t n = pread(file, buffer, sizeof buffer, 0);
    const std::vector<Text> lines = Split(FromUtf8({buffer, static_cast<size_t>(n > 0 ? n : 0)}), u'\n');
    if (lines.size() < 3) return u"another process";
    return lines[0] + u" on " + lines[1] + u" (process " + lines[2] + u")";
}

[[noreturn]] void RefuseUpdate(TextView display, int error)
{
    throw Error(error_number::kNoUpdate, Text(display) + u" cannot be locked: " + SystemText(error));
}

/// The file that the name leads to now is the one that is open.
bool IsCurrent(int file, const std::string& path)
{
    struct stat open {};
    struct stat named {};
    return fstat(file, &open) == 0 && stat(path.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
           open.st_dev == named.st_dev;
}

Descriptor OpenLockFile(const std::string& path, TextView display)
{
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        // In a sticky folder the kernel refuses to open another user's file when it may be created.
        Descriptor file(open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
        if (file) return file;
        if (errno != ENOENT) RefuseUpdate(display, errno);
        file = Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
        if (file) {
            fchmod(file.Get(), 0666); // Whatever the umask says, other users take the lock next.
            return file;
        }
        if (errno != EEXIST) RefuseUpdate(display, errno);
    }
    RefuseUpdate(display, EAGAIN);
}

void MakeLockFolder(const std::string& folder, TextView display)
{
    if (mkdir(folder.c_str(), 0777) == 0) {
        if (chmod(folder.c_str(), 01777) != 0) RefuseUpdate(display, errno);
    } else if (errno != EEXIST) {
        RefuseUpdate(display, errno);
    }
}

} // namespace

ItemLock::ItemLock(const std::string& accountFolder, const std::string& name, TextView display)
    : path_(LockPath(accountFolder, name))
{
    MakeLockFolder(LockFolder(accountFolder), display);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        Descriptor handle = OpenLockFile(path_, display);
        if (flock(handle.Get(), LOCK_EX | LOCK_NB) == 0) {
            // The last holder may have removed the file between our opening and locking it.
            if (!IsCurrent(handle.Get(), path_)) continue;
            const std::string owner = OwnName();
            if (ftruncate(handle.Get(), 0) == 0) WriteAll(handle.Get(), owner);
            file_ = std::move(handle);
            return;
        }
        if (errno != EWOULDBLOCK) RefuseUpdate(display, errno);
        // Somebody who only asks for the holder has it for a moment.
        std::this_thread::sleep_for(kPause);
    }
    throw Error(error_number::kLocked, Text(display) + u" is locked by another user or process.");
}

ItemLock::~ItemLock()
{
    // Removed while it is held, so that nobody else's lock can be hit. Another user's file stays behind, empty.
    if (file_ && unlink(path_.c_str()) != 0 && ftruncate(file_.Get(), 0) != 0) return;
}

Text ItemLock::Holder(const std::string& accountFolder, const std::string& name)
{
    const std::string path = LockPath(accountFolder, name);
    Descriptor handle(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!handle || flock(handle.Get(), LOCK_SH | LOCK_NB) == 0) return {};
    return DescribeHolder(handle.Get());
}

} // namespace nib
