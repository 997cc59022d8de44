#include "platform/posix/PosixTraceMailbox.h"

#include <ctime>

#include <unistd.h>

namespace nib {

namespace {

/// To a few milliseconds: it is looked at with every line as long as there is no block, and must cost next to nothing.
std::chrono::nanoseconds Now()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

constexpr int kLongestWait = 100; ///< milliseconds
constexpr auto kBetweenTries = std::chrono::seconds(1);
constexpr int32_t kMostClients = 251;
constexpr int kMostLateAnswers = 100;

} // namespace

PosixTraceMailbox::PosixTraceMailbox(TextView programName)
    : programName_(ToUtf8(programName)), socket_(TraceSocket::ForClient())
{
}

bool PosixTraceMailbox::OpenDebugMemory(TextView name, int32_t capacity)
{
    // The log asks at every line; a system without shared memory must not slow the program down.
    if (!socket_ || Now() < nextTry_) return false;
    nextTry_ = Now() + kBetweenTries;
    if (!block_.Open(ToUtf8(name), capacity)) return false;
    nextTry_ = {};
    return true;
}

bool PosixTraceMailbox::Mail(uint32_t viewer, const TraceMessage& message)
{
    if (viewer == deadViewer_) return false;
    const auto address = ViewerAddress(viewer);
    if (!address) return false;
    const int failure = socket_.Send(message, *address, slow_ ? 0 : kLongestWait);
    slow_ = failure == EAGAIN;
    if (failure == ECONNREFUSED || failure == ENOENT) deadViewer_ = viewer;
    return failure == 0;
}

int32_t PosixTraceMailbox::Register(uint32_t viewer)
{
    if (viewer == deadViewer_ || Now() < nextTry_) return 0;
    nextTry_ = Now() + kBetweenTries;
    // Late answers to earlier questions; more than these come from something that is no viewer.
    for (int i = 0; i < kMostLateAnswers && socket_.Receive(0); ++i) {
    }
    TraceMessage hello{trace_message::kRegister, 0, static_cast<uint32_t>(getpid()), programName_};
    if (!Mail(viewer, hello)) return 0;
    const auto answer = socket_.Receive(kLongestWait);
    if (!answer || answer->kind != trace_message::kRegister || answer->client < 1 || answer->client > kMostClients) {
        return 0;
    }
    nextTry_ = {};
    return static_cast<int32_t>(answer->client);
}

void PosixTraceMailbox::Send(uint32_t viewer, int32_t client, TextView text)
{
    text = text.substr(0, TraceMessage::kLongestText);
    Mail(viewer, {trace_message::kLine, static_cast<uint32_t>(client), static_cast<uint32_t>(getpid()), ToUtf8(text)});
}

} // namespace nib
