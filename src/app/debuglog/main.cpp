// nib-debuglog: shows the trace of running editors on the terminal.

#include "diagnostics/Guarded.h"
#include "platform/posix/TraceViewer.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include <signal.h>
#include <sys/signalfd.h>

namespace {

using namespace nib;

constexpr const char* kHelp = "Usage: nib-debuglog [--mask [CLIENT=]MASK]...\n"
                              "       nib-debuglog --list\n"
                              "Shows what running editors write to their debug log, until Ctrl+C.\n"
                              "\n"
                              "  --mask MASK         the categories to show, added up: 1 errors, 2 objects,\n"
                              "                      4 command line, 16 tokens of the lexer; 7 when not given\n"
                              "  --mask CLIENT=MASK  the same for one client, by its number or program name\n"
                              "  --list              the clients of the viewer that runs: number, process, mask, name\n"
                              "  --help, --version   this text, the version\n"
                              "\n"
                              "Where a viewer runs already, --mask sets the masks of its present clients and ends.\n";

struct Request {
    enum class Kind { Show, List, Help, Version, Wrong };
    Kind kind = Kind::Show;
    std::vector<TraceMaskRule> rules;
    std::string complaint;
};

bool ReadRule(std::string_view text, TraceMaskRule& rule)
{
    const size_t equals = text.rfind('=');
    if (equals != std::string_view::npos) rule.who = text.substr(0, equals);
    const std::string_view number = equals == std::string_view::npos ? text : text.substr(equals + 1);
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), rule.mask);
    return error == std::errc{} && end == number.data() + number.size() && (equals != 0);
}

Request Read(int argc, char** argv)
{
    Request request;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        TraceMaskRule rule;
        if (word == "--help") return {Request::Kind::Help, {}, {}};
        if (word == "--version") return {Request::Kind::Version, {}, {}};
        if (word == "--list") {
            request.kind = Request::Kind::List;
        } else if (word == "--mask" && i + 1 < argc && ReadRule(argv[i + 1], rule)) {
            request.rules.push_back(rule);
            ++i;
        } else {
            const bool mask = word == "--mask";
            return {Request::Kind::Wrong, {}, mask ? "--mask needs a number" : "unknown: " + std::string(word)};
        }
    }
    return request;
}

void PrintLine(const TraceClient& client, const std::string& text)
{
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto millis = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    char stamp[16];
    std::tm local{};
    localtime_r(&seconds, &local);
    std::strftime(stamp, sizeof stamp, "%H:%M:%S", &local);
    std::string shown;
    for (const char c : text) shown += static_cast<unsigned char>(c) < ' ' ? ' ' : c; // a terminal obeys these
    std::printf("%s.%03d %d %s[%u] %s\n", stamp, static_cast<int>(millis), client.number, client.name.c_str(),
                client.process, shown.c_str());
    std::fflush(stdout);
}

void Show(const Request& request)
{
    if (!request.rules.empty() && TraceViewer::Running() != 0) {
        std::printf("Masks set for %d clients of the viewer that runs.\n",
                    TraceViewer::SetMasksOfRunning(request.rules));
        return;
    }
    sigset_t ends;
    sigemptyset(&ends);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ends, signal);
    sigprocmask(SIG_BLOCK, &ends, nullptr);
    const Descriptor stop(signalfd(-1, &ends, SFD_CLOEXEC));
    TraceViewer viewer(request.rules.empty() ? std::vector<TraceMaskRule>{{"", 7}} : request.rules);
    viewer.Run(stop.Get(), PrintLine);
}

void List()
{
    for (const TraceClient& client : TraceViewer::ClientsOfRunning())
        std::printf("%d %u %u %s\n", client.number, client.process, client.mask, client.name.c_str());
}

} // namespace

int main(int argc, char** argv)
{
    const Request request = Read(argc, argv);
    switch (request.kind) {
    case Request::Kind::Help: std::fputs(kHelp, stdout); return EXIT_SUCCESS;
    case Request::Kind::Version: std::puts("nib-debuglog " NIB_VERSION); return EXIT_SUCCESS;
    case Request::Kind::Wrong:
        std::fprintf(stderr, "nib-debuglog: %s; see --help\n", request.complaint.c_str());
        return 2;
    case Request::Kind::Show:
    case Request::Kind::List: break;
    }
    const auto failure = FailureOf([&] { request.kind == Request::Kind::List ? List() : Show(request); });
    if (!failure) return EXIT_SUCCESS;
    std::fprintf(stderr, "nib-debuglog: %s\n", ToUtf8(failure->description).c_str());
    return EXIT_FAILURE;
}
