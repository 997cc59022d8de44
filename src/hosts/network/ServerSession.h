#pragma once
#include "hosts/network/ServerConnection.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nib {

/// How one server is reached, and who comes.
struct ServerDoor {
    Text hostName; ///< for the user to read
    std::string user;
    /// Throws StreamEnded.
    std::function<std::unique_ptr<ByteStream>(const WaitStep&)> open;
    /// Nothing when the user gives none. `refused`: the last one was.
    std::function<std::optional<std::string>(bool refused)> password;
    std::function<void()> accepted; ///< the last password; may be empty
    /// News of `what` that nobody has asked for; no `why`: all is well again. May be empty.
    std::function<void(const Text& what, const Text& why)> tell;
};

/// Why a server did not do something with an item or file, in words.
Text ServerRefusal(const ServerReply& reply);

/// A session in one account of a server. It connects when it is first used, and again when the connection is lost; each
/// login has a number, and locks belong to the one that they were taken in.
///
/// Names and ids are bytes. Errors: StreamEnded when the server cannot be reached, WaitEnded, Error with a sentence for
/// the user for all else.
class ServerSession {
public:
    ServerSession(ServerDoor door, Text account, WaitNotice* notice, const std::atomic<bool>* stopped = nullptr);

    const Text& Account() const { return account_; }
    const Text& HostName() const { return door_.hostName; }
    ServerWait& Wait() { return wait_; }
    /// 0 when there is no connection at present.
    int64_t Login() const { return connection_ ? login_ : 0; }

    /// Reading it or asking about it. `data` makes the request's data of the file's number. What asks only is asked
    /// again when the connection turns out to be lost; throws Error when there is no such file.
    ServerReply OnFile(const std::string& file, ServerAction action, const std::function<std::string(int16_t)>& data);
    ServerReply OnItem(const std::string& file, ServerAction action, std::string_view id);
    /// Only in the login in which something was prepared for it: throws StreamEnded in another one.
    ServerReply Write(const std::string& file, std::string_view id, std::string_view item, bool keepLock,
                      int64_t login);
    /// Of a lock that was taken in this login; never connects for that.
    void Release(const std::string& file, std::string_view id, int64_t login) noexcept;
    /// The account has the file.
    bool HasFile(const std::string& file);
    /// "3" hashed, "4" directory.
    std::string FileType(const std::string& file);
    /// On the server: the same for two names of one file. Its name where the server does not tell. Asked for once.
    const std::string& PathOf(const std::string& file);
    /// In words, as far as the server tells: "user at address". Nothing for 0.
    Text UserOf(int32_t sessionNumber);
    /// The number of an earlier connection of this very session, which the server has not noticed to be gone.
    bool IsOwnGhost(int32_t sessionNumber) const;
    std::vector<std::string> ItemIds(const std::string& file);
    /// Sorted, without dictionaries.
    std::vector<std::string> Files();
    std::string Execute(std::string_view command, std::string_view input, bool& prompted);
    /// Notices a lost connection, and tells of it once.
    void Look();
    /// Drops the connection at once, without a word: what runs there ends, its locks go.
    void Drop();

private:
    template <typename Body>
    auto Repeating(Body&& body);
    ServerConnection& Connected();
    void Connect();
    std::unique_ptr<ServerConnection> LogIn();
    std::unique_ptr<ServerConnection> Greeted();
    void Lost(const Text& why);
    void Tell(const Text& why) const;
    int16_t FileNumber(const std::string& file);
    [[noreturn]] void CannotReach(const Error& error) const;

    ServerDoor door_;
    Text account_;
    ServerWait wait_;
    std::unique_ptr<ServerConnection> connection_;
    std::map<std::string, int16_t> files_; ///< of this connection
    std::map<std::string, std::string> paths_;
    int64_t login_ = 0;
    std::vector<int32_t> numbers_; ///< of this session at the server, that of the present login last
};

} // namespace nib
