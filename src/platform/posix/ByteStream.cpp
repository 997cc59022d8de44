#include "platform/posix/ByteStream.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <cerrno>
#include <cstring>
#include <mutex>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nib {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kStep{50};
constexpr size_t kPiece = 64 << 10;
constexpr size_t kMostErrorText = 2000;
// A cable that was pulled sends no word.
constexpr int kIdleSeconds = 20;
constexpr int kProbeSeconds = 10;
constexpr int kProbes = 3;
constexpr unsigned kUnansweredMs = 50'000;

Text SystemWords(int error)
{
    return FromUtf8(strerror(error));
}

/// The events that came, 0 when none did within the time.
short WaitFor(int descriptor, short events, milliseconds wait)
{
    pollfd entry{descriptor, events, 0};
    const int found = poll(&entry, 1, static_cast<int>(wait.count()));
    return found > 0 ? entry.revents : short{0};
}

bool MayComeLater(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

class SocketStream : public ByteStream {
public:
    explicit SocketStream(Descriptor socket) : socket_(std::move(socket)) {}

    size_t Send(std::string_view bytes, milliseconds wait) override
    {
        if (!WaitFor(socket_.Get(), POLLOUT, wait)) return 0;
        const ssize_t sent =
            send(socket_.Get(), bytes.data(), std::min(bytes.size(), kPiece), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent >= 0) return static_cast<size_t>(sent);
        if (MayComeLater(errno)) return 0;
        throw StreamEnded(WhyEnded(errno));
    }
    void Receive(std::string& bytes, milliseconds wait) override
    {
        if (!WaitFor(socket_.Get(), POLLIN, wait)) return;
        const size_t before = bytes.size();
        bytes.resize(before + kPiece);
        const ssize_t came = recv(socket_.Get(), bytes.data() + before, kPiece, MSG_DONTWAIT);
        const int error = errno;
        bytes.resize(before + static_cast<size_t>(std::max<ssize_t>(came, 0)));
        if (came > 0 || (came < 0 && MayComeLater(error))) return;
        throw StreamEnded(WhyEnded(came == 0 ? 0 : error));
    }

protected:
    /// `error` is 0 when the other side has closed.
    virtual Text WhyEnded(int error)
    {
        return error == 0 ? Text(u"the other side has closed the connection") : SystemWords(error);
    }
    void CloseSocket() { socket_.Close(); }

private:
    Descriptor socket_;
};

/// Talks to a child process, which is ended with it.
class CommandStream : public SocketStream {
public:
    CommandStream(Descriptor socket, Descriptor errors, pid_t child, Text name)
        : SocketStream(std::move(socket)), errors_(std::move(errors)), child_(child), name_(std::move(name))
    {
    }
    ~CommandStream() override
    {
        CloseSocket();
        // It leads a session of its own, so that what it has started goes with it.
        for (int i = 0; i < 10 && !Gone(); ++i) std::this_thread::sleep_for(milliseconds(10));
        if (Gone()) return;
        kill(-child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    CommandStream(const CommandStream&) = delete;
    CommandStream& operator=(const CommandStream&) = delete;

protected:
    Text WhyEnded(int) override
    {
        std::string said(kMostErrorText, '\0');
        WaitFor(errors_.Get(), POLLIN, kStep);
        const ssize_t size = read(errors_.Get(), said.data(), said.size());
        said.resize(static_cast<size_t>(std::max<ssize_t>(size, 0)));
        const Text words(Trim(FromFileName(said)));
        return words.empty() ? u"the tunnel " + name_ + u" has ended" : words;
    }

private:
    bool Gone()
    {
        gone_ = gone_ || waitpid(child_, nullptr, WNOHANG) != 0;
        return gone_;
    }

    Descriptor errors_;
    pid_t child_;
    Text name_;
    bool gone_ = false;
};

/// Looks a name up on a thread of its own: the system's resolver cannot be stopped, and may take half a minute.
class Lookup {
public:
    struct Answer {
        std::mutex mutex;
        bool done = false;
        int error = 0;
        addrinfo* list = nullptr;

        ~Answer()
        {
            if (list) freeaddrinfo(list);
        }
    };

    static std::shared_ptr<Answer> Start(std::string address, std::string port)
    {
        auto answer = std::make_shared<Answer>();
        std::thread([answer, address = std::move(address), port = std::move(port)] {
            addrinfo hints{};
            hints.ai_socktype = SOCK_STREAM;
            addrinfo* list = nullptr;
            const int error = getaddrinfo(address.c_str(), port.c_str(), &hints, &list);
            const std::lock_guard lock(answer->mutex);
            answer->error = error;
            answer->list = list;
            answer->done = true;
        }).detach();
        return answer;
    }
    static bool IsDone(Answer& answer)
    {
        const std::lock_guard lock(answer.mutex);
        return answer.done;
    }
};

class Connecting {
public:
    Connecting(const Text& address, const Text& port, milliseconds limit, const WaitStep& step)
        : where_(address + u" port " + port), step_(step), end_(steady_clock::now() + limit)
    {
        const auto answer = Lookup::Start(ToUtf8(address), ToUtf8(port));
        while (!Lookup::IsDone(*answer)) {
            std::this_thread::sleep_for(milliseconds(1));
            if (++naps_ % kStep.count() == 0) Pass();
        }
        if (answer->error != 0)
            throw StreamEnded(u"there is no machine " + address + u" (" + FromUtf8(gai_strerror(answer->error)) + u")");
        Text why;
        for (const addrinfo* at = answer->list; at && !socket_; at = at->ai_next) Try(*at, why);
        if (!socket_) throw StreamEnded(why);
    }

    Descriptor Take() { return std::move(socket_); }

private:
    void Pass()
    {
        if (steady_clock::now() > end_) throw StreamEnded(where_ + u" does not answer");
        if (step_) step_();
    }
    void Try(const addrinfo& at, Text& why)
    {
        Descriptor made(socket(at.ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        int error = !made ? errno : 0;
        if (error == 0 && connect(made.Get(), at.ai_addr, at.ai_addrlen) != 0) error = errno;
        if (error == EINPROGRESS) {
            while (!WaitFor(made.Get(), POLLOUT, kStep)) Pass();
            socklen_t size = sizeof error;
            getsockopt(made.Get(), SOL_SOCKET, SO_ERROR, &error, &size);
        }
        if (error != 0) {
            why = where_ + (error == ECONNREFUSED ? Text(u" refuses connections: no server listens there")
                                                  : u" cannot be reached: " + SystemWords(error));
            return;
        }
        SetUp(made.Get());
        socket_ = std::move(made);
    }
    static void SetUp(int socket)
    {
        const auto set = [socket](int level, int name, auto value) {
            setsockopt(socket, level, name, &value, sizeof value);
        };
        set(SOL_SOCKET, SO_KEEPALIVE, 1);
        set(IPPROTO_TCP, TCP_KEEPIDLE, kIdleSeconds);
        set(IPPROTO_TCP, TCP_KEEPINTVL, kProbeSeconds);
        set(IPPROTO_TCP, TCP_KEEPCNT, kProbes);
        set(IPPROTO_TCP, TCP_USER_TIMEOUT, kUnansweredMs);
        set(IPPROTO_TCP, TCP_NODELAY, 1);
    }

    Text where_;
    const WaitStep& step_;
    steady_clock::time_point end_;
    Descriptor socket_;
    int64_t naps_ = 0;
};

/// What posix_spawn wants to be told.
struct SpawnPlan {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;

    SpawnPlan(int stream, int errors)
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, stream, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, stream, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
        sigset_t none;
        sigset_t usual;
        sigemptyset(&none);
        sigfillset(&usual);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setsigdefault(&attributes, &usual);
        // Without a terminal whoever wants a pass phrase asks on the screen.
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnPlan()
    {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
};

} // namespace

StreamEnded::StreamEnded(Text why) : Error(error_number::kDeviceUnavailable, std::move(why)) {}

std::unique_ptr<ByteStream> ConnectTcp(const Text& address, const Text& port, milliseconds limit, const WaitStep& step)
{
    return std::make_unique<SocketStream>(Connecting(address, port, limit, step).Take());
}

std::unique_ptr<ByteStream> ConnectCommand(const std::vector<Text>& words)
{
    if (words.empty()) throw StreamEnded(u"no command is named for the tunnel");
    int ends[2] = {-1, -1};
    int errors[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) throw StreamEnded(SystemWords(errno));
    Descriptor ours(ends[0]);
    const Descriptor theirs(ends[1]);
    if (pipe2(errors, O_CLOEXEC | O_NONBLOCK) != 0) throw StreamEnded(SystemWords(errno));
    Descriptor said(errors[0]);
    const Descriptor says(errors[1]);

    std::vector<std::string> bytes;
    std::vector<char*> argv;
    bytes.reserve(words.size());
    argv.reserve(words.size() + 1);
    for (const Text& word : words) bytes.push_back(ToFileName(word));
    for (std::string& word : bytes) argv.push_back(word.data());
    argv.push_back(nullptr);
    const SpawnPlan plan(theirs.Get(), says.Get());
    pid_t child = 0;
    if (const int error = posix_spawnp(&child, argv[0], &plan.actions, &plan.attributes, argv.data(), environ))
        throw StreamEnded(u"the tunnel " + words.front() + u" cannot be started: " + SystemWords(error));
    return std::make_unique<CommandStream>(std::move(ours), std::move(said), child, words.front());
}

} // namespace nib
