#include "platform/posix/PosixTraceMailbox.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr int32_t kUsedWord = 0;
constexpr int32_t kCapacityWord = 1;
constexpr int32_t kFirstSlot = 2;
constexpr int kLongestWait = 100; ///< milliseconds
constexpr auto kBetweenTries = std::chrono::seconds(1);
constexpr int32_t kMostClients = 251;
constexpr int kMostLateAnswers = 100;

size_t BytesFor(int32_t capacity)
{
    return static_cast<size_t>(capacity + kFirstSlot) * sizeof(uint32_t);
}

Error WrongBlock()
{
    return {error_number::kSubscript, u"The block of the debug log is of another size."};
}

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

/// To a few milliseconds: it is looked at with every line as long as there is no block, and must cost next to nothing.
std::chrono::nanoseconds Now()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

} // namespace

bool TraceBlock::Open(const std::string& name, int32_t capacity)
{
    if (name.empty() || capacity < 1) return false;
    Close();
    const std::string path = "/" + name;
    Descriptor file(shm_open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    struct stat status {};
    // Whoever else may write here could make this program talk to a viewer of his.
    if (!file || fstat(file.Get(), &status) != 0 || status.st_uid != geteuid() || (status.st_mode & 077) != 0) {
        return false;
    }
    const bool made = status.st_size == 0;
    if (made && ftruncate(file.Get(), static_cast<off_t>(BytesFor(capacity))) != 0) return false;
    if (!made && static_cast<size_t>(status.st_size) != BytesFor(capacity)) throw WrongBlock();
    void* at = mmap(nullptr, BytesFor(capacity), PROT_READ | PROT_WRITE, MAP_SHARED, file.Get(), 0);
    if (at == MAP_FAILED) return false;
    words_ = static_cast<uint32_t*>(at);
    capacity_ = capacity;
    Check(capacity, made);
    return true;
}

void TraceBlock::Check(int32_t capacity, bool made)
{
    // Another process may have made it this moment and not have come to its capacity yet.
    if (made || Load(kCapacityWord) == 0) Store(kCapacityWord, static_cast<uint32_t>(capacity));
    if (Load(kCapacityWord) == static_cast<uint32_t>(capacity) && Load(kUsedWord) <= Load(kCapacityWord)) return;
    Close();
    throw WrongBlock();
}

void TraceBlock::Close()
{
    if (words_) munmap(words_, BytesFor(capacity_));
    words_ = nullptr;
}

uint32_t TraceBlock::Load(int32_t word) const
{
    return std::atomic_ref<uint32_t>(words_[word]).load(std::memory_order_relaxed);
}

void TraceBlock::Store(int32_t word, uint32_t value)
{
    std::atomic_ref<uint32_t>(words_[word]).store(value, std::memory_order_release);
}

int32_t TraceBlock::Used() const
{
    if (!words_) return 0;
    const uint32_t used = Load(kUsedWord);
    return used > static_cast<uint32_t>(capacity_) ? capacity_ : static_cast<int32_t>(used);
}

bool TraceBlock::Read(int32_t slot, uint32_t& value) const
{
    if (slot < 0 || slot >= Used()) return false;
    value = Load(kFirstSlot + slot);
    return true;
}

void TraceBlock::Write(int32_t slot, uint32_t value)
{
    if (!words_ || slot < 0 || slot >= capacity_) return;
    Store(kFirstSlot + slot, value);
    if (slot >= Used()) Store(kUsedWord, static_cast<uint32_t>(slot + 1));
}

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

PosixTraceMailbox::PosixTraceMailbox(TextView programName)
    : programName_(ToUtf8(programName)), socket_(TraceSocket::ForClient())
{
}

bool PosixTraceMailbox::OpenDebugMemory(TextView name, int32_t capacity)
{
    // The log asks at every line; a system without shared memory must not slow the program down.
    if (!socket_ || Now() < nextTry_) return false;
    nextTry_ = Now() + kBetweenTries;
    if (!block_.Open(ToUtf8(name), capacity)) return false;
    nextTry_ = {};
    return true;
}

bool PosixTraceMailbox::Mail(uint32_t viewer, const TraceMessage& message)
{
    if (viewer == deadViewer_) return false;
    const auto address = ViewerAddress(viewer);
    if (!address) return false;
    const int failure = socket_.Send(message, *address, slow_ ? 0 : kLongestWait);
    slow_ = failure == EAGAIN;
    if (failure == ECONNREFUSED || failure == ENOENT) deadViewer_ = viewer;
    return failure == 0;
}

int32_t PosixTraceMailbox::Register(uint32_t viewer)
{
    if (viewer == deadViewer_ || Now() < nextTry_) return 0;
    nextTry_ = Now() + kBetweenTries;
    // Late answers to earlier questions; more than these come from something that is no viewer.
    for (int i = 0; i < kMostLateAnswers && socket_.Receive(0); ++i) {
    }
    TraceMessage hello{trace_message::kRegister, 0, static_cast<uint32_t>(getpid()), programName_};
    if (!Mail(viewer, hello)) return 0;
    const auto answer = socket_.Receive(kLongestWait);
    if (!answer || answer->kind != trace_message::kRegister || answer->client < 1 || answer->client > kMostClients) {
        return 0;
    }
    nextTry_ = {};
    return static_cast<int32_t>(answer->client);
}

void PosixTraceMailbox::Send(uint32_t viewer, int32_t client, TextView text)
{
    text = text.substr(0, TraceMessage::kLongestText);
    Mail(viewer, {trace_message::kLine, static_cast<uint32_t>(client), static_cast<uint32_t>(getpid()), ToUtf8(text)});
}

} // namespace nib
