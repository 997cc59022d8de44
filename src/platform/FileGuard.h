#pragma once
#include "base/Text.h"

#include <memory>

namespace nib {

/// Keeps running copies of the program from changing the same small file at the same time.
class FileGuard {
public:
    /// Ends with the object, or with the process, however that ends.
    class Hold {
    public:
        virtual ~Hold() = default;
    };

    virtual ~FileGuard() = default;
    /// Waits a moment for whoever has the file. Never fails: a copy that hangs, or a folder that can hold no lock, must
    /// not keep the user's settings from being saved. Holds do not nest.
    virtual std::unique_ptr<Hold> HoldFile(TextView path) = 0;
};

} // namespace nib
