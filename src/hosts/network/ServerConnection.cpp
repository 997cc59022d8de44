#include "hosts/network/ServerConnection.h"

#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"

#include <algorithm>

#include <string.h>

namespace nib {

namespace {

using namespace std::chrono;

constexpr milliseconds kStep{50};
constexpr milliseconds kLeaving{3000};
constexpr milliseconds kGreetingLimit{10'000};
constexpr char kGreeting = '\x06';
constexpr size_t kLargestNoise = 4096;

void Wipe(std::string& secret)
{
    explicit_bzero(secret.data(), secret.size());
}

Text Seconds(milliseconds time)
{
    return Decimal(duration_cast<seconds>(time).count()) + u" seconds";
}

/// Since something moved last.
class Silence {
public:
    explicit Silence(milliseconds limit) : limit_(limit) {}

    void Moved() { since_ = steady_clock::now(); }
    void Check() const
    {
        if (steady_clock::now() - since_ > limit_) throw StreamEnded(u"it has not answered for " + Seconds(limit_));
    }

private:
    milliseconds limit_;
    steady_clock::time_point since_ = steady_clock::now();
};

/// Cuts the first line off.
std::string TakeLine(std::string_view& lines)
{
    const size_t end = lines.find(kFieldMark);
    std::string line(lines.substr(0, end));
    lines = end == std::string_view::npos ? std::string_view() : lines.substr(end + 1);
    return line;
}

} // namespace

ServerConnection::ServerConnection(std::unique_ptr<ByteStream> stream, ServerWait& wait)
    : stream_(std::move(stream)), wait_(wait)
{
    AwaitGreeting();
}

ServerConnection::~ServerConnection()
{
    if (stream_ && loggedIn_) IgnoringErrors([&] { Leave(); });
}

ByteStream& ServerConnection::Stream()
{
    if (!stream_) throw StreamEnded(u"the connection was lost");
    return *stream_;
}

void ServerConnection::AwaitGreeting()
{
    const Silence silence(kGreetingLimit);
    std::string& buffer = reader_.Buffer();
    for (size_t at = std::string::npos; at == std::string::npos; at = buffer.find(kGreeting)) {
        if (buffer.size() > kLargestNoise) throw StreamEnded(u"no MultiValue server answers there");
        silence.Check();
        wait_.Step(WaitStage::Busy);
        Stream().Receive(buffer, kStep);
    }
    buffer.erase(0, buffer.find(kGreeting) + 1);
}

bool ServerConnection::Login(std::string_view user, std::string_view password)
{
    std::string data = LoginData(user, password);
    std::string request = ServerRequest(ServerAction::Login, data);
    Wipe(data);
    std::optional<Error> failure;
    ServerReply reply;
    bool came = false;
    try {
        Send(request, kUsualLimit);
        reply = AwaitReply(kUsualLimit);
        came = true;
    } catch (const StreamEnded&) {
        // A server without a free seat greets, and closes.
    } catch (...) {
        Wipe(request);
        throw;
    }
    Wipe(request);
    if (!came) throw StreamEnded(u"it has closed the connection at the login: it may have no free session");
    loggedIn_ = reply.result == ServerResult::Done;
    if (!loggedIn_) Drop();
    return loggedIn_;
}

void ServerConnection::EnterAccount(const Text& account)
{
    const std::string name = ToFileName(account);
    const auto refuse = [&](const Text& why) {
        throw Error(error_number::kPathNotFound, u"Account " + account + u" cannot be entered" + why + u".");
    };
    if (name.empty() || name.size() > kLongestName) refuse(u": a name has 1 to 32 characters");
    const ServerReply reply = Call(ServerAction::SetAccount, name);
    // The status means nothing here. A login item of the account may print, or ask something, which is ended.
    if (reply.result == ServerResult::Done || reply.result == ServerResult::Prompt) return;
    const Text why = reply.result == ServerResult::Refused ? FromFileName(Call(ServerAction::RefusalText).data)
                                                           : FromFileName(reply.data);
    refuse(why.empty() ? why : u": " + why);
}

ServerReply ServerConnection::Call(ServerAction action, std::string_view data, milliseconds silence)
{
    TakeOwedReply(std::min(silence, kUsualLimit));
    if (prompting_) Exchange(ServerAction::EndCommand, {}, silence);
    return Exchange(action, data, silence);
}

std::string ServerConnection::Execute(std::string_view command, std::string_view input, bool& prompted)
{
    ServerReply reply = Call(ServerAction::Execute, command, kNoLimit);
    std::string output;
    prompted = false;
    for (;;) {
        if (reply.result == ServerResult::Prompt) // otherwise its lines are parted as any others
            std::replace(reply.data.begin(), reply.data.end(), '\n', kFieldMark);
        output += reply.data;
        if (reply.result != ServerResult::Prompt) break;
        prompted = input.empty();
        if (!prompted) {
            reply = Exchange(ServerAction::Respond, TakeLine(input), kNoLimit);
            output.push_back(kFieldMark);
            continue;
        }
        reply = Exchange(ServerAction::EndCommand, {}, kUsualLimit);
        if (!reply.data.empty()) output += kFieldMark + reply.data;
        break;
    }
    return output;
}

ServerReply ServerConnection::Exchange(ServerAction action, std::string_view data, milliseconds silence)
{
    const std::string request = ServerRequest(action, data);
    Send(request, silence);
    owedAction_ = action;
    owedData_ = action == ServerAction::ReadLocked ? std::string(data) : std::string();
    owed_ = true;
    ServerReply reply = AwaitReply(silence);
    owed_ = false;
    prompting_ = reply.result == ServerResult::Prompt;
    return reply;
}

void ServerConnection::Send(std::string_view request, milliseconds limit)
{
    Silence silence(limit);
    size_t sent = 0;
    try {
        while (sent < request.size()) {
            const size_t now = Stream().Send(request.substr(sent), kStep);
            sent += now;
            if (now > 0) silence.Moved();
            silence.Check();
            // What has gone out whole is answered: the connection need not go with the wait.
            if (!leaving_ && sent < request.size())
                wait_.Step(WaitStage::Pending, static_cast<int32_t>(100 * sent / request.size()));
        }
    } catch (...) {
        // Half a request changes nothing; the other half is not to come.
        Drop();
        throw;
    }
}

ServerReply ServerConnection::AwaitReply(milliseconds limit)
{
    Silence silence(limit);
    try {
        for (;;) {
            if (std::optional<ServerReply> reply = reader_.Take()) return std::move(*reply);
            const size_t before = reader_.Buffer().size();
            Stream().Receive(reader_.Buffer(), kStep);
            if (reader_.Buffer().size() != before) silence.Moved();
            silence.Check();
            if (!leaving_) wait_.Step(WaitStage::Pending);
        }
    } catch (const WaitEnded& ended) {
        if (ended.reset || !owed_) Drop();
        throw;
    } catch (...) {
        Drop();
        throw;
    }
}

/// Of a request that nobody waited for any longer. A lock that it took is of no use to anybody.
void ServerConnection::TakeOwedReply(milliseconds silence)
{
    if (!owed_) return;
    const ServerReply reply = AwaitReply(silence);
    owed_ = false;
    prompting_ = reply.result == ServerResult::Prompt;
    const bool locked = reply.result == ServerResult::Done || reply.result == ServerResult::NotFound;
    if (owedAction_ == ServerAction::ReadLocked && locked) Exchange(ServerAction::Release, owedData_, silence);
}

bool ServerConnection::IsLost()
{
    if (!stream_) return true;
    // Whatever it is, nobody asked for it: then the next reply would be taken for another's.
    const bool silent = OrDefault(
        [&] {
            stream_->Receive(reader_.Buffer(), milliseconds(0));
            return reader_.Empty() || owed_;
        },
        false);
    if (!silent) Drop();
    return !silent;
}

void ServerConnection::Leave()
{
    leaving_ = true;
    const auto end = steady_clock::now() + kLeaving;
    const auto left = [end] {
        return std::max(duration_cast<milliseconds>(end - steady_clock::now()), milliseconds(0));
    };
    if (owed_) {
        const ServerReply reply = AwaitReply(left());
        owed_ = false;
        prompting_ = reply.result == ServerResult::Prompt;
    }
    if (prompting_) Exchange(ServerAction::EndCommand, {}, left());
    Exchange(ServerAction::Release, FileData(0), left());
    Exchange(ServerAction::Quit, {}, left());
    while (left() > milliseconds(0)) stream_->Receive(reader_.Buffer(), kStep); // its end is told by a failure
}

} // namespace nib
