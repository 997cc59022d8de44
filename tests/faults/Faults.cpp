// Loaded in front of the C library into the program under test: counts the storage calls that it makes on files below
// given folders, and has one of them meet what the driver asked for in the file that both have mapped. One running
// program so meets thousands of faults, one after the other. tests/system/faulty.py is the driver's side.

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr size_t kMostSteps = 4096;
constexpr size_t kMostFiles = 4096;

/// The order is that of the names in faulty.py.
// clang-format off
enum class Kind : uint8_t {
    Open, Read, Write, Sync, Close, Rename, Link, Unlink, MakeFolder, Truncate, Allocate, Mode, Owner,
    GetAttribute, SetAttribute, Status, ReadLink, Access, List
};
// clang-format on
enum class Action : uint32_t { Count, Fail, Short, KillBefore, KillAfter, HaltBefore, HaltAfter, Outside };
/// What the other program does to the target.
enum class Outside : uint32_t { Append, Replace, SameSizeAndTime };

struct Control {
    std::atomic<uint32_t> armed, count, fired, halted;
    uint32_t first;   ///< the number of the call that meets it
    uint32_t lasting; ///< a bit for each kind whose later calls meet it as well
    int32_t error;
    Action action;
    Outside outside;
    char folders[1024]; ///< with ":" between them
    char target[512];
    uint8_t steps[kMostSteps]; ///< the kind of each call
};

Control* const control = [] {
    const char* path = std::getenv("NIB_FAULTS");
    const long file = path ? syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC) : -1;
    if (file < 0) return static_cast<Control*>(nullptr);
    void* shared = mmap(nullptr, sizeof(Control), PROT_READ | PROT_WRITE, MAP_SHARED, static_cast<int>(file), 0);
    syscall(SYS_close, file);
    return shared == MAP_FAILED ? nullptr : static_cast<Control*>(shared);
}();
std::array<std::atomic<bool>, kMostFiles> watchedFiles;

/// Whether it is below one of the folders.
bool At(const char* path)
{
    if (!control || !path) return false;
    const std::string_view name(path);
    for (std::string_view rest(control->folders); !rest.empty();) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        if (name.starts_with(folder)) return true;
        rest.remove_prefix(folder.size() < rest.size() ? folder.size() + 1 : folder.size());
    }
    return false;
}

bool At(int file)
{
    return control && file >= 0 && static_cast<size_t>(file) < kMostFiles && watchedFiles[static_cast<size_t>(file)];
}

/// By the kernel's calls themselves: these do not count.
void WriteFromOutside()
{
    const auto name = reinterpret_cast<long>(control->target);
    constexpr std::string_view kLine = "by another program\n";
    struct stat before {};
    syscall(SYS_newfstatat, AT_FDCWD, name, &before, 0);
    if (control->outside == Outside::Replace) {
        const std::string other = std::string(control->target) + ".other";
        const long file = syscall(SYS_openat, AT_FDCWD, other.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        syscall(SYS_write, file, kLine.data(), kLine.size());
        syscall(SYS_close, file);
        syscall(SYS_rename, other.c_str(), name);
        return;
    }
    const int where = control->outside == Outside::Append ? O_APPEND : 0;
    const long file = syscall(SYS_openat, AT_FDCWD, name, O_WRONLY | where, 0);
    syscall(SYS_write, file, kLine.data(), where ? kLine.size() : 2);
    const timespec times[] = {before.st_atim, before.st_mtim};
    if (!where) syscall(SYS_utimensat, file, 0, times, 0);
    syscall(SYS_close, file);
}

void Halt()
{
    for (control->halted = 1; control->halted;) usleep(50);
}

/// What the next call of the kind meets.
Action Next(Kind kind, bool watched)
{
    if (!watched || !control->armed) return Action::Count;
    const uint32_t number = ++control->count;
    const auto step = static_cast<uint8_t>(kind);
    if (number <= kMostSteps) control->steps[number - 1] = step;
    const bool again = control->fired && (control->lasting >> step & 1);
    if (number != control->first && !again) return Action::Count;
    ++control->fired;
    return control->action;
}

/// `real` makes the call, `part` half of it.
template <typename Real, typename Part>
auto Meet(Kind kind, bool watched, Real real, Part part) -> decltype(real())
{
    const Action action = Next(kind, watched);
    if (action == Action::Count) return real();
    if (action == Action::KillBefore) kill(getpid(), SIGKILL);
    if (action == Action::HaltBefore) Halt();
    if (action == Action::Outside) WriteFromOutside();
    if (action == Action::Short) return part();
    if (action == Action::Fail) {
        if (kind == Kind::Close) real();
        errno = control->error;
        if constexpr (std::is_pointer_v<decltype(real())>)
            return nullptr;
        else
            return kind == Kind::Allocate ? control->error : -1;
    }
    const auto answer = real();
    const int error = errno;
    if (action == Action::KillAfter) kill(getpid(), SIGKILL);
    if (action == Action::HaltAfter) Halt();
    errno = error;
    return answer;
}

template <typename Real>
auto Meet(Kind kind, bool watched, Real real)
{
    return Meet(kind, watched, real, real);
}

size_t Half(size_t size)
{
    return size > 1 ? size / 2 : size;
}

int Opened(int file, bool watched)
{
    if (file < 0 || static_cast<size_t>(file) >= kMostFiles) return file;
    watchedFiles[static_cast<size_t>(file)] = watched;
    return file;
}

} // namespace

#define NEXT(name) reinterpret_cast<decltype(&name)>(dlsym(RTLD_NEXT, #name))
/// A call on a path or an open file, which is the first argument named.
#define MEET(kind, what, name, parameters, arguments)                                                                  \
    int name parameters noexcept(noexcept(name arguments))                                                             \
    {                                                                                                                  \
        static const auto next = NEXT(name);                                                                           \
        return Meet(Kind::kind, At(what), [&] { return next arguments; });                                             \
    }
#define MEET_OPEN(name)                                                                                                \
    int name(const char* path, int flags, ...)                                                                         \
    {                                                                                                                  \
        static const auto next = NEXT(name);                                                                           \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const mode_t mode = va_arg(rest, mode_t);                                                                      \
        va_end(rest);                                                                                                  \
        return Opened(Meet(Kind::Open, At(path), [&] { return next(path, flags, mode); }), At(path));                  \
    }
#define MEET_DATA(kind, name, parameters, whole, half)                                                                 \
    ssize_t name parameters                                                                                            \
    {                                                                                                                  \
        static const auto next = NEXT(name);                                                                           \
        return Meet(                                                                                                   \
            Kind::kind, At(fd), [&] { return next whole; }, [&] { return next half; });                                \
    }

extern "C" {

MEET_OPEN(open)
MEET_OPEN(open64)
MEET_DATA(Read, read, (int fd, void* data, size_t size), (fd, data, size), (fd, data, Half(size)))
MEET_DATA(Read, pread, (int fd, void* data, size_t size, off_t at), (fd, data, size, at), (fd, data, Half(size), at))
MEET_DATA(Write, write, (int fd, const void* data, size_t size), (fd, data, size), (fd, data, Half(size)))
MEET_DATA(Write, pwrite, (int fd, const void* data, size_t size, off_t at), (fd, data, size, at),
          (fd, data, Half(size), at))
MEET(Sync, file, fsync, (int file), (file))
MEET(Sync, file, fdatasync, (int file), (file))
MEET(Truncate, file, ftruncate, (int file, off_t size), (file, size))
MEET(Allocate, file, posix_fallocate, (int file, off_t at, off_t size), (file, at, size))
MEET(Mode, file, fchmod, (int file, mode_t mode), (file, mode))
MEET(Mode, path, chmod, (const char* path, mode_t mode), (path, mode))
MEET(Owner, file, fchown, (int file, uid_t user, gid_t group), (file, user, group))
MEET(Rename, to, rename, (const char* from, const char* to), (from, to))
MEET(Rename, to, renameat2, (int a, const char* from, int b, const char* to, unsigned flags), (a, from, b, to, flags))
MEET(Link, to, link, (const char* from, const char* to), (from, to))
MEET(Link, to, linkat, (int a, const char* from, int b, const char* to, int flags), (a, from, b, to, flags))
MEET(Unlink, path, unlink, (const char* path), (path))
MEET(MakeFolder, path, mkdir, (const char* path, mode_t mode), (path, mode))
MEET(Status, path, stat, (const char* path, struct stat* status), (path, status))
MEET(Status, path, lstat, (const char* path, struct stat* status), (path, status))
MEET(Status, file, fstat, (int file, struct stat* status), (file, status))
MEET(Access, path, faccessat, (int folder, const char* path, int mode, int flags), (folder, path, mode, flags))

int close(int file)
{
    static const auto next = NEXT(close);
    const bool watched = At(file);
    Opened(file, {});
    return Meet(Kind::Close, watched, [&] { return next(file); });
}

ssize_t readlink(const char* path, char* buffer, size_t size) noexcept
{
    static const auto next = NEXT(readlink);
    return Meet(Kind::ReadLink, At(path), [&] { return next(path, buffer, size); });
}

ssize_t fgetxattr(int file, const char* name, void* value, size_t size) noexcept
{
    static const auto next = NEXT(fgetxattr);
    return Meet(Kind::GetAttribute, At(file), [&] { return next(file, name, value, size); });
}

ssize_t flistxattr(int file, char* list, size_t size) noexcept
{
    static const auto next = NEXT(flistxattr);
    return Meet(Kind::GetAttribute, At(file), [&] { return next(file, list, size); });
}

int fsetxattr(int file, const char* name, const void* value, size_t size, int flags) noexcept
{
    static const auto next = NEXT(fsetxattr);
    return Meet(Kind::SetAttribute, At(file), [&] { return next(file, name, value, size, flags); });
}

DIR* opendir(const char* path)
{
    static const auto next = NEXT(opendir);
    return Meet(Kind::List, At(path), [&] { return next(path); });
}

} // extern "C"
