#include "platform/posix/Process.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nib {

namespace {

/// Processes that multiply faster than they are found are left after that many rounds.
constexpr int kRounds = 50;
/// Between two looks at whether the program has ended or shall be stopped.
constexpr std::chrono::milliseconds kLook{50};
/// Between two looks as long as the end is near: the output is closed.
constexpr std::chrono::milliseconds kShortLook{1};
/// Taken at one go at most, so that a flood of output does not keep the looks from coming.
constexpr int kReadsAtOnce = 64;

std::string EnvironmentOf(const std::string& process)
{
    std::string text;
    SystemErrorOf([&] { text = ReadWholeFile("/proc/" + process + "/environ").Bytes(); });
    return text;
}

using Clock = std::chrono::steady_clock;

struct SpawnSetup {
    SpawnSetup()
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
    ~SpawnSetup()
    {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

std::string SearchPath(const std::string& first)
{
    const char* path = getenv("PATH");
    const std::string rest = path ? path : "/usr/local/bin:/usr/bin:/bin";
    const bool known = (":" + rest + ":").find(":" + first + ":") != std::string::npos;
    return first.empty() || known ? rest : first + ":" + rest;
}

[[noreturn]] void Refuse(const std::string& program, int error)
{
    throw SystemFailure(FromFileName(program) + u" cannot be run", error);
}

/// The path of the program; what holds a slash is taken from the folder it will run in.
std::string FindProgram(const ProcessRequest& request)
{
    const std::string& name = request.words.front();
    std::vector<std::string> candidates;
    if (name.starts_with('/')) {
        candidates.push_back(name);
    } else if (name.find('/') != std::string::npos) {
        candidates.push_back(request.folder + "/" + name);
    } else {
        const std::string path = SearchPath(request.firstInPath);
        for (size_t at = 0; at <= path.size();) {
            const size_t end = std::min(path.find(':', at), path.size());
            if (end > at) candidates.push_back(path.substr(at, end - at) + "/" + name);
            at = end + 1;
        }
    }
    int error = ENOENT;
    for (const std::string& candidate : candidates) {
        struct stat status {};
        if (stat(candidate.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (access(candidate.c_str(), X_OK) == 0) return candidate;
        error = EACCES;
    }
    Refuse(name, error);
}

std::vector<std::string> Environment(const ProcessRequest& request, const ProcessFamily& family)
{
    std::vector<std::string> variables{"PATH=" + SearchPath(request.firstInPath), family.Mark()};
    for (char** variable = environ; *variable; ++variable)
        if (!std::string_view(*variable).starts_with("PATH=")) variables.emplace_back(*variable);
    return variables;
}

std::vector<char*> Pointers(std::vector<std::string>& strings)
{
    std::vector<char*> pointers;
    pointers.reserve(strings.size() + 1);
    for (std::string& string : strings) pointers.push_back(string.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// The input as a file without a name, so that a program that does not read it blocks nobody.
Descriptor InputFile(std::string_view input)
{
    Descriptor file(memfd_create("input", MFD_CLOEXEC));
    const int error = file ? WriteAll(file.Get(), input) : errno;
    if (error != 0) throw SystemFailure(u"The command's input cannot be passed on", error);
    return file;
}

pid_t Start(const ProcessRequest& request, const ProcessFamily& family, int input, int output)
{
    const std::string program = FindProgram(request);
    std::vector<std::string> words = request.words;
    std::vector<std::string> variables = Environment(request, family);
    SpawnSetup setup;
    posix_spawn_file_actions_addchdir_np(&setup.actions, request.folder.c_str());
    posix_spawn_file_actions_adddup2(&setup.actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&setup.actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&setup.actions, output, STDERR_FILENO);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&setup.attributes, &none);
    posix_spawnattr_setsigdefault(&setup.attributes, &all);
    posix_spawnattr_setpgroup(&setup.attributes, 0);
    posix_spawnattr_setflags(&setup.attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    pid_t child = 0;
    const int error = posix_spawn(&child, program.c_str(), &setup.actions, &setup.attributes, Pointers(words).data(),
                                  Pointers(variables).data());
    if (error != 0) Refuse(request.words.front(), error);
    return child;
}

/// A started program; killed with all that it started when it is still there at the end.
class Child {
public:
    Child(pid_t pid, const ProcessFamily& family) : pid_(pid), family_(family) {}
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child()
    {
        if (ended_) return;
        kill(-pid_, SIGKILL);
        family_.Kill();
        int status = 0;
        while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
    }

    bool HasEnded(ProcessResult& result)
    {
        int status = 0;
        if (!ended_ && waitpid(pid_, &status, WNOHANG) == pid_) {
            ended_ = true;
            result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
            result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        }
        return ended_;
    }

private:
    pid_t pid_;
    const ProcessFamily& family_;
    bool ended_ = false;
};

/// Takes what is there now. False at the end of the output.
bool Take(int file, const ProcessRequest& request, ProcessResult& result)
{
    char buffer[65536];
    for (int i = 0; i < kReadsAtOnce; ++i) {
        const ssize_t n = read(file, buffer, sizeof buffer);
        if (n == 0) return false;
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return errno == EAGAIN;
        const size_t room = request.outputLimit - result.output.size();
        result.cut = static_cast<size_t>(n) > room;
        result.output.append(buffer, std::min(static_cast<size_t>(n), room));
        if (result.cut) return false;
    }
    return true;
}

/// Calls on the caller at even distances, however often it is asked.
class Looks {
public:
    explicit Looks(const std::function<bool()>& goOn) : goOn_(goOn) {}
    bool GoOn()
    {
        const auto now = Clock::now();
        if (!goOn_ || now < next_) return true;
        next_ = now + kLook;
        return goOn_();
    }

private:
    const std::function<bool()>& goOn_;
    Clock::time_point next_ = Clock::now() + kLook;
};

} // namespace

const std::string& LoginName()
{
    // The answer can come from far over a network.
    static const std::string name = [] {
        const passwd* user = getpwuid(geteuid());
        return user ? std::string(user->pw_name) : std::to_string(geteuid());
    }();
    return name;
}

const std::string& MachineName()
{
    static const std::string name = [] {
        char host[HOST_NAME_MAX + 1] = {};
        return std::string(gethostname(host, sizeof host - 1) == 0 && *host ? host : "localhost");
    }();
    return name;
}

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

ProcessResult RunProcess(const ProcessRequest& request)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw SystemFailure(u"No program can be run", errno);
    Descriptor ours(ends[0]);
    Descriptor theirs(ends[1]);
    fcntl(ours.Get(), F_SETFL, O_NONBLOCK);
    Descriptor input = InputFile(request.input);
    const ProcessFamily family;
    Child child(Start(request, family, input.Get(), theirs.Get()), family);
    theirs.Close();

    ProcessResult result;
    const auto deadline = Clock::now() + request.timeLimit;
    Looks looks(request.goOn);
    bool open = true;
    size_t told = 0;
    for (;;) {
        const bool ended = child.HasEnded(result);
        if (open) open = Take(ours.Get(), request, result);
        if (request.printed && told < result.output.size())
            request.printed(std::string_view(result.output).substr(std::exchange(told, result.output.size())));
        if (ended || result.cut) return result;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0) {
            result.timedOut = true;
            return result;
        }
        if (!looks.GoOn()) {
            result.cancelled = true;
            return result;
        }
        if (open) {
            pollfd wait{ours.Get(), POLLIN, 0};
            poll(&wait, 1, static_cast<int>(std::min(left, kLook).count()));
        } else {
            std::this_thread::sleep_for(kShortLook);
        }
    }
}

} // namespace nib
