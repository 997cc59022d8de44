#pragma once
#include "hosts/StoredText.h"
#include "hosts/accounts/AccountSession.h"
#include "hosts/accounts/AccountStore.h"
#include "platform/posix/FileLocks.h"

#include <optional>

namespace nib {

/// The account of a path that serves every session.
inline constexpr TextView kAnyAccount{u"*"};

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

    Text ReadItem(int32_t attribute, int32_t value, int32_t subValue) override;
    void WriteItem(int32_t attribute, int32_t value, int32_t subValue, TextView text) override;
    void LockItem(bool lock) override;
    mvSession* Session() override { return session_ ? &*session_ : nullptr; }

private:
    StoredText& Stored();

    AccountStore store_;
    bool readOnly_ = false;
    std::optional<StoredText> stored_; ///< none when the place is not that of an item
    std::optional<AccountSession> session_;
    std::optional<ItemLock> lock_;
};

} // namespace nib
