#pragma once
#include "base/Text.h"
#include "platform/posix/Descriptor.h"

#include <string>

namespace nib {

/// The update lock of one item, held between processes and users until the object dies, or the process does, however
/// it dies: a kernel lock on a file of its own in the account's folder ".locks". That folder is open to everybody and
/// sticky, so that the accounts of one root can be shared. A program that is run does not inherit the lock.
class ItemLock {
public:
    /// Throws kLocked when somebody has it, this process included, and kNoUpdate when the account can hold no locks.
    /// `name` is a file name of the item's own within the account, `display` names the item in messages.
    ItemLock(const std::string& accountFolder, const std::string& name, TextView display);
    ItemLock(const ItemLock&) = delete;
    ItemLock& operator=(const ItemLock&) = delete;
    ~ItemLock();

    /// "user on host (process number)" of who has the lock, empty when nobody has; takes none.
    static Text Holder(const std::string& accountFolder, const std::string& name);

private:
    std::string path_;
    Descriptor file_;
};

} // namespace nib
