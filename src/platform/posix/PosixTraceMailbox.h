#pragma once
#include "platform/Trace.h"
#include "platform/posix/FileContent.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

namespace nib {

/// A block of 32-bit words that processes of one user share: words 0 and 1 count the slots used and possible, the slots
/// follow. A word is read and written whole; there is no lock.
class TraceBlock {
public:
    TraceBlock() = default;
    ~TraceBlock() { Close(); }
    TraceBlock(const TraceBlock&) = delete;
    TraceBlock& operator=(const TraceBlock&) = delete;

    /// False when the system gives no block, or one that others could write. Throws kSubscript when it was made for
    /// another number of slots or holds nonsense.
    bool Open(const std::string& name, int32_t capacity);
    void Close();
    bool IsOpen() const { return words_ != nullptr; }
    /// False for a slot that is not in use.
    bool Read(int32_t slot, uint32_t& value) const;
    /// Takes the slots up to this one into use.
    void Write(int32_t slot, uint32_t value);
    int32_t Used() const;

private:
    void Check(int32_t capacity, bool made);
    uint32_t Load(int32_t word) const;
    void Store(int32_t word, uint32_t value);

    uint32_t* words_ = nullptr;
    int32_t capacity_ = 0;
};

// The mailbox of a log viewer: a socket for datagrams, in a folder that belongs to the user alone.

namespace trace_message {
inline constexpr uint32_t kRegister = 12; ///< to the viewer: the program's name; back: its slot
inline constexpr uint32_t kClients = 13;  ///< to the viewer; back: a line for each client
inline constexpr uint32_t kLine = 384;
} // namespace trace_message

struct TraceMessage {
    uint32_t kind = 0;
    uint32_t client = 0;
    uint32_t process = 0;
    std::string text; ///< UTF-8; what exceeds kLongestText is cut off

    static constexpr size_t kLongestText = size_t{32} * 1024;
};

struct TraceAddress {
    sockaddr_un name{};
    socklen_t size = 0;
};

/// Where the viewer with this process number takes its mail; nothing when the user has no private folder for it.
std::optional<TraceAddress> ViewerAddress(uint32_t viewer);

class TraceSocket {
public:
    /// A socket with an address of its own choice, for clients.
    static TraceSocket ForClient();
    /// The viewer's; throws SystemFailure.
    static TraceSocket ForViewer(const TraceAddress& address);

    explicit operator bool() const { return static_cast<bool>(file_); }
    int Get() const { return file_.Get(); }
    /// Waits at most so long; answers errno, 0 when sent.
    int Send(const TraceMessage& message, const TraceAddress& to, int milliseconds) const;
    /// Nothing when none that makes sense came within that time. -1 waits for ever.
    std::optional<TraceMessage> Receive(int milliseconds, TraceAddress* from = nullptr) const;

private:
    explicit TraceSocket(int file) : file_(file) {}

    Descriptor file_;
};

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
