#include "hosts/network/ServerSession.h"

#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <charconv>

#include <string.h>

namespace nib {

namespace {

constexpr std::chrono::milliseconds kReleaseLimit{3000};
constexpr int16_t kUsualList = 0;
constexpr int32_t kPathOfFile = 2;
constexpr int32_t kTypeOfFile = 3;
constexpr std::string_view kBlanks{" \t"};

struct StatusRow {
    int32_t status;
    TextView text;
};

constexpr StatusRow kStatusRows[] = {
    {server_status::kIllegalId, u"the item id is not allowed there"},
    {3002, u"the name of the file is not allowed"},
    {3003, u"the file itself is missing, there is an entry for it in the VOC alone"},
    {3007, u"the VOC has no such name"},
    {3009, u"the name stands for something else in the VOC"},
    {server_status::kNoSuchItem, u"there is no such item"},
    {3010, u"the server cannot read or write the file"},
    {server_status::kReadOnlyFile, u"the user may not write to the file: the user's primary group has to be the "
                                   u"server's group"},
    {3022, u"a trigger of the file refused it"},
    {3023, u"the server wants a lock for it"},
    {server_status::kNoPermission, u"the user may not write there: the user's primary group has to be the server's "
                                   u"group"},
    {3041, u"the file is encrypted"},
};

std::vector<std::string> Cut(std::string_view text, char at)
{
    std::vector<std::string> parts;
    while (!text.empty()) {
        const size_t end = text.find(at);
        parts.emplace_back(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return parts;
}

std::vector<std::string> Words(std::string_view line)
{
    std::vector<std::string> words;
    for (size_t at = line.find_first_not_of(kBlanks); at != std::string_view::npos;
         at = line.find_first_not_of(kBlanks, at)) {
        const size_t end = std::min(line.find_first_of(kBlanks, at), line.size());
        words.emplace_back(line.substr(at, end - at));
        at = end;
    }
    return words;
}

/// Overwritten when it goes, however that is.
struct Password {
    std::optional<std::string> text;

    ~Password()
    {
        if (text) explicit_bzero(text->data(), text->size());
    }
};

int32_t NumberOf(std::string_view word)
{
    int32_t number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return number;
}

} // namespace

Text ServerRefusal(const ServerReply& reply)
{
    for (const StatusRow& row : kStatusRows)
        if (row.status == reply.status) return Text(row.text);
    const Text said(Trim(FromFileName(reply.data)));
    return said.empty() ? u"the server answers with status " + Decimal(reply.status) : said;
}

ServerSession::ServerSession(ServerDoor door, Text account, WaitNotice* notice, const std::atomic<bool>* stopped)
    : door_(std::move(door)), account_(std::move(account)), wait_(notice, stopped)
{
}

void ServerSession::CannotReach(const Error& error) const
{
    throw StreamEnded(u"The server " + door_.hostName + u" cannot be reached: " + error.description + u".");
}

/// A connection that is lost while it is of no use shows when it is used again: then a new one will do.
template <typename Body>
auto ServerSession::Repeating(Body&& body)
{
    const bool fresh = !connection_ || connection_->IsLost();
    ServerConnection& first = Connected();
    try {
        return body(first);
    } catch (const StreamEnded& ended) {
        Lost(ended.description);
        if (fresh) CannotReach(ended);
    }
    ServerConnection& second = Connected();
    try {
        return body(second);
    } catch (const StreamEnded& ended) {
        Lost(ended.description);
        CannotReach(ended);
    }
}

ServerConnection& ServerSession::Connected()
{
    if (connection_ && connection_->IsLost()) Lost(u"the server has ended it");
    if (!connection_) Connect();
    return *connection_;
}

void ServerSession::Lost(const Text& why)
{
    if (!connection_) return;
    Drop();
    Tell(u" was lost (" + why + u"), and its locks with it. The next save connects again.");
}

void ServerSession::Tell(const Text& why) const
{
    if (door_.tell) door_.tell(u"The connection to " + door_.hostName + u" " + account_, why);
}

void ServerSession::Drop()
{
    if (connection_) connection_->Drop();
    connection_.reset();
    files_.clear();
}

void ServerSession::Look()
{
    // Whoever waits for the connection notices by itself, and still needs it.
    if (!wait_.IsBusy() && connection_ && connection_->IsLost()) Lost(u"the server has ended it");
}

void ServerSession::Connect()
{
    try {
        std::unique_ptr<ServerConnection> made = LogIn();
        made->EnterAccount(account_);
        // Ours and nobody else's, should a lock of it outlive it.
        const ServerReply who = made->Call(ServerAction::Execute, "WHO");
        const int32_t number = who.result == ServerResult::Done ? NumberOf(who.data) : 0;
        // They rise with each login, until the server starts anew.
        if (!numbers_.empty() && number <= numbers_.back()) numbers_.clear();
        numbers_.push_back(number);
        connection_ = std::move(made);
        ++login_;
        Tell({});
    } catch (const StreamEnded& ended) {
        CannotReach(ended);
    }
    if (door_.accepted) wait_.Pausing(door_.accepted);
}

std::unique_ptr<ServerConnection> ServerSession::Greeted()
{
    return std::make_unique<ServerConnection>(door_.open([this] { wait_.Step(WaitStage::Busy); }), wait_);
}

std::unique_ptr<ServerConnection> ServerSession::LogIn()
{
    // Whether there is a server at all is known before anybody types a password.
    std::unique_ptr<ServerConnection> made = Greeted();
    for (bool refused = false;; refused = true) {
        const Password password{wait_.Pausing([&] { return door_.password(refused); })};
        if (!password.text)
            throw Error(error_number::kDeviceUnavailable,
                        u"Not logged in to " + door_.hostName +
                            (refused ? u": it refused the user or the password." : u"."));
        // While somebody typed, the server may have hung up.
        if (made->IsLost()) made = Greeted();
        if (made->Login(door_.user, *password.text)) return made;
    }
}

int16_t ServerSession::FileNumber(const std::string& file)
{
    if (const auto found = files_.find(file); found != files_.end()) return found->second;
    const ServerReply reply = connection_->Call(ServerAction::OpenFile, file);
    const std::optional<int16_t> number = ShortAt(reply.data, 0);
    if (reply.result != ServerResult::Done || !number) {
        throw Error(error_number::kPathNotFound, u"File " + FromFileName(file) + u" of account " + account_ +
                                                     u" cannot be opened: " + ServerRefusal(reply) + u".");
    }
    return files_.emplace(file, *number).first->second;
}

ServerReply ServerSession::OnFile(const std::string& file, ServerAction action,
                                  const std::function<std::string(int16_t)>& data)
{
    return Repeating([&](ServerConnection& connection) {
        const int16_t number = FileNumber(file);
        return connection.Call(action, data(number));
    });
}

ServerReply ServerSession::OnItem(const std::string& file, ServerAction action, std::string_view id)
{
    return OnFile(file, action, [id](int16_t number) { return FileData(number, id); });
}

ServerReply ServerSession::Write(const std::string& file, std::string_view id, std::string_view item, bool keepLock,
                                 int64_t login)
{
    if (!connection_ || login != login_) throw StreamEnded(u"The connection to " + door_.hostName + u" was lost.");
    try {
        return connection_->Call(keepLock ? ServerAction::WriteKeepLock : ServerAction::Write,
                                 WriteData(FileNumber(file), id, item));
    } catch (const StreamEnded& ended) {
        Lost(ended.description);
        CannotReach(ended);
    }
}

void ServerSession::Release(const std::string& file, std::string_view id, int64_t login) noexcept
{
    IgnoringErrors([&] {
        if (!connection_ || login != login_ || connection_->IsLost()) return;
        connection_->Call(ServerAction::Release, FileData(FileNumber(file), id), kReleaseLimit);
    });
}

bool ServerSession::HasFile(const std::string& file)
{
    return Repeating([&](ServerConnection& connection) {
        if (files_.contains(file)) return true;
        const ServerReply reply = connection.Call(ServerAction::OpenFile, file);
        if (const auto number = ShortAt(reply.data, 0); number && reply.result == ServerResult::Done)
            files_.emplace(file, *number);
        return reply.result == ServerResult::Done;
    });
}

std::string ServerSession::FileType(const std::string& file)
{
    return OnFile(file, ServerAction::FileInformation,
                  [](int16_t number) { return InformationData(number, kTypeOfFile); })
        .data;
}

const std::string& ServerSession::PathOf(const std::string& file)
{
    if (const auto known = paths_.find(file); known != paths_.end()) return known->second;
    ServerReply path = OnFile(file, ServerAction::FileInformation,
                              [](int16_t number) { return InformationData(number, kPathOfFile); });
    if (path.result != ServerResult::Done) path.data = file;
    return paths_.emplace(file, std::move(path.data)).first->second;
}

Text ServerSession::UserOf(int32_t sessionNumber)
{
    if (sessionNumber == 0) return {};
    Text number = u"session " + Decimal(sessionNumber);
    const ServerReply reply =
        Repeating([](ServerConnection& connection) { return connection.Call(ServerAction::Execute, "LISTU"); });
    for (const std::string& line : Cut(reply.data, kFieldMark)) {
        std::string_view rest = line;
        if (rest.starts_with('*')) rest.remove_prefix(1);
        const std::vector<std::string> words = Words(rest);
        const size_t colon = line.rfind(": ");
        if (words.size() < 2 || colon == std::string::npos || NumberOf(words.front()) != sessionNumber) continue;
        const std::vector<std::string> origin = Words(std::string_view(line).substr(0, colon));
        return Text(Trim(FromFileName(line.substr(colon + 1)))) + u" at " + FromFileName(origin.back()) + u", " +
               number;
    }
    return number;
}

bool ServerSession::IsOwnGhost(int32_t sessionNumber) const
{
    return !numbers_.empty() && sessionNumber != 0 &&
           std::find(numbers_.begin(), numbers_.end() - 1, sessionNumber) != numbers_.end() - 1;
}

std::vector<std::string> ServerSession::ItemIds(const std::string& file)
{
    const ServerReply reply = OnFile(file, ServerAction::ListIds, [](int16_t number) { return FileData(number); });
    return Cut(reply.data, kFieldMark);
}

std::vector<std::string> ServerSession::Files()
{
    return Repeating([](ServerConnection& connection) {
        const ServerReply selected = connection.Call(ServerAction::Execute, "SSELECT VOC WITH TYPE = \"F\" \"Q\"");
        // What stays in the list is eaten by the next command.
        const ServerReply list = connection.Call(ServerAction::TakeList, NumberData(kUsualList));
        return list.result == ServerResult::Done ? Cut(list.data, kFieldMark) : std::vector<std::string>();
    });
}

std::string ServerSession::Execute(std::string_view command, std::string_view input, bool& prompted)
{
    // Not again when the connection breaks: it may have done something.
    ServerConnection& connection = Connected();
    try {
        return connection.Execute(command, input, prompted);
    } catch (const StreamEnded& ended) {
        Lost(ended.description);
        CannotReach(ended);
    }
}

} // namespace nib
