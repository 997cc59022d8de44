#pragma once
#include "platform/posix/PosixTraceMailbox.h"

#include <functional>
#include <map>
#include <vector>

namespace nib {

/// Which categories to ask of which clients: of all where `who` is empty, else of the client with that number or name.
struct TraceMaskRule {
    std::string who;
    uint32_t mask = 0;
};

struct TraceClient {
    int32_t number = 0;
    uint32_t process = 0;
    std::string name;
    uint32_t mask = 0;
};

/// The later of the rules that fit wins; 0 when none does.
uint32_t MaskFor(const std::vector<TraceMaskRule>& rules, const TraceClient& client);

/// The receiving end of the debug log: owns slot 0 of the block and gives each program that registers a slot.
class TraceViewer {
public:
    /// Throws Error when another viewer runs, or when there is no block or mailbox.
    explicit TraceViewer(std::vector<TraceMaskRule> rules);
    ~TraceViewer();
    TraceViewer(const TraceViewer&) = delete;
    TraceViewer& operator=(const TraceViewer&) = delete;

    using Print = std::function<void(const TraceClient& client, const std::string& text)>;
    /// Takes lines until `stop` becomes readable. A new client is shown as a line of its own.
    void Run(int stop, const Print& print);

    /// The number of the viewer that runs, 0 when none does.
    static uint32_t Running();
    /// What the running viewer knows; throws Error when it does not answer.
    static std::vector<TraceClient> ClientsOfRunning();
    /// Sets the masks of the running viewer's present clients; answers how many.
    static int32_t SetMasksOfRunning(const std::vector<TraceMaskRule>& rules);

private:
    void Take(const TraceMessage& message, const TraceAddress& from, const Print& print);
    TraceClient& Admit(const TraceMessage& message);
    int32_t FreeSlot() const;
    std::string ListClients() const;

    std::vector<TraceMaskRule> rules_;
    TraceBlock block_;
    TraceAddress address_;
    TraceSocket socket_;
    std::map<int32_t, TraceClient> clients_;
};

} // namespace nib
