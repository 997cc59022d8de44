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

} // namespace nib
