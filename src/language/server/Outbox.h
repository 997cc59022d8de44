#pragma once
#include "language/server/Message.h"

#include <functional>
#include <mutex>

namespace nib {

/// What goes to the client, whole messages from any thread.
class Outbox {
public:
    using Sink = std::function<void(std::string_view bytes)>;
    explicit Outbox(Sink sink) : sink_(std::move(sink)) {}

    void Answer(const Json& id, Json result);
    void Refuse(const Json& id, int32_t error, std::string why);
    void Tell(const char* method, Json params);
    /// A request whose answer nobody waits for. Answers its id.
    int32_t Ask(const char* method, Json params);
    /// Shown in the client's log.
    void Log(TextView text);

private:
    void Send(const Json& message);

    std::mutex mutex_;
    Sink sink_;
    int32_t asked_ = 0;
};

} // namespace nib
