#pragma once
#include "platform/TraceMailbox.h"
#include "platform/posix/TraceBlock.h"
#include "platform/posix/TraceSocket.h"

#include <chrono>

namespace nib {

/// The log's block in shared memory and the viewer's socket. A viewer that does not take a line within a tenth of a
/// second is not waited for again until it has taken one.
class PosixTraceMailbox final : public TraceMailbox {
public:
    explicit PosixTraceMailbox(TextView programName);

    bool OpenDebugMemory(TextView name, int32_t capacity) override;
    bool ReadDebugSlot(int32_t index, uint32_t& value) const override { return block_.Read(index, value); }
    bool HasDebugMemory() const override { return block_.IsOpen(); }
    int32_t Register(uint32_t viewer) override;
    void Send(uint32_t viewer, int32_t client, TextView text) override;

private:
    /// Answers whether the viewer took it.
    bool Mail(uint32_t viewer, const TraceMessage& message);

    std::string programName_;
    TraceBlock block_;
    TraceSocket socket_;
    std::chrono::nanoseconds nextTry_{}; ///< of opening the block, or of registering
    uint32_t deadViewer_ = 0;            ///< one that left its number behind
    bool slow_ = false;
};

} // namespace nib
