#pragma once
// What goes over the wire, as bytes: requests, and replies cut out of what has come. Numbers are little-endian; every
// length counts its own header.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace nib {

/// What an editor asks for. Actions that lock for ever, clear a file or log in without a password have no name here.
enum class ServerAction : int16_t {
    Quit = 1,
    RefusalText = 2,
    SetAccount = 3,
    OpenFile = 4,
    Read = 6,
    ReadLocked = 9, ///< update lock, without waiting for it
    ClearList = 13,
    TakeList = 14,
    Release = 15,
    Write = 16, ///< the lock ends
    WriteKeepLock = 17,
    Delete = 18, ///< the lock ends
    Execute = 21,
    Respond = 22,
    EndCommand = 23,
    Login = 24,
    LockState = 34,
    ListIds = 37,
    FileInformation = 40,
};

enum class ServerResult : int16_t { Done, Failed, NotFound, Refused, Locked, Prompt };

namespace server_status {
inline constexpr int32_t kIllegalId = 3000;
inline constexpr int32_t kNoSuchItem = 3006;
inline constexpr int32_t kReadOnlyFile = 3018;
inline constexpr int32_t kNoPermission = 3035;
} // namespace server_status

struct ServerReply {
    ServerResult result = ServerResult::Done;
    int32_t status = 0;
    std::string data;
};

inline constexpr char kFieldMark = '\xFE';
/// Of id and item together: the server cuts what is longer, without a word.
inline constexpr size_t kLargestItem = 99'999'995;
inline constexpr size_t kLongestName = 32; ///< of users, passwords and accounts, in bytes
/// A reply that says it is longer is taken for noise.
inline constexpr size_t kLargestReply = size_t{512} << 20;

std::string ServerRequest(ServerAction action, std::string_view data = {});
/// The data of requests.
std::string LoginData(std::string_view user, std::string_view password);
std::string FileData(int16_t file, std::string_view id = {});
std::string WriteData(int16_t file, std::string_view id, std::string_view item);
std::string NumberData(int16_t number);
std::string InformationData(int16_t file, int32_t key);
/// The numbers in the data of replies; nothing when it is too short.
std::optional<int16_t> ShortAt(std::string_view data, size_t at);
std::optional<int32_t> LongAt(std::string_view data, size_t at);

/// Cuts replies out of the bytes that come, in whatever pieces they do.
class ReplyReader {
public:
    /// Where more bytes are to be appended.
    std::string& Buffer() { return buffer_; }
    bool Empty() const { return buffer_.empty(); }
    /// A whole reply, when there is one. Throws Error for a header that no server sends.
    std::optional<ServerReply> Take();

private:
    std::string buffer_;
};

} // namespace nib
