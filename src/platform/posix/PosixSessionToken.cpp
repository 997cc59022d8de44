#include "platform/posix/PosixSessionToken.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"
#include "platform/posix/UserFolders.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace nib {

namespace {

constexpr int kAttempts = 64;
constexpr std::string_view kEnding = ".lock";
constexpr size_t kDigits = 8;

std::string LockPath(const std::string& folder, uint32_t number)
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

/// The file that the name leads to now is the one that is open.
bool IsCurrent(int file, const std::string& path)
{
    struct stat open {};
    struct stat named {};
    return fstat(file, &open) == 0 && stat(path.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
           open.st_dev == named.st_dev;
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
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const uint32_t number = pick_();
        if (number != 0 && !isUsed(number) && TakeNumber(number)) return number;
    }
    return 0;
}

bool PosixSessionToken::TakeNumber(uint32_t number)
{
    for (const std::string& folder : folders_) {
        HeldLock lock{LockPath(folder, number), Descriptor()};
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
                       [number](const std::string& folder) { return IsHeld(LockPath(folder, number)); });
}

} // namespace nib
