#pragma once
// Accounts that are folders, and the one that comes with the program.

#include "base/Text.h"
#include "hosts/ItemText.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileSaver.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nib {

// Names of accounts, files and items as names of folders and files: whatever a file system cannot hold or would take
// for something else is percent-encoded, so that no id leads out of its folder.

/// "/" and "%", a leading "." and control characters become %XX.
std::string EncodeName(TextView id);
/// Both names in one, never the same for two items: in an encoded name digits follow each "%".
std::string LockName(TextView file, TextView item);
/// The id behind a name as EncodeName makes it; any other visible name stands for itself ("50%", made by another
/// program). No answer for names that belong to no item, those with a leading dot.
std::optional<Text> DecodeName(std::string_view name);
/// The name that `id` goes by in `folder`: the encoded one, unless only the plain one is there. Throws Error when it is
/// too long for a file name.
std::string FindName(const std::string& folder, TextView id);

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

/// Copies the account folder to the accounts' root under its own name, unless an account of that name is there. True
/// when it was copied. It appears whole or not at all.
bool InstallSampleAccount(TextView sourceFolder, TextView accountsRoot);

} // namespace nib
