#pragma once
// A number is held by an open lock on a file named after it, so that the kernel gives it back however the program ends.

#include "platform/SessionToken.h"
#include "platform/posix/Descriptor.h"

#include <string>
#include <vector>

namespace nib {

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
