#pragma once
// The mailbox of a log viewer: a socket for datagrams, in a folder that belongs to the user alone.

#include "platform/posix/Descriptor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

namespace nib {

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

    static constexpr size_t kLongestText = 32 * 1024;
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

} // namespace nib
