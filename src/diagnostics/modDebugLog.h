#pragma once
#include "platform/Trace.h"

namespace nib {

/// Sends the program's trace to a viewer, when one runs and has switched the category on for this process.
class modDebugLog final : public TraceChannel {
public:
    /// `mailbox` outlives the log.
    explicit modDebugLog(TraceMailbox& mailbox) : mailbox_(mailbox) {}

    /// The viewer's handle, 0 when none runs. Opens the block when that has not been done.
    uint32_t GetDebugWindow();
    /// The categories that the viewer wants of this process. Registers with a viewer that is new.
    uint32_t GetDebugMask();
    /// All bits of `mask` must be wanted; 0 always is. Throws kSubscript when the block is of another size.
    void Log(TextView text, int32_t mask);

    // TraceChannel; a block that cannot be used counts as no viewer.
    bool Wants(int32_t mask) const override;
    void Write(TextView line, int32_t mask) override;

private:
    bool Wanted(int32_t mask);

    TraceMailbox& mailbox_;
    int32_t client_ = 0; ///< this process's slot; 0 until registered
    uint32_t lastViewer_ = 0;
};

} // namespace nib
