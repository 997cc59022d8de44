#include "platform/posix/ProcessFamily.h"

#include "platform/posix/Descriptor.h"
#include "platform/posix/FileName.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

/// Processes that multiply faster than they are found are left after that many rounds.
constexpr int kRounds = 50;

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

std::string EnvironmentOf(pid_t process)
{
    std::string text;
    const Descriptor file(open(("/proc/" + std::to_string(process) + "/environ").c_str(), O_RDONLY | O_CLOEXEC));
    char buffer[16384];
    while (file) {
        const ssize_t n = read(file.Get(), buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        text.append(buffer, static_cast<size_t>(n));
    }
    return text;
}

} // namespace

ProcessFamily::ProcessFamily() : mark_("NIB_COMMAND=" + std::to_string(getpid()) + "." + RandomSuffix()) {}

void ProcessFamily::Kill() const
{
    bool found = true;
    for (int round = 0; found && round < kRounds; ++round) {
        found = false;
        const std::unique_ptr<DIR, CloseFolder> folder(opendir("/proc"));
        if (!folder) return;
        while (const dirent* entry = readdir(folder.get())) {
            pid_t process = 0;
            const char* end = entry->d_name + std::strlen(entry->d_name);
            const auto [at, error] = std::from_chars(entry->d_name, end, process);
            if (error != std::errc{} || at != end || process == getpid()) continue;
            // A process that has ended but was not waited for has no environment any more.
            if (EnvironmentOf(process).find(mark_) == std::string::npos) continue;
            found = kill(process, SIGKILL) == 0 || found;
        }
    }
}

} // namespace nib
