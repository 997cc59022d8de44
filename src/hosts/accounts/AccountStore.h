#pragma once
// Accounts that are folders, and the one that comes with the program.

#include "base/Text.h"
#include "hosts/HostLinks.h"
#include "hosts/ItemText.h"
#include "hosts/NameRules.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileSaver.h"

#include <optional>
#include <string>

namespace nib {

/// Accounts as folders below one root: an account is a folder, a MultiValue file a folder in it, an item one file.
/// A small value that each item keeps a copy of, so that items live as long as they like.
class AccountStore {
public:
    /// Without a rule for ids each account is asked which one it follows.
    AccountStore(Text hostName, std::string root, ItemText coding, FileSaver saver, std::optional<IdRule> ids)
        : hostName_(std::move(hostName)), root_(std::move(root)), coding_(std::move(coding)), saver_(std::move(saver)),
          ids_(ids)
    {
    }

    const Text& HostName() const { return hostName_; }
    const std::string& Root() const { return root_; }
    const ItemText& Coding() const { return coding_; }
    const FileSaver& Saver() const { return saver_; }

    /// Both throw kPathNotFound, in words for the user, when the folder is not there.
    std::string AccountFolder(TextView account) const;
    /// Throws for a hashed file too.
    std::string FileFolder(TextView account, TextView file) const;
    /// Of the items of an account.
    IdRule RuleOf(const std::string& accountFolder) const;
    /// Where the item is or would be.
    std::string ItemFile(TextView account, TextView file, TextView item) const;
    /// The text of an item, for the host's own records; empty when there is none, or only a server can read it.
    Text ReadRecord(TextView account, TextView file, TextView item) const;

private:
    Text hostName_;
    std::string root_;
    ItemText coding_;
    FileSaver saver_;
    std::optional<IdRule> ids_;
};

/// Attribute `number` (1-based) of a text with CR LF between lines.
TextView Attribute(TextView record, int32_t number);

/// Copies the account folder to the default root under its own name, unless an account of that name is there, or the
/// default connection has another root, which may be anybody's. True when it was copied. It appears whole or not at
/// all.
bool InstallSampleAccount(TextView sourceFolder, const HostConfig& config);

} // namespace nib
