#pragma once
#include "platform/posix/Descriptor.h"

#include <chrono>
#include <string>

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

} // namespace nib
