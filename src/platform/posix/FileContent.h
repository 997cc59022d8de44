#pragma once
#include "base/Error.h"
#include "base/Text.h"

#include <cerrno>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace nib {

/// Owns one file descriptor.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Descriptor() { Close(); }

    explicit operator bool() const { return fd_ >= 0; }
    int Get() const { return fd_; }
    /// Answers 0 or the system's error: a close can be what reports a failed write.
    int Close()
    {
        if (fd_ < 0) return 0;
        return close(std::exchange(fd_, -1)) == 0 || errno == EINTR ? 0 : errno;
    }

private:
    int fd_;
};

/// A failed call of the operating system: what could not be done, and the system's reason.
struct SystemFailure : Error {
    SystemFailure(TextView whatFailed, int error);
    int systemError; ///< errno
};

/// Runs `body` and answers the errno that it failed with, 0 when it did not: for what answers codes and does not throw.
template <typename Body>
int SystemErrorOf(Body&& body) noexcept
{
    try {
        std::forward<Body>(body)();
        return 0;
    } catch (const SystemFailure& failure) {
        return failure.systemError;
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    } catch (...) {
        return EINVAL;
    }
}

/// The system's own sentence for an errno.
Text SystemText(int error);

/// What tells one state of a file from another without reading it.
struct FileStamp {
    uint64_t device = 0;
    uint64_t inode = 0;
    int64_t size = -1; ///< -1: there is no file
    int64_t seconds = 0;
    int64_t nanoseconds = 0;
    int64_t changed = 0; ///< nanoseconds; no program can put this one back

    bool Exists() const { return size >= 0; }
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

FileStamp StampOf(const struct stat& status);
/// What cannot be looked at counts as no file; ReadStamp tells the two apart.
FileStamp StampOf(const std::string& path);
/// Answers 0, also for a file that does not exist, or the system's error.
int ReadStamp(const std::string& path, FileStamp& stamp);

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
/// Two contents of one size that differ in a single word have two hashes.
uint64_t HashBytes(std::string_view bytes);
/// Writes all bytes from `offset` on; answers 0 or the system's error.
int WriteAll(int fd, std::string_view bytes, int64_t offset = 0);

} // namespace nib
