#include "platform/posix/TraceSocket.h"

#include "platform/posix/SystemError.h"

#include <array>
#include <cstdlib>
#include <cstring>

#include <poll.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace nib {

namespace {

struct Header {
    uint32_t kind;
    uint32_t client;
    uint32_t process;
};

bool IsPrivateFolder(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
           (status.st_mode & 077) == 0;
}

/// Empty when there is none.
std::string MailFolder()
{
    const char* given = getenv("XDG_RUNTIME_DIR");
    if (given && *given == '/' && IsPrivateFolder(given)) return given;
    const std::string own = "/tmp/nibpad71-" + std::to_string(geteuid());
    mkdir(own.c_str(), 0700);
    return IsPrivateFolder(own) ? own : std::string();
}

bool Ready(int file, short events, int milliseconds)
{
    pollfd wait{file, events, 0};
    return poll(&wait, 1, milliseconds) > 0;
}

} // namespace

std::optional<TraceAddress> ViewerAddress(uint32_t viewer)
{
    const std::string folder = MailFolder();
    const std::string path = folder + "/qkDebugLog." + std::to_string(viewer);
    TraceAddress address;
    if (folder.empty() || path.size() >= sizeof address.name.sun_path) return std::nullopt;
    address.name.sun_family = AF_UNIX;
    std::memcpy(address.name.sun_path, path.c_str(), path.size() + 1);
    address.size = sizeof address.name;
    return address;
}

TraceSocket TraceSocket::ForClient()
{
    TraceSocket made(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_un any{};
    any.sun_family = AF_UNIX;
    // A family without a name: the system gives one, for the answers to come to.
    if (made && bind(made.Get(), reinterpret_cast<sockaddr*>(&any), sizeof(sa_family_t)) != 0) return TraceSocket(-1);
    return made;
}

TraceSocket TraceSocket::ForViewer(const TraceAddress& address)
{
    TraceSocket made(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    unlink(address.name.sun_path);
    if (!made || bind(made.Get(), reinterpret_cast<const sockaddr*>(&address.name), address.size) != 0) {
        throw SystemFailure(u"The mailbox of the log cannot be made", errno);
    }
    chmod(address.name.sun_path, 0600);
    return made;
}

int TraceSocket::Send(const TraceMessage& message, const TraceAddress& to, int milliseconds) const
{
    Header header{message.kind, message.client, message.process};
    std::array<iovec, 2> parts{
        iovec{&header, sizeof header},
        iovec{const_cast<char*>(message.text.data()), std::min(message.text.size(), TraceMessage::kLongestText)}};
    msghdr mail{};
    mail.msg_name = const_cast<sockaddr_un*>(&to.name);
    mail.msg_namelen = to.size;
    mail.msg_iov = parts.data();
    mail.msg_iovlen = parts.size();
    if (sendmsg(Get(), &mail, MSG_NOSIGNAL) >= 0) return 0;
    if (errno != EAGAIN || milliseconds == 0) return errno;
    // A full mailbox does not make an unconnected socket wait; asking again now and then does.
    constexpr int kPause = 2;
    for (int waited = 0; waited < milliseconds; waited += kPause) {
        poll(nullptr, 0, kPause);
        if (sendmsg(Get(), &mail, MSG_NOSIGNAL) >= 0) return 0;
        if (errno != EAGAIN) return errno;
    }
    return EAGAIN;
}

std::optional<TraceMessage> TraceSocket::Receive(int milliseconds, TraceAddress* from) const
{
    if (!Ready(Get(), POLLIN, milliseconds)) return std::nullopt;
    Header header{};
    TraceMessage message;
    message.text.resize(TraceMessage::kLongestText);
    std::array<iovec, 2> parts{iovec{&header, sizeof header}, iovec{message.text.data(), message.text.size()}};
    TraceAddress sender;
    msghdr mail{};
    mail.msg_name = &sender.name;
    mail.msg_namelen = sizeof sender.name;
    mail.msg_iov = parts.data();
    mail.msg_iovlen = parts.size();
    const ssize_t got = recvmsg(Get(), &mail, 0);
    if (got < static_cast<ssize_t>(sizeof header)) return std::nullopt;
    sender.size = mail.msg_namelen;
    if (from) *from = sender;
    message.kind = header.kind;
    message.client = header.client;
    message.process = header.process;
    message.text.resize(static_cast<size_t>(got) - sizeof header);
    return message;
}

} // namespace nib
