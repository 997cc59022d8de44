#pragma once
#include "base/Error.h"
#include "base/Text.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace nib {

/// The other side has gone, or cannot be reached; `description` says why.
class StreamEnded : public Error {
public:
    explicit StreamEnded(Text why);
};

/// Bytes to and from another program, for one thread at a time. Destroying it closes it at once.
class ByteStream {
public:
    virtual ~ByteStream() = default;
    /// Sends what goes without waiting, after waiting at most so long until something does. How many bytes went, which
    /// may be none. Throws StreamEnded.
    virtual size_t Send(std::string_view bytes, std::chrono::milliseconds wait) = 0;
    /// Appends what has come, after waiting at most so long until something does. Throws StreamEnded when nothing can
    /// come any more.
    virtual void Receive(std::string& bytes, std::chrono::milliseconds wait) = 0;
};

/// Called about every 50 ms of a wait; ends it by throwing.
using WaitStep = std::function<void()>;

/// A TCP connection that notices by itself within a minute when the other side is cut off. Throws StreamEnded: no such
/// name, no route, refused, no answer within the time.
std::unique_ptr<ByteStream> ConnectTcp(const Text& address, const Text& port, std::chrono::milliseconds limit,
                                       const WaitStep& step);
/// The input and output of a program, which runs without a terminal and is ended with the stream. What it writes to its
/// error output is told when it ends.
std::unique_ptr<ByteStream> ConnectCommand(const std::vector<Text>& words);

} // namespace nib
