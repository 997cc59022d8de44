#pragma once
#include "hosts/ItemText.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileSaver.h"

#include <string>
#include <vector>

namespace nib {

/// Accounts as folders below one root: an account is a folder, a MultiValue file a folder in it, an item one file.
/// A small value that each item keeps a copy of, so that items live as long as they like.
class AccountStore {
public:
    AccountStore(Text hostName, std::string root, ItemText coding, FileSaver saver)
        : hostName_(std::move(hostName)), root_(std::move(root)), coding_(std::move(coding)), saver_(std::move(saver))
    {
    }

    const Text& HostName() const { return hostName_; }
    const std::string& Root() const { return root_; }
    const ItemText& Coding() const { return coding_; }
    const FileSaver& Saver() const { return saver_; }

    /// Both throw kPathNotFound, in words for the user, when the folder is not there.
    std::string AccountFolder(TextView account) const;
    std::string FileFolder(TextView account, TextView file) const;
    /// Where the item is or would be.
    std::string ItemFile(TextView account, TextView file, TextView item) const;
    /// The text of an item, for the host's own records; empty when there is none.
    Text ReadRecord(TextView account, TextView file, TextView item) const;

private:
    Text hostName_;
    std::string root_;
    ItemText coding_;
    FileSaver saver_;
};

/// Attribute `number` (1-based) of a text with CR LF between lines.
TextView Attribute(TextView record, int32_t number);

} // namespace nib
