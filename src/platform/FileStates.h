#pragma once
#include "base/Text.h"

namespace nib {

/// What stands under a name. Two that are equal tell that the file has not been written in between.
struct FileState {
    enum class Kind { None, File, Folder };

    Kind kind = Kind::None; ///< File is everything that exists and is no folder
    int64_t size = 0;
    uint64_t device = 0;
    uint64_t inode = 0;
    int64_t seconds = 0;
    int64_t nanoseconds = 0;

    friend bool operator==(const FileState&, const FileState&) = default;
};

class FileStates {
public:
    virtual ~FileStates() = default;
    /// Symbolic links are followed.
    virtual FileState StateOf(TextView path) = 0;
};

} // namespace nib
