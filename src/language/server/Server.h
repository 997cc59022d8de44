#pragma once
#include "language/server/FindingsTold.h"
#include "language/server/RequestQueue.h"
#include "language/server/Workspace.h"

namespace nib {

/// What is set when the program is started; the client may say otherwise.
struct ServerStart {
    Text dialect;
    std::string dialectFolder; ///< of the user's own
    std::string indexFolder;
    std::function<void(int64_t process)> clientIs; ///< the process that the client says it is
};

/// The language server on its own thread: takes messages one by one, and uses the time between them.
class Server {
public:
    Server(Outbox& out, RequestQueue& queue, ServerStart start);

    /// Until nothing more comes.
    void Run();
    void Handle(const Message& message);
    /// A piece of what can wait. Answers when the next one should follow.
    RequestQueue::Time Idle(RequestQueue::Time now);
    bool WasShutDown() const { return phase_ == Phase::Ended; }

private:
    struct Method;
    static const Method kMethods[];
    enum class Phase : uint8_t { New, Running, Ended };

    Json Answer(const Message& message);
    // Requests and notices, which answer null
    Json Initialize(const Json& params);
    Json Shutdown(const Json& params);
    Json Ignore(const Json& params);
    Json DidOpen(const Json& params);
    Json DidChange(const Json& params);
    Json DidClose(const Json& params);
    Json DidChangeFolders(const Json& params);
    Json DidChangeConfiguration(const Json& params);
    void ReadTraits(const Json& capabilities);
    void TellProgress();
    void ReadAccounts();

    Outbox& out_;
    RequestQueue& queue_;
    ServerStart start_;
    Phase phase_ = Phase::New;
    Workspace workspace_;
    FindingsTold findings_;
    bool telling_ = false; ///< progress has begun and not ended
    int64_t percentage_ = 0;
};

} // namespace nib
