#pragma once
#include "platform/posix/FileContent.h"

#include <csignal>

#include <sys/signalfd.h>

namespace nib {

/// Holds back the signals that ask a program to end, until there is a loop that can be told of them. To be made before
/// anything starts a thread: threads inherit it. A reader that went, or a file that may grow no further, ends nothing
/// from here on: the write tells.
class EndSignals {
public:
    EndSignals()
    {
        for (int ignored : {SIGXFSZ, SIGPIPE}) std::signal(ignored, SIG_IGN);
        sigemptyset(&signals_);
        for (int number : {SIGTERM, SIGHUP, SIGINT}) sigaddset(&signals_, number);
        pthread_sigmask(SIG_BLOCK, &signals_, nullptr); // what nohup ignores stays ignored
        file_ = Descriptor(signalfd(-1, &signals_, SFD_CLOEXEC | SFD_NONBLOCK));
        if (!file_) LetThrough();
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// Readable when one came; -1 when the system has no such thing, and signals end the process at once.
    int Handle() const { return file_.Get(); }
    /// A further one ends the process at once, should it hang on its way out.
    void LetThrough() { pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr); }
    /// Takes what came.
    void Take()
    {
        signalfd_siginfo which{};
        while (read(file_.Get(), &which, sizeof which) > 0) continue;
        LetThrough();
    }

private:
    sigset_t signals_{};
    Descriptor file_;
};

} // namespace nib
