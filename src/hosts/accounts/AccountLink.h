#pragma once
#include "hosts/HostLinks.h"
#include "hosts/StoredText.h"
#include "hosts/accounts/AccountSession.h"
#include "hosts/accounts/AccountStore.h"
#include "platform/posix/FileLocks.h"

#include <functional>
#include <optional>

namespace nib {

/// An item of an account, or one of the places above it.
class AccountItem : public mvItem {
public:
    /// Throws kPathNotFound when the account or the file is missing. `sessionAccount` is the account of commands, and
    /// that of a file whose path names none or any; empty when there is none.
    AccountItem(const AccountStore& store, ItemPlace place, const Text& sessionAccount, const VerbPrograms& programs);

    bool Exists() override { return stored_ && stored_->Exists(); }
    bool IsItem() override { return stored_ && !stored_->IsFolder(); }
    bool ReadOnly() const override { return readOnly_ || (stored_ && stored_->IsProtected()); }
    void SetReadOnly(bool readOnly) override { readOnly_ = readOnly; }
    bool Supports(int32_t code) override;
    StoredState State() override { return stored_ ? stored_->State() : StoredState::Same; }
    void AcceptState() override
    {
        if (stored_) stored_->AcceptState();
    }
    bool AcceptVersion(TextView version) override { return !stored_ || stored_->AcceptVersion(version); }
    Text Version() override { return stored_ ? stored_->Version() : Text(); }
    StoredForm* Form() override { return stored_ ? &stored_->Form() : nullptr; }
    std::optional<int64_t> StoredSize() override { return stored_ ? stored_->Size() : std::nullopt; }
    std::string StoredFile() const override { return stored_ ? stored_->Path() : std::string(); }

    Text ReadItem(int32_t attribute, int32_t value, int32_t subValue) override;
    ReadText ReadWhole() override { return Stored().ReadWhole(); }
    void WriteItem(int32_t attribute, int32_t value, int32_t subValue, TextView text) override;
    void WriteWhole(const LinewiseText& text, const Elsewhere& elsewhere) override { Stored().Write(text, elsewhere); }
    void LockItem(bool lock) override;
    bool HoldsLock() const override { return lock_.has_value(); }
    Text LockHolder() override;
    mvSession* Session() override { return session_ ? &*session_ : nullptr; }

private:
    StoredText& Stored();

    AccountStore store_;
    bool readOnly_ = false;
    std::optional<StoredText> stored_; ///< none when the place is not that of an item
    std::optional<AccountSession> session_;
    std::optional<ItemLock> lock_;
};

/// Told of each item that is opened to be written: its account, and the folder of that.
using AccountOpened = std::function<void(TextView account, const std::string& accountFolder)>;

/// The built-in host: accounts that are folders.
class AccountLink : public HostLink {
public:
    AccountLink(const HostSettings& settings, const FileSaver& saver, VerbPrograms programs, AccountOpened opened);

    Text HostName() const override { return store_.HostName(); }
    std::shared_ptr<mvItem> Open(const ItemPlace& place, bool readOnly, bool lock) override;
    std::vector<BrowseEntry> Children(const ItemPlace& place) override;
    bool FileExists(TextView account, TextView file) override;
    bool ItemExists(const ItemPlace& place) override;
    Text LockHolder(const ItemPlace& place) override;
    std::unique_ptr<ItemReader> Reader(const ItemPlace& account) override;
    Text Test() override;

private:
    bool AccountExists(TextView account) const;
    /// The account that a place without one is in, as a server puts a session into one: what is configured, else the
    /// one used last, else the only one there is. Empty when none of them exists.
    Text DefaultAccount();

    AccountStore store_;
    Text configuredAccount_;
    Text programRules_;
    Text lastAccount_;
    VerbPrograms programs_;
    AccountOpened opened_;
};

/// The kind "accounts"; verbs run with `programs`.
HostLinkKinds AccountLinks(VerbPrograms programs, AccountOpened opened = {});

} // namespace nib
