#pragma once
#include "base/Error.h"
#include "platform/MessageBoxes.h"

#include <atomic>
#include <chrono>

namespace nib {

/// The user, or whoever stopped a search, has had enough of a wait.
class WaitEnded : public Error {
public:
    explicit WaitEnded(bool resetWanted);
    bool reset; ///< the connection is to be dropped too
};

/// A wait for a server, told to the user. However many calls it takes, it is one wait.
class ServerWait {
public:
    /// Without a notice it waits unseen, until `stopped` is set, which may be null. Both outlive it.
    explicit ServerWait(WaitNotice* notice, const std::atomic<bool>* stopped = nullptr)
        : notice_(notice), stopped_(stopped)
    {
    }
    ServerWait(const ServerWait&) = delete;
    ServerWait& operator=(const ServerWait&) = delete;

    /// As long as it lives something is waited for. Throws Error when another wait goes on, out of which this call
    /// came.
    class Scope {
    public:
        Scope(ServerWait& wait, TextView what) : wait_(wait) { wait_.Enter(what); }
        ~Scope() { wait_.Leave(); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        ServerWait& wait_;
    };

    /// A call is under way, out of which this one came.
    bool IsBusy() const { return depth_ > 0; }
    /// To be called about every 50 ms. Throws WaitEnded.
    void Step(WaitStage stage, int32_t percent = -1);
    /// The time that `body` takes belongs to the user, who answers a question.
    template <typename Body>
    auto Pausing(Body&& body)
    {
        const Pause pause(*this);
        return body();
    }

private:
    class Pause {
    public:
        explicit Pause(ServerWait& wait) : wait_(wait) { wait_.Hide(); }
        ~Pause() { wait_.Show(); }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        ServerWait& wait_;
    };

    void Enter(TextView what);
    void Leave();
    void Hide();
    void Show();

    WaitNotice* notice_;
    const std::atomic<bool>* stopped_;
    int32_t depth_ = 0;
    bool elsewhere_ = false; ///< in what may call again: the notice, a question to the user
    Text what_;
    std::chrono::steady_clock::time_point start_;
};

} // namespace nib
