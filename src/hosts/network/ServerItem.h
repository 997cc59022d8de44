#pragma once
#include "hosts/HostLinks.h"
#include "hosts/StoredForm.h"
#include "hosts/network/ServerSession.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace nib {

class ServerItem;

/// One account of a server: what its items share.
struct ServerAccount {
    ServerSession items;
    /// Commands run on a connection of their own: a Stop drops that one, and no lock with it.
    ServerSession commands;
    ItemText coding;
    /// Locks of this program are all the server's one session: which of its items has which.
    std::map<std::string, ServerItem*> holders;
};

/// The commands and records of an account.
class ServerCommands : public mvSession {
public:
    explicit ServerCommands(std::shared_ptr<ServerAccount> account) : account_(std::move(account)) {}

    Text AccountName() override { return account_->items.Account(); }
    /// A prompt is answered with the next line of `input`, and ends the command when there is none.
    Text Execute(TextView command, TextView input, int32_t flags) override;
    Text GetConfiguration(TextView key, int32_t attribute) override;
    bool HasConfiguration();
    ServerAccount& Shared() { return *account_; }

private:
    ServerReply ReadVoc(TextView key);

    std::shared_ptr<ServerAccount> account_;
};

/// An item of a server's file.
///
/// The server's locks are advisory. So before each write it is asked whether the lock is this session's own; where it
/// is not, because the connection was lost or locks are switched off, it is taken first and the stored item compared
/// with the one that was read. A changed one is not overwritten before the user knows.
class ServerItem : public mvItem {
public:
    /// `account` may be null for a place above the accounts.
    ServerItem(std::shared_ptr<ServerAccount> account, ItemNames names);
    ~ServerItem() override;

    bool Exists() override;
    bool IsItem() override { return !ItemID().empty(); }
    bool ReadOnly() const override { return readOnly_; }
    void SetReadOnly(bool readOnly) override { readOnly_ = readOnly; }
    bool Supports(int32_t code) override;
    mvSession* Session() override { return session_ ? &*session_ : nullptr; }
    StoredState State() override;
    StoredState StateToSave() override;
    void AcceptState() override { Accept(found_); }
    bool AcceptVersion(TextView version) override;
    Text Version() override { return seen_ == kNone ? Text() : seen_; }
    StoredForm* Form() override { return account_ ? &form_ : nullptr; }
    std::optional<int64_t> StoredSize() override { return size_; }

    Text ReadItem(int32_t attribute, int32_t value, int32_t subValue) override;
    ReadText ReadWhole() override;
    void WriteItem(int32_t attribute, int32_t value, int32_t subValue, TextView text) override;
    void LockItem(bool lock) override;
    bool HoldsLock() const override;
    Text LockHolder() override;
    /// In a login after the one that it was locked in: locks it again, if nobody else has by now, and finds out whether
    /// it was changed meanwhile. Tried once in a login; never connects for that.
    void LockAgain() noexcept;

private:
    static constexpr TextView kNone{u"-"}; ///< a version: there is no such item

    ServerAccount& Account();
    std::string File() const;
    std::string Id() const;
    std::string LockKey();
    /// Reads it, under the lock if wanted. Throws kLocked.
    void Fetch(bool lock, TextView doing);
    void Found(ServerReply reply);
    /// Throws kLocked.
    ServerReply TakeLock();
    /// Calls decode(bytes) with what is stored.
    template <typename Decode>
    auto Reading(Decode&& decode);
    [[noreturn]] void RefuseLocked(const Text& who);
    /// That is what the text was read from, or written to.
    void Accept(const Text& version);
    /// The lock is this session's own when it returns; then `found_` is what a write replaces.
    void ProveLock();
    void CheckStorable(std::string_view bytes);
    void Store(const std::string& bytes);
    void Release() noexcept;

    std::shared_ptr<ServerAccount> account_;
    std::optional<ServerCommands> session_;
    StoredForm form_;
    bool readOnly_ = false;
    bool lockWanted_ = false;
    int64_t lockedIn_ = 0; ///< the login that holds the lock, 0 when none does
    int64_t triedIn_ = 0;  ///< the login in which it was tried to lock it again
    std::string lockKey_;
    std::optional<std::string> fetched_; ///< not yet handed out
    Text seen_;                          ///< version of what was read or written last; empty before
    Text found_;                         ///< version of what was found stored last
    std::optional<int64_t> size_;        ///< of what was found stored last, in bytes
    Text told_;                          ///< version that a write was refused for
    Text tried_;                         ///< version of what may have been stored by a write without an answer
};

} // namespace nib
