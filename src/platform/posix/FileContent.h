#pragma once
#include "base/Text.h"

#include <memory>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace nib {

/// What tells one state of a file from another without reading it.
struct FileStamp {
    uint64_t device = 0;
    uint64_t inode = 0;
    int64_t size = -1; ///< -1: there is no file
    int64_t seconds = 0;
    int64_t nanoseconds = 0;

    bool Exists() const { return size >= 0; }
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

FileStamp StampOf(const struct stat& status);
FileStamp StampOf(const std::string& path);

/// Both follow symbolic links.
bool IsFolder(const std::string& path);
bool IsPlainFile(const std::string& path);

/// The whole of a file, read at one go.
struct FileContent {
    std::unique_ptr<char[]> data;
    size_t size = 0;
    FileStamp stamp;

    std::string_view Bytes() const { return {data.get(), size}; }
};

/// What a folder holds.
struct FolderEntry {
    std::string name;
    bool isFolder = false;
    bool readOnly = false;
    int64_t size = -1;     ///< -1: not asked
    int64_t modified = -1; ///< seconds since the epoch, -1: not asked
};

/// Adds the folders and plain files of a folder, in no order; links count as what they lead to. In a large folder no
/// file is looked at beyond its folder entry, so that it opens at once. Answers 0 or the system's error.
int ListFolder(const std::string& folder, std::vector<FolderEntry>& entries);

inline constexpr size_t kLargestText = size_t{1} << 30;

/// Throws SystemFailure, also for what is no plain file, and Error for a file above `limit` bytes.
FileContent ReadWholeFile(const std::string& path, size_t limit = kLargestText);
/// Writes all bytes from `offset` on; answers 0 or the system's error.
int WriteAll(int fd, std::string_view bytes, int64_t offset = 0);

} // namespace nib
