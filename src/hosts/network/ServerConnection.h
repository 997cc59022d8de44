#pragma once
#include "hosts/network/ServerFrame.h"
#include "hosts/network/ServerWait.h"
#include "platform/posix/ByteStream.h"

#include <chrono>
#include <memory>
#include <string>

namespace nib {

/// One login at a server. A call throws StreamEnded when the server has gone or has been silent for too long, and
/// WaitEnded when the user would not wait any longer; then its reply is taken off before the next request, or the
/// connection is dropped where the request had not gone out whole.
///
/// Destroying it leaves in order, within three seconds: the server keeps a session, its locks and its seat for ever
/// when a client just goes at the wrong moment.
class ServerConnection {
public:
    static constexpr std::chrono::milliseconds kUsualLimit{30'000};
    static constexpr std::chrono::milliseconds kNoLimit{std::chrono::hours(24)};

    /// Waits for the server's greeting. `wait` outlives it.
    ServerConnection(std::unique_ptr<ByteStream> stream, ServerWait& wait);
    ~ServerConnection();
    ServerConnection(const ServerConnection&) = delete;
    ServerConnection& operator=(const ServerConnection&) = delete;

    /// False when the server refuses the user or the password; the connection is of no more use then.
    bool Login(std::string_view user, std::string_view password);
    /// Throws Error when there is no such account.
    void EnterAccount(const Text& account);
    /// `silence`: how long nothing may move. A prompt that is left over is ended first.
    ServerReply Call(ServerAction action, std::string_view data = {}, std::chrono::milliseconds silence = kUsualLimit);
    /// All that a command prints, its lines between field marks. `input` has lines between field marks: the answers to
    /// its prompts; with the last of them the command is ended, and `prompted` set. Only a message when it aborts.
    std::string Execute(std::string_view command, std::string_view input, bool& prompted);
    /// Notices without a call when the server has gone.
    bool IsLost();
    /// At once, without a word to the server.
    void Drop() { stream_.reset(); }

private:
    ByteStream& Stream();
    void AwaitGreeting();
    void Send(std::string_view request, std::chrono::milliseconds silence);
    ServerReply AwaitReply(std::chrono::milliseconds silence);
    ServerReply Exchange(ServerAction action, std::string_view data, std::chrono::milliseconds silence);
    void TakeOwedReply(std::chrono::milliseconds silence);
    void Leave();

    std::unique_ptr<ByteStream> stream_; ///< none when it has been lost
    ServerWait& wait_;
    ReplyReader reader_;
    bool loggedIn_ = false;
    bool prompting_ = false;
    bool leaving_ = false;
    bool owed_ = false; ///< a reply to the last request is still to come
    ServerAction owedAction_ = ServerAction::Quit;
    std::string owedData_;
};

} // namespace nib
