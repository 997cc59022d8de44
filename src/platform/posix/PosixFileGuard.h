#pragma once
#include "platform/FileGuard.h"

#include <chrono>

namespace nib {

/// A kernel lock on the folder that really holds the file: it leaves nothing behind, and outlives the replacement of
/// the file, which a lock on the file itself would not.
class PosixFileGuard : public FileGuard {
public:
    explicit PosixFileGuard(std::chrono::milliseconds patience = std::chrono::milliseconds{500}) : patience_(patience)
    {
    }

    std::unique_ptr<Hold> HoldFile(TextView path) override;

private:
    std::chrono::milliseconds patience_;
};

} // namespace nib
