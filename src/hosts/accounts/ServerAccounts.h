#pragma once
// Folders that a MultiValue server works in, opened in place: what of them is not the editor's to read or write.

#include "base/Text.h"
#include "platform/MessageBoxes.h"

#include <set>
#include <string>

namespace nib {

/// The folder is a file that its server hashes: it holds the parts of one, and no items.
bool IsHashedFile(const std::string& folder);
/// The account is a server's own: its VOC is hashed.
bool IsServerAccount(const std::string& accountFolder);
/// Throws Error when the folder of the file is a hashed one.
void RefuseHashedFile(const std::string& folder, TextView account, TextView file);

/// Tells, once in a run for each account, that a server's locks do not hold for who opens its items in place.
class ServerNotice {
public:
    /// Outlives this.
    explicit ServerNotice(MessageBoxes& boxes) : boxes_(boxes) {}

    void Opened(TextView account, const std::string& accountFolder);

private:
    MessageBoxes& boxes_;
    std::set<std::string> told_; ///< folders of accounts
};

} // namespace nib
