#include "platform/posix/FileLocks.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"
#include "platform/posix/Process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace nib {

namespace {

constexpr std::chrono::milliseconds kHoldPause{1};
constexpr int kLockAttempts = 8;
constexpr std::chrono::milliseconds kLockPause{2};
constexpr size_t kLongestName = 200;
constexpr int kNumberAttempts = 64;
constexpr std::string_view kEnding = ".lock";
constexpr size_t kDigits = 8;

/// Where the file really is, so that all names of it lead to one lock.
std::string RealFolder(const std::string& path)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(AbsolutePath(path), error);
    return FolderOf(error ? AbsolutePath(path) : real.string());
}

std::string LockFolder(const std::string& accountFolder)
{
    return accountFolder + "/.locks";
}

std::string LockFileName(const std::string& name)
{
    if (name.size() <= kLongestName) return name;
    // FNV-1a. Two names that meet in it merely lock each other out.
    uint64_t hash = 14695981039346656037ULL;
    for (char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    return name.substr(0, kLongestName) + "%%" + std::to_string(hash);
}

/// The user, the machine and the process, a line each.
std::string OwnName()
{
    return LoginName() + "\n" + MachineName() + "\n" + std::to_string(getpid()) + "\n";
}

Text DescribeHolder(int file)
{
    char buffer[512];
    const ssize_t n = pread(file, buffer, sizeof buffer, 0);
    const std::string_view name(buffer, static_cast<size_t>(n > 0 ? n : 0));
    if (name == OwnName()) return u"this program";
    const std::vector<Text> lines = Split(FromUtf8(name), u'\n');
    if (lines.size() < 3) return u"another process";
    return lines[0] + u" on " + lines[1] + u" (process " + lines[2] + u")";
}

[[noreturn]] void RefuseUpdate(TextView display, int error)
{
    throw Error(error_number::kNoUpdate, Text(display) + u" cannot be locked: " + SystemText(error));
}

/// The file that the name leads to now is the one that is open.
bool IsCurrent(int file, const std::string& path, int folder = AT_FDCWD)
{
    struct stat open {};
    struct stat named {};
    return fstat(file, &open) == 0 && fstatat(folder, path.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           open.st_ino == named.st_ino && open.st_dev == named.st_dev;
}

Descriptor OpenLockFile(int folder, const std::string& name, TextView display)
{
    for (int attempt = 0; attempt < kLockAttempts; ++attempt) {
        // In a sticky folder the kernel refuses to open another user's file when it may be created.
        Descriptor file(openat(folder, name.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
        if (file) return file;
        if (errno != ENOENT) RefuseUpdate(display, errno);
        file = Descriptor(openat(folder, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
        if (file) {
            fchmod(file.Get(), 0666); // Whatever the umask says, other users take the lock next.
            return file;
        }
        if (errno != EEXIST) RefuseUpdate(display, errno);
    }
    RefuseUpdate(display, EAGAIN);
}

Descriptor OpenLockFolder(const std::string& folder)
{
    return Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

Descriptor MakeLockFolder(const std::string& folder, TextView display)
{
    const bool made = mkdir(folder.c_str(), 0777) == 0;
    if (!made && errno != EEXIST) RefuseUpdate(display, errno);
    Descriptor handle = OpenLockFolder(folder);
    if (!handle || (made && fchmod(handle.Get(), 01777) != 0)) RefuseUpdate(display, errno);
    return handle;
}

std::string NumberPath(const std::string& folder, uint32_t number)
{
    char name[kDigits + 1];
    std::snprintf(name, sizeof name, "%08X", number);
    return folder + "/" + name + std::string(kEnding);
}

bool IsLockName(std::string_view name)
{
    return name.size() == kDigits + kEnding.size() && name.ends_with(kEnding) &&
           name.substr(0, kDigits).find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

bool IsHeld(const std::string& path)
{
    // Shared: two that ask at once must not take each other for the holder.
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    return file && flock(file.Get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

/// Files of copies that could not tidy up. Removed under a lock, which tells a holder that comes in between.
void RemoveLeftovers(const std::string& folder)
{
    std::vector<FolderEntry> entries;
    ListFolder(folder, entries);
    for (const FolderEntry& entry : entries) {
        if (entry.isFolder || !IsLockName(entry.name)) continue;
        const std::string path = folder + "/" + entry.name;
        Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
        if (file && flock(file.Get(), LOCK_SH | LOCK_NB) == 0 && IsCurrent(file.Get(), path)) unlink(path.c_str());
    }
}

enum class Answer { Taken, HeldElsewhere, NoLocksHere };

Answer TakeLock(const std::string& path, Descriptor& file)
{
    file = Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file) return Answer::NoLocksHere;
    if (flock(file.Get(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? Answer::HeldElsewhere : Answer::NoLocksHere;
    // Removed as a leftover between our opening and locking it.
    if (!IsCurrent(file.Get(), path)) return Answer::HeldElsewhere;
    // Files of the login session that carry this bit are spared when old ones are swept out.
    fchmod(file.Get(), S_ISVTX | 0600);
    return Answer::Taken;
}

} // namespace

FileHold::FileHold(const std::string& path, std::chrono::milliseconds patience)
    : folder_(open(RealFolder(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (folder_ && flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) break;
        if (std::chrono::steady_clock::now() >= end) break;
        std::this_thread::sleep_for(kHoldPause);
    }
}

ItemLock::ItemLock(const std::string& accountFolder, const std::string& name, TextView display)
    : folder_(MakeLockFolder(LockFolder(accountFolder), display)), name_(LockFileName(name))
{
    for (int attempt = 0; attempt < kLockAttempts; ++attempt) {
        Descriptor handle = OpenLockFile(folder_.Get(), name_, display);
        if (flock(handle.Get(), LOCK_EX | LOCK_NB) == 0) {
            // The last holder may have removed the file between our opening and locking it.
            if (!IsCurrent(handle.Get(), name_, folder_.Get())) continue;
            const std::string owner = OwnName();
            if (ftruncate(handle.Get(), 0) == 0) WriteAll(handle.Get(), owner);
            file_ = std::move(handle);
            return;
        }
        if (errno != EWOULDBLOCK) RefuseUpdate(display, errno);
        // Somebody who only asks for the holder has it for a moment.
        std::this_thread::sleep_for(kLockPause);
    }
    throw Error(error_number::kLocked, Text(display) + u" is locked by another user or process.");
}

ItemLock::~ItemLock()
{
    // Removed while it is held, so that nobody else's lock can be hit: where somebody removed it by hand, the name is
    // that of another lock by now. Another user's file stays behind, empty.
    if (!file_ || !IsCurrent(file_.Get(), name_, folder_.Get())) return;
    if (unlinkat(folder_.Get(), name_.c_str(), 0) != 0 && ftruncate(file_.Get(), 0) != 0) return;
}

Text ItemLock::Holder(const std::string& accountFolder, const std::string& name)
{
    const Descriptor folder = OpenLockFolder(LockFolder(accountFolder));
    const std::string file = LockFileName(name);
    Descriptor handle(openat(folder.Get(), file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!folder || !handle || flock(handle.Get(), LOCK_SH | LOCK_NB) == 0) return {};
    return DescribeHolder(handle.Get());
}

PosixSessionToken::PosixSessionToken(std::vector<std::string> folders, std::function<uint32_t()> pick)
    : folders_(std::move(folders)), pick_(std::move(pick))
{
}

PosixSessionToken::~PosixSessionToken()
{
    Release();
}

std::vector<std::string> PosixSessionToken::UsualFolders()
{
    std::vector<std::string> folders{LocalDataFolder() + "/Orlin/Nib/Sessions"};
    const char* session = getenv("XDG_RUNTIME_DIR");
    if (session && *session == '/') folders.push_back(std::string(session) + "/Orlin-Nib");
    return folders;
}

uint32_t PosixSessionToken::RandomNumber()
{
    std::random_device source;
    return source();
}

uint32_t PosixSessionToken::Take(const std::function<bool(uint32_t)>& isUsed)
{
    for (const std::string& folder : folders_) {
        if (MakeFolders(folder) == 0) RemoveLeftovers(folder);
    }
    for (int attempt = 0; attempt < kNumberAttempts; ++attempt) {
        const uint32_t number = pick_();
        if (number != 0 && !isUsed(number) && TakeNumber(number)) return number;
    }
    return 0;
}

bool PosixSessionToken::TakeNumber(uint32_t number)
{
    for (const std::string& folder : folders_) {
        HeldLock lock{NumberPath(folder, number), Descriptor()};
        const Answer answer = TakeLock(lock.path, lock.file);
        if (answer == Answer::Taken) locks_.push_back(std::move(lock));
        if (answer != Answer::HeldElsewhere) continue;
        Release();
        return false;
    }
    return !locks_.empty();
}

void PosixSessionToken::Release()
{
    // Removed while it is held, so that no other holder's file can be hit.
    for (const HeldLock& lock : locks_) unlink(lock.path.c_str());
    locks_.clear();
}

bool PosixSessionToken::IsAlive(uint32_t number)
{
    return std::any_of(folders_.begin(), folders_.end(),
                       [number](const std::string& folder) { return IsHeld(NumberPath(folder, number)); });
}

} // namespace nib
