#include "platform/posix/PosixTraceMailbox.h"

#include <unistd.h>

namespace nib {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kLongestWait = 100; ///< milliseconds
constexpr auto kBetweenTries = std::chrono::seconds(1);
constexpr int32_t kMostClients = 251;

} // namespace

PosixTraceMailbox::PosixTraceMailbox(TextView programName)
    : programName_(ToUtf8(programName)), socket_(TraceSocket::ForClient())
{
}

bool PosixTraceMailbox::OpenDebugMemory(TextView name, int32_t capacity)
{
    // The log asks at every line; a system without shared memory must not slow the program down.
    if (!socket_ || Clock::now() < nextTry_) return false;
    nextTry_ = Clock::now() + kBetweenTries;
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
    if (Clock::now() < nextTry_) return 0;
    nextTry_ = Clock::now() + kBetweenTries;
    while (socket_.Receive(0)) {
    } // late answers to earlier questions
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
