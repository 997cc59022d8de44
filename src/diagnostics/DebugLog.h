#pragma once
#include "base/Error.h"
#include "platform/Trace.h"

#include <concepts>

namespace nib {

namespace trace {
inline constexpr int32_t kErrors = 1;
inline constexpr int32_t kObjects = 2;
inline constexpr int32_t kCommandLine = 4;
inline constexpr int32_t kTokens = 16;
} // namespace trace

/// The program's trace. A line that nobody wants is never built when it is given as a function.
class DebugLog {
public:
    explicit DebugLog(TraceChannel* channel = nullptr) : channel_(channel) {}

    bool Wants(int32_t mask) const { return channel_ && channel_->Wants(mask); }
    void Write(TextView line, int32_t mask) const
    {
        if (Wants(mask)) channel_->Write(line, mask);
    }
    template <std::invocable Line>
    void Write(Line&& line, int32_t mask) const
    {
        if (Wants(mask)) channel_->Write(line(), mask);
    }
    /// "<where>: error=0x<number> <description>"
    void WriteError(TextView where, const Error& error, int32_t mask = trace::kErrors) const
    {
        Write([&] { return Text(where) + u": error=0x" + Hex(error.number) + u" " + error.description; }, mask);
    }

private:
    TraceChannel* channel_;
};

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
