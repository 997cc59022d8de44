#include "platform/posix/ProcessFamily.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"
#include "platform/posix/SystemError.h"

#include <charconv>
#include <csignal>
#include <filesystem>

#include <unistd.h>

namespace nib {

namespace {

/// Processes that multiply faster than they are found are left after that many rounds.
constexpr int kRounds = 50;

std::string EnvironmentOf(const std::string& process)
{
    std::string text;
    SystemErrorOf([&] { text = ReadWholeFile("/proc/" + process + "/environ").Bytes(); });
    return text;
}

} // namespace

ProcessFamily::ProcessFamily() : mark_("NIB_COMMAND=" + std::to_string(getpid()) + "." + RandomSuffix()) {}

void ProcessFamily::Kill() const
{
    bool found = true;
    for (int round = 0; found && round < kRounds; ++round) {
        found = false;
        std::error_code failed;
        for (std::filesystem::directory_iterator it("/proc", failed), end; !failed && it != end; it.increment(failed)) {
            const std::string name = it->path().filename().string();
            pid_t process = 0;
            const auto [at, error] = std::from_chars(name.data(), name.data() + name.size(), process);
            if (error != std::errc{} || at != name.data() + name.size() || process == getpid()) continue;
            // A process that has ended but was not waited for has no environment any more.
            if (EnvironmentOf(name).find(mark_) == std::string::npos) continue;
            found = kill(process, SIGKILL) == 0 || found;
        }
    }
}

} // namespace nib
