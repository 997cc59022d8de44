#include "hosts/network/ServerItem.h"

#include "diagnostics/Guarded.h"
#include "hosts/SeenFile.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <thread>

namespace nib {

namespace {

constexpr std::string_view kVoc{"VOC"};
constexpr std::string_view kDirectory{"4"};
constexpr int32_t kOwnUpdateLock = 2;
constexpr int32_t kMostTries = 3;
constexpr std::chrono::seconds kGhostLimit{10};
constexpr std::chrono::milliseconds kGhostStep{100};

Text VersionOf(std::string_view bytes)
{
    return SeenFile(FileStamp(), bytes).Version();
}

/// A printed text as lines; what no text can hold is a blank.
Text Printed(const ItemText& coding, std::string bytes)
{
    std::replace(bytes.begin(), bytes.end(), '\0', ' ');
    std::replace(bytes.begin(), bytes.end(), '\n', kFieldMark);
    TextForm form;
    return coding.Decode(bytes, form, u"The output");
}

} // namespace

Text ServerCommands::Execute(TextView command, TextView input, int32_t)
{
    ServerSession& session = account_->commands;
    const ServerWait::Scope scope(session.Wait(), command);
    std::string lines = ToFileName(input);
    std::erase(lines, '\r');
    std::replace(lines.begin(), lines.end(), '\n', kFieldMark);
    bool prompted = false;
    try {
        Text output = Printed(account_->coding, session.Execute(ToFileName(command), lines, prompted));
        if (prompted) output += u"\r\n(The command asked for input, and was ended.)";
        return output;
    } catch (const WaitEnded&) {
        // What runs cannot be interrupted but by the end of its connection.
        session.Drop();
        return Text(command) + u" was stopped.";
    }
}

ServerReply ServerCommands::ReadVoc(TextView key)
{
    ServerSession& session = account_->items;
    const ServerWait::Scope scope(session.Wait(), u"Reading " + Text(key) + u" of the VOC");
    return session.OnItem(std::string(kVoc), ServerAction::Read, ToFileName(key));
}

Text ServerCommands::GetConfiguration(TextView key, int32_t attribute)
{
    const ServerReply reply = ReadVoc(key);
    if (reply.result != ServerResult::Done) return {};
    std::string_view rest = reply.data;
    while (--attribute > 0 && !rest.empty()) rest.remove_prefix(std::min(rest.find(kFieldMark), rest.size() - 1) + 1);
    return Printed(account_->coding, std::string(rest.substr(0, rest.find(kFieldMark))));
}

bool ServerCommands::HasConfiguration()
{
    return ReadVoc(u"NIB").result == ServerResult::Done;
}

ServerItem::ServerItem(std::shared_ptr<ServerAccount> account, ItemNames names)
    : mvItem(std::move(names)), account_(std::move(account)),
      form_(account_ ? account_->coding : ItemText::ForServer(Charset(), false), DisplayPath())
{
    if (account_) session_.emplace(account_);
}

ServerItem::~ServerItem()
{
    Release();
}

ServerAccount& ServerItem::Account()
{
    if (!account_ || ItemID().empty())
        throw Error(error_number::kStorage, u"\"" + DisplayPath() + u"\" is not an item.");
    return *account_;
}

std::string ServerItem::File() const
{
    return ToFileName(Folder());
}

std::string ServerItem::Id() const
{
    return ToFileName(ItemID());
}

bool ServerItem::Exists()
{
    if (!IsItem()) return false;
    if (found_.empty()) IgnoringErrors([&] { Fetch(false, u"Looking for "); });
    return found_ != kNone; // what cannot be looked at is there: reading it tells what is wrong
}

bool ServerItem::Supports(int32_t code)
{
    if (!session_) return false;
    if (code == kSupportsExecute) return true;
    return code == kSupportsConfiguration && session_->HasConfiguration();
}

StoredState ServerItem::State()
{
    if (found_ == seen_ || (!tried_.empty() && found_ == tried_)) return StoredState::Same;
    return found_ == kNone ? StoredState::Gone : StoredState::Changed;
}

StoredState ServerItem::StateToSave()
{
    if (found_.empty()) return StoredState::Same; // it has never been looked at
    ProveLock();
    const StoredState state = State();
    if (!lockWanted_) Release();
    return state;
}

void ServerItem::Accept(const Text& version)
{
    seen_ = version;
    told_.clear();
}

bool ServerItem::AcceptVersion(TextView version)
{
    Fetch(false, u"Reading ");
    fetched_.reset();
    if (found_ != version) return false;
    Accept(found_);
    tried_.clear();
    return true;
}

void ServerItem::Found(ServerReply reply)
{
    const bool none = reply.result == ServerResult::NotFound;
    // An id that the file cannot hold is answered with nothing at all, as if that were the item.
    if (!none && (reply.result != ServerResult::Done || reply.status != 0))
        throw Error(error_number::kStorage, DisplayPath() + u" cannot be read: " + ServerRefusal(reply) + u".");
    fetched_.reset();
    found_ = none ? Text(kNone) : VersionOf(reply.data);
    size_ = none ? std::nullopt : std::optional(static_cast<int64_t>(reply.data.size()));
    if (!none) fetched_ = std::move(reply.data);
    if (seen_.empty()) seen_ = found_;
}

void ServerItem::Fetch(bool lock, TextView doing)
{
    ServerSession& session = Account().items;
    const ServerWait::Scope scope(session.Wait(), Text(doing) + DisplayPath());
    if (!lock) return Found(session.OnItem(File(), ServerAction::Read, Id()));
    const std::string key = LockKey();
    if (const auto holder = account_->holders.find(key); holder != account_->holders.end() && holder->second != this)
        throw Error(error_number::kLocked, DisplayPath() + u" is open in another window.");
    ServerReply reply = TakeLock();
    // It is locked too when it is not there.
    lockedIn_ = session.Login();
    account_->holders[lockKey_ = key] = this;
    try {
        Found(std::move(reply));
    } catch (...) {
        Release();
        throw;
    }
}

ServerReply ServerItem::TakeLock()
{
    ServerSession& session = account_->items;
    const auto end = std::chrono::steady_clock::now() + kGhostLimit;
    int32_t tries = 0;
    for (;;) {
        ServerReply reply = session.OnItem(File(), ServerAction::ReadLocked, Id());
        if (reply.result != ServerResult::Locked) return reply;
        if (session.IsOwnGhost(reply.status) && std::chrono::steady_clock::now() < end) {
            // A server that has been sent much takes it all in before it sees that nobody is there any more.
            session.Wait().Step(WaitStage::Pending);
            std::this_thread::sleep_for(kGhostStep);
            continue;
        }
        // Nobody by now: it has just been let go, as a server does with the locks of a lost connection.
        const Text who = OrDefault([&] { return LockHolder(); }, Text());
        if (!who.empty() || ++tries == kMostTries) RefuseLocked(who);
    }
}

/// Two names of one file are one file to the server's locks.
std::string ServerItem::LockKey()
{
    return Account().items.PathOf(File()) + '\0' + Id();
}

void ServerItem::RefuseLocked(const Text& who)
{
    if (!who.empty()) throw Error(error_number::kLocked, DisplayPath() + u" is locked." + HeldBy(who));
    throw Error(error_number::kStorage, DisplayPath() + u" cannot be locked: the server's table of locks is full.");
}

Text ServerItem::LockHolder()
{
    ServerSession& session = Account().items;
    const ServerWait::Scope scope(session.Wait(), u"Asking who holds " + DisplayPath());
    if (const auto own = account_->holders.find(LockKey()); own != account_->holders.end() && own->second != this)
        return u"this program, in another window";
    const ServerReply reply = session.OnItem(File(), ServerAction::LockState, Id());
    if (reply.result != ServerResult::Done || LongAt(reply.data, 0).value_or(0) >= 0) return {};
    if (session.IsOwnGhost(reply.status))
        return u"a lost connection of this very program, until the server clears it away";
    return session.UserOf(reply.status);
}

template <typename Decode>
auto ServerItem::Reading(Decode&& decode)
{
    if (!fetched_) Fetch(false, u"Reading ");
    if (!fetched_) throw Error(error_number::kFileNotFound, DisplayPath() + u" does not exist.");
    auto text = decode(*std::exchange(fetched_, std::nullopt));
    Accept(found_);
    tried_.clear();
    return text;
}

Text ServerItem::ReadItem(int32_t, int32_t, int32_t)
{
    return Reading([this](const std::string& bytes) { return form_.Decode(bytes); });
}

ReadText ServerItem::ReadWhole()
{
    return Reading([this](std::string bytes) {
        const auto owner = std::make_shared<std::string>(std::move(bytes));
        return form_.Read({owner, owner->data(), owner->size(), nullptr});
    });
}

void ServerItem::LockItem(bool lock)
{
    lockWanted_ = lock;
    if (!lock) return Release();
    if (!HoldsLock()) Fetch(true, u"Locking ");
}

void ServerItem::LockAgain() noexcept
{
    const int64_t login = account_->items.Login();
    if (login == 0 || !lockWanted_ || lockedIn_ == 0 || lockedIn_ == login || triedIn_ == login) return;
    IgnoringErrors([&] {
        const auto failure = FailureOf([&] {
            Fetch(true, u"Locking ");
            fetched_.reset();
        });
        if (!failure || IsLocked(*failure)) triedIn_ = login; // else something else was waited for
    });
}

bool ServerItem::HoldsLock() const
{
    return lockedIn_ != 0 && account_->items.Login() == lockedIn_;
}

void ServerItem::Release() noexcept
{
    if (lockedIn_ == 0) return;
    account_->items.Release(File(), Id(), lockedIn_);
    IgnoringErrors([&] {
        if (const auto own = account_->holders.find(lockKey_); own != account_->holders.end() && own->second == this)
            account_->holders.erase(own);
    });
    lockedIn_ = 0;
}

void ServerItem::ProveLock()
{
    ServerSession& session = Account().items;
    const ServerWait::Scope scope(session.Wait(), u"Saving " + DisplayPath());
    if (HoldsLock()) {
        const ServerReply reply = session.OnItem(File(), ServerAction::LockState, Id());
        if (HoldsLock() && reply.result == ServerResult::Done && LongAt(reply.data, 0) == kOwnUpdateLock) return;
    }
    const bool lost = lockedIn_ != 0;
    try {
        Fetch(true, u"Locking ");
        fetched_.reset();
    } catch (const Error& error) {
        if (!lost || !IsLocked(error)) throw;
        throw Error(error.number, u"The lock of " + DisplayPath() + u" was lost. " + error.description);
    }
}

void ServerItem::CheckStorable(std::string_view bytes)
{
    const auto refuse = [&](TextView why) {
        throw Error(error_number::kStorage, DisplayPath() + u" cannot be saved: " + Text(why));
    };
    if (bytes.size() + Id().size() > kLargestItem) refuse(u"the server takes 99,999,995 bytes at most.");
    const size_t feed = bytes.find('\n');
    if (feed == std::string_view::npos || account_->items.FileType(File()) != kDirectory) return;
    const auto line = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(feed), kFieldMark) + 1;
    refuse(u"line " + Decimal(line) + u" holds a line feed, and a directory file would make two lines of it.");
}

void ServerItem::WriteItem(int32_t, int32_t, int32_t, TextView text)
{
    Account();
    const std::string bytes = form_.Encode(text);
    const ServerWait::Scope scope(account_->items.Wait(), u"Saving " + DisplayPath());
    CheckStorable(bytes);
    ProveLock();
    if (const StoredState state = State(); state != StoredState::Same && found_ != told_) {
        const bool gone = state == StoredState::Gone;
        told_ = found_;
        if (!lockWanted_) Release();
        throw Error(error_number::kStorage, DisplayPath() + (gone ? u" was deleted" : u" was changed") +
                                                u" on the server since it was opened. Save it again to " +
                                                (gone ? u"make it anew." : u"replace it."));
    }
    Store(bytes);
}

void ServerItem::Store(const std::string& bytes)
{
    tried_ = VersionOf(bytes);
    ServerReply reply;
    try {
        reply = account_->items.Write(File(), Id(), bytes, lockWanted_, lockedIn_);
    } catch (const StreamEnded& ended) {
        throw StreamEnded(ended.description + u" Whether " + DisplayPath() +
                          u" is stored is not known. It stays open and changed; saving it again connects again and "
                          u"finds out.");
    }
    if (reply.result != ServerResult::Done || reply.status != 0) {
        tried_.clear();
        if (!lockWanted_) Release();
        throw Error(error_number::kStorage, DisplayPath() + u" cannot be saved: " + ServerRefusal(reply) + u".");
    }
    Accept(found_ = tried_);
    size_ = static_cast<int64_t>(bytes.size());
    tried_.clear();
    fetched_.reset();
    if (!lockWanted_) Release(); // it has ended with the write
}

} // namespace nib
