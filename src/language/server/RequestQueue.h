#pragma once
#include "language/server/Message.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

namespace nib {

/// Messages on their way from the thread that reads them to the one that works on them.
class RequestQueue {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Waits while so much is there already that a client which never listens would fill the memory.
    void Put(Message message, size_t bytes);
    /// The next one; nothing when the time has come, or nothing comes any more.
    std::optional<Message> Take(Time until);
    /// True when the request waited here and is gone. One that is being worked on is marked.
    bool Cancel(const Json& id);
    /// The request taken last was cancelled meanwhile.
    bool IsCancelled() const;
    /// A change of this text waits here: what is answered now is of no use to a client that asks anew after each.
    bool WillChange(const Json& uri) const;

    /// No more will come; what waits is still taken.
    void Close();
    bool IsOver() const;

private:
    struct Waiting {
        Message message;
        size_t bytes = 0;
    };

    mutable std::mutex mutex_;
    std::condition_variable came_;
    std::condition_variable went_;
    std::deque<Waiting> waiting_;
    size_t bytes_ = 0;
    Json taken_;
    bool cancelled_ = false;
    bool closed_ = false;
};

} // namespace nib
