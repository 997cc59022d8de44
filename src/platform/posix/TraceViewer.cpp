#include "platform/posix/TraceViewer.h"

#include "base/Error.h"

#include <cerrno>
#include <charconv>
#include <sstream>

#include <poll.h>
#include <signal.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr const char* kBlockName = "qkDebugLog";
constexpr int32_t kSlots = 252;
constexpr int32_t kViewerSlot = 0;
constexpr int kAnswerTime = 1000; ///< milliseconds
constexpr int kAtOnce = 256;

bool Lives(uint32_t process)
{
    return process != 0 && (kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM);
}

TraceBlock& Opened(TraceBlock& block)
{
    if (!block.Open(kBlockName, kSlots)) throw Error(error_number::kStorage, u"There is no shared memory for the log.");
    return block;
}

TraceAddress AddressOf(uint32_t viewer)
{
    const auto address = ViewerAddress(viewer);
    if (!address) throw Error(error_number::kStorage, u"There is no private folder for the mailbox of the log.");
    return *address;
}

} // namespace

uint32_t MaskFor(const std::vector<TraceMaskRule>& rules, const TraceClient& client)
{
    uint32_t mask = 0;
    for (const TraceMaskRule& rule : rules) {
        if (rule.who.empty() || rule.who == client.name || rule.who == std::to_string(client.number)) mask = rule.mask;
    }
    return mask;
}

uint32_t TraceViewer::Running()
{
    TraceBlock block;
    uint32_t viewer = 0;
    return Opened(block).Read(kViewerSlot, viewer) && Lives(viewer) ? viewer : 0;
}

TraceViewer::TraceViewer(std::vector<TraceMaskRule> rules)
    : rules_(std::move(rules)), address_(AddressOf(static_cast<uint32_t>(getpid()))),
      socket_(TraceSocket::ForViewer(address_))
{
    Opened(block_);
    uint32_t other = 0;
    if (block_.Read(kViewerSlot, other) && Lives(other)) {
        unlink(address_.name.sun_path);
        throw Error(error_number::kStorage, u"A viewer runs already, as process " + Decimal(other) + u".");
    }
    for (int32_t slot = 1; slot < block_.Used(); ++slot) block_.Write(slot, 0);
    block_.Write(kViewerSlot, static_cast<uint32_t>(getpid()));
}

TraceViewer::~TraceViewer()
{
    for (int32_t slot = 0; slot < block_.Used(); ++slot) block_.Write(slot, 0);
    unlink(address_.name.sun_path);
}

void TraceViewer::Run(int stop, const Print& print)
{
    for (;;) {
        pollfd waits[] = {{socket_.Get(), POLLIN, 0}, {stop, POLLIN, 0}};
        if (poll(waits, 2, -1) < 0 && errno != EINTR) return;
        TraceAddress from;
        // Not for ever: clients that never pause must not keep the viewer from its end.
        for (int i = 0; i < kAtOnce; ++i) {
            const auto message = socket_.Receive(0, &from);
            if (!message) break;
            Take(*message, from, print);
        }
        if (waits[1].revents) return;
    }
}

void TraceViewer::Take(const TraceMessage& message, const TraceAddress& from, const Print& print)
{
    const auto self = static_cast<uint32_t>(getpid());
    switch (message.kind) {
    case trace_message::kRegister: {
        const TraceClient& client = Admit(message);
        socket_.Send({trace_message::kRegister, static_cast<uint32_t>(client.number), self, {}}, from, 0);
        if (client.number > 0) print(client, "begins");
        break;
    }
    case trace_message::kClients: socket_.Send({trace_message::kClients, 0, self, ListClients()}, from, 0); break;
    case trace_message::kLine: {
        const auto known = clients_.find(static_cast<int32_t>(message.client));
        print(known != clients_.end() ? known->second : TraceClient{0, message.process, "?", 0}, message.text);
        break;
    }
    default: break; // not ours
    }
}

TraceClient& TraceViewer::Admit(const TraceMessage& message)
{
    int32_t slot = 0;
    for (const auto& [number, client] : clients_) {
        if (client.process == message.process) slot = number;
    }
    if (slot == 0) slot = FreeSlot();
    TraceClient& client = clients_[slot];
    client = {slot, message.process, message.text, 0};
    client.mask = MaskFor(rules_, client);
    if (slot > 0) block_.Write(slot, client.mask);
    return client;
}

/// 0 when all are taken.
int32_t TraceViewer::FreeSlot() const
{
    for (int32_t slot = 1; slot < kSlots; ++slot) {
        const auto taken = clients_.find(slot);
        if (taken == clients_.end() || !Lives(taken->second.process)) return slot;
    }
    return 0;
}

std::string TraceViewer::ListClients() const
{
    std::ostringstream list;
    for (const auto& [number, client] : clients_) {
        uint32_t mask = 0;
        if (number > 0 && Lives(client.process) && block_.Read(number, mask))
            list << number << ' ' << client.process << ' ' << mask << ' ' << client.name << '\n';
    }
    return list.str();
}

std::vector<TraceClient> TraceViewer::ClientsOfRunning()
{
    const uint32_t viewer = Running();
    if (viewer == 0) throw Error(error_number::kStorage, u"No viewer runs.");
    const TraceSocket socket = TraceSocket::ForClient();
    std::optional<TraceMessage> answer;
    if (socket.Send({trace_message::kClients, 0, static_cast<uint32_t>(getpid()), {}}, AddressOf(viewer),
                    kAnswerTime) == 0) {
        answer = socket.Receive(kAnswerTime);
    }
    if (!answer) throw Error(error_number::kStorage, u"The viewer, process " + Decimal(viewer) + u", does not answer.");
    std::vector<TraceClient> clients;
    std::istringstream lines(answer->text);
    TraceClient client;
    while (lines >> client.number >> client.process >> client.mask && lines.get() == ' ' &&
           std::getline(lines, client.name)) {
        clients.push_back(client);
    }
    return clients;
}

int32_t TraceViewer::SetMasksOfRunning(const std::vector<TraceMaskRule>& rules)
{
    TraceBlock block;
    Opened(block);
    int32_t set = 0;
    for (const TraceClient& client : ClientsOfRunning()) {
        for (const TraceMaskRule& rule : rules) {
            if (!rule.who.empty() && rule.who != client.name && rule.who != std::to_string(client.number)) continue;
            block.Write(client.number, rule.mask);
            ++set;
            break;
        }
    }
    return set;
}

} // namespace nib
