// nib-lsp: what the editor knows of programs, for any editor that speaks the language server protocol on the standard
// input and output.

#include "app/lsp/CheckAccount.h"
#include "diagnostics/Guarded.h"
#include "language/Dialects.h"
#include "language/server/FrameReader.h"
#include "language/server/Server.h"
#include "platform/posix/FileName.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <poll.h>
#include <unistd.h>

namespace {

using namespace nib;
using namespace std::chrono_literals;

constexpr const char* kHelp = "Usage: nib-lsp [OPTION...]\n"
                              "       nib-lsp [OPTION...] --check ACCOUNT [FILE [ITEM...]]\n"
                              "A language server for programs in MultiValue BASIC. Editors start it and speak the\n"
                              "Language Server Protocol with it, on its standard input and output.\n"
                              "\n"
                              "  --check         prints what is wrong in the programs of the account in a folder, a\n"
                              "                  line for each finding, and ends with 1 if there is any\n"
                              "  --dialect NAME  the dialect of programs, unless the client names one\n"
                              "  --log FILE      writes what goes to and fro to the end of FILE\n"
                              "  --stdio         does nothing: some editors give it to every server\n"
                              "  --help          shows this text\n"
                              "  --version       shows the version\n";

constexpr int kUsageFault = 2;
constexpr int kLookForClient = 1000; ///< milliseconds
constexpr auto kLastWork = 2s;       ///< for what is under way at the end
constexpr size_t kPiece = 1 << 16;

struct Options {
    enum class Kind { Serve, Check, Help, Version, Wrong };
    Kind kind = Kind::Serve;
    Text dialect = u"common";
    std::string log{};
    std::vector<std::string> checked{}; ///< account, file and items
};

Options Read(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        const bool hasValue = i + 1 < argc;
        if (word == "--help") return {Options::Kind::Help};
        if (word == "--version") return {Options::Kind::Version};
        if (word == "--stdio") continue;
        if (word == "--dialect" && hasValue) {
            options.dialect = FromFileName(argv[++i]);
        } else if (word == "--log" && hasValue) {
            options.log = argv[++i];
        } else if (word == "--check" && hasValue) {
            options.kind = Options::Kind::Check;
            options.checked.assign(argv + i + 1, argv + argc);
            break;
        } else {
            return {Options::Kind::Wrong};
        }
    }
    return options;
}

/// The messages, a line each, for who looks for the reason of something.
class MessageLog {
public:
    explicit MessageLog(const std::string& file)
    {
        if (!file.empty()) file_.open(file, std::ios::app);
    }
    void Write(std::string_view way, std::string_view message)
    {
        if (!file_.is_open()) return;
        const std::lock_guard lock(mutex_);
        file_ << way << ' ' << message.substr(0, kLongest) << std::endl;
    }

private:
    static constexpr size_t kLongest = 2000;
    std::mutex mutex_;
    std::ofstream file_;
};

/// False when nobody reads it any more.
bool WriteOut(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t size = write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (size >= 0) {
            bytes.remove_prefix(static_cast<size_t>(size));
            continue;
        }
        if (errno != EINTR && errno != EAGAIN) return false;
        pollfd output{STDOUT_FILENO, POLLOUT, 0};
        poll(&output, 1, kLookForClient);
    }
    return true;
}

bool IsAlive(int64_t process)
{
    return kill(static_cast<pid_t>(process), 0) == 0 || errno != ESRCH;
}

/// The reading end of the conversation.
class Reader {
public:
    Reader(Outbox& out, RequestQueue& queue, MessageLog& log) : out_(out), queue_(queue), log_(log) {}

    /// A process that is none here lives in a space of its own; then the end of the input alone tells of its own.
    void Watch(int64_t process)
    {
        if (process > 0 && IsAlive(process)) client_ = process;
    }
    /// Until the client says that it is over, or has gone. True for the former.
    bool Run()
    {
        for (;;) {
            pollfd input{STDIN_FILENO, POLLIN, 0};
            const int ready = poll(&input, 1, kLookForClient);
            if (client_ > 0 && !IsAlive(client_)) return false;
            if (ready > 0 && !Take()) return exited_;
        }
    }

private:
    bool Take()
    {
        char piece[kPiece];
        const ssize_t size = read(STDIN_FILENO, piece, sizeof piece);
        if (size < 0 && (errno == EINTR || errno == EAGAIN)) return true;
        if (size <= 0) return false;
        frames_.Add({piece, static_cast<size_t>(size)});
        const auto failure = FailureOf([&] {
            while (std::optional<std::string> body = frames_.Next()) {
                log_.Write("<", *body);
                Pass(ReadMessage(*body), body->size());
            }
        });
        // Where the next message would begin is not known any more.
        if (failure) Pass({Message::Kind::Refused, nullptr, ToUtf8(failure->description), nullptr, failure->number}, 0);
        return !failure && !exited_;
    }
    void Pass(Message message, size_t bytes)
    {
        if (message.method == "exit") {
            exited_ = true;
        } else if (message.method == "$/cancelRequest") {
            const Json id = Member(message.params, "id");
            if (queue_.Cancel(id)) out_.Refuse(id, lsp_error::kCancelled, "The request was cancelled.");
        } else if (!exited_) {
            queue_.Put(std::move(message), bytes);
        }
    }

    Outbox& out_;
    RequestQueue& queue_;
    MessageLog& log_;
    FrameReader frames_;
    std::atomic<int64_t> client_ = 0;
    bool exited_ = false;
};

ServerStart StartOf(const Options& options, std::function<void(int64_t)> clientIs)
{
    return {options.dialect, UserFolder("XDG_CONFIG_HOME", "/.config") + "/Orlin/dialects",
            UserFolder("XDG_CACHE_HOME", "/.cache") + "/Orlin/Nib/index", std::move(clientIs)};
}

int Serve(const Options& options)
{
    std::signal(SIGPIPE, SIG_IGN);
    MessageLog log(options.log);
    bool gone = false;
    Outbox out([&](std::string_view bytes) { // one thread at a time
        log.Write(">", bytes.substr(bytes.find('{')));
        gone = gone || !WriteOut(bytes);
    });
    RequestQueue queue;
    Reader reader(out, queue, log);
    Server server(out, queue, StartOf(options, [&](int64_t process) { reader.Watch(process); }));

    std::atomic<bool> ended = false;
    std::thread worker([&] {
        server.Run();
        ended = true;
    });
    const bool asked = reader.Run();
    queue.Close();
    for (auto waited = 0ms; !ended && waited < kLastWork; waited += 10ms) std::this_thread::sleep_for(10ms);
    // Nobody listens to a longer answer; what is on disk stays whole.
    if (!ended) std::_Exit(EXIT_FAILURE);
    worker.join();
    return asked && server.WasShutDown() ? EXIT_SUCCESS : EXIT_FAILURE;
}

int CheckPrograms(const Options& options)
{
    const ServerStart start = StartOf(options, {});
    Dialects dialects;
    dialects.AddFolder(start.dialectFolder);
    CheckOptions check{dialects.Find(options.dialect), {}, options.checked.front(), {}, {}};
    if (!check.dialect) throw Error(error_number::kStorage, u"There is no dialect " + options.dialect + u".");
    if (options.checked.size() > 1) check.file = FromFileName(options.checked[1]);
    for (size_t i = 2; i < options.checked.size(); ++i) check.items.push_back(FromFileName(options.checked[i]));
    return CheckAccount(check) > 0 ? 1 : EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    const Options options = Read(argc, argv);
    switch (options.kind) {
    case Options::Kind::Help: std::fputs(kHelp, stdout); return EXIT_SUCCESS;
    case Options::Kind::Version: std::puts("nib-lsp " NIB_VERSION); return EXIT_SUCCESS;
    case Options::Kind::Wrong:
        std::fputs("nib-lsp: an option is not known, or lacks its value; see --help\n", stderr);
        return kUsageFault;
    case Options::Kind::Check:
    case Options::Kind::Serve: break;
    }
    int code = options.kind == Options::Kind::Check ? kUsageFault : EXIT_FAILURE;
    const auto failure =
        FailureOf([&] { code = options.kind == Options::Kind::Check ? CheckPrograms(options) : Serve(options); });
    if (failure) std::fprintf(stderr, "nib-lsp: %s\n", ToUtf8(failure->description).c_str());
    return code;
}
