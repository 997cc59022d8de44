#pragma once
#include "base/Text.h"
#include "platform/Desktop.h"
#include "platform/posix/FileContent.h"

#include <chrono>
#include <string>
#include <vector>

namespace nib {

/// Keeps running copies of the program from changing the same small file at the same time: a kernel lock on the folder
/// that really holds it. It leaves nothing behind, ends with the process, however that ends, and outlives the
/// replacement of the file, which a lock on the file itself would not.
class FileHold {
public:
    /// Waits so long for whoever has the file, then goes on without: a copy that hangs, or a folder that can hold no
    /// lock, must not keep the user's settings from being saved. Holds do not nest.
    FileHold(const std::string& path, std::chrono::milliseconds patience);

private:
    Descriptor folder_;
};

/// The update lock of one item, held between processes and users until the object dies, or the process does, however
/// it dies: a kernel lock on a file of its own in the account's folder ".locks". That folder is open to everybody and
/// sticky, so that the accounts of one root can be shared. A symbolic link in its place is refused: what it leads to is
/// somebody else's. A program that is run does not inherit the lock.
class ItemLock {
public:
    /// Throws kLocked when somebody has it, this process included, and kNoUpdate when the account can hold no locks.
    /// `name` is a file name of the item's own within the account, `display` names the item in messages.
    ItemLock(const std::string& accountFolder, const std::string& name, TextView display);
    ItemLock(const ItemLock&) = delete;
    ItemLock& operator=(const ItemLock&) = delete;
    ~ItemLock();

    /// "user on host (process number)" of who has the lock, or "this program", empty when nobody has; takes none.
    static Text Holder(const std::string& accountFolder, const std::string& name);

private:
    Descriptor folder_;
    std::string name_;
    Descriptor file_;
};

/// A number is held by an open lock on a file named after it, so that the kernel gives it back however the program
/// ends.
class PosixSessionToken : public SessionToken {
public:
    /// Locks go to each of the folders that can hold them, and a number that is locked in one of them is alive: copies
    /// that were started from different places may not know the same folders, and not every file system has locks. The
    /// folders are made when they are first needed. `pick` chooses numbers at random.
    explicit PosixSessionToken(std::vector<std::string> folders, std::function<uint32_t()> pick = RandomNumber);
    PosixSessionToken(const PosixSessionToken&) = delete;
    PosixSessionToken& operator=(const PosixSessionToken&) = delete;
    ~PosixSessionToken() override;

    uint32_t Take(const std::function<bool(uint32_t)>& isUsed) override;
    bool IsAlive(uint32_t number) override;

    /// Below the user's data and, where there is one, in the folder of the login session.
    static std::vector<std::string> UsualFolders();

private:
    struct HeldLock {
        std::string path;
        Descriptor file;
    };

    static uint32_t RandomNumber();
    bool TakeNumber(uint32_t number);
    void Release();

    std::vector<std::string> folders_;
    std::function<uint32_t()> pick_;
    std::vector<HeldLock> locks_;
};

} // namespace nib
