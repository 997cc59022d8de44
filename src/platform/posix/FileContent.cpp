#include "platform/posix/FileContent.h"

#include "platform/posix/FileName.h"

#include <bit>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/mman.h>

namespace nib {

namespace {

constexpr size_t kMostDetails = 1000;

[[noreturn]] void Refuse(const std::string& path, int error)
{
    throw SystemFailure(FromFileName(path) + u" cannot be read", error);
}

void CheckSize(const std::string& path, size_t size, size_t limit)
{
    if (size <= limit) return;
    throw Error(error_number::kStorage, FromFileName(path) + u" is too large: files up to " +
                                            Decimal(static_cast<int64_t>(limit >> 20)) + u" MB can be edited.");
}

/// Filling a large block is a third faster without a fault for each 4 KiB.
void AskForLargePages(char* block, size_t size)
{
    constexpr size_t kLarge = size_t{1} << 21;
    void* at = block;
    size_t room = size;
    if (std::align(kLarge, kLarge, at, room)) madvise(at, room / kLarge * kLarge, MADV_HUGEPAGE);
}

} // namespace

SystemFailure::SystemFailure(TextView whatFailed, int error)
    : Error(error_number::kStorage, Text(whatFailed) + u": " + SystemText(error)), systemError(error)
{
}

Text SystemText(int error)
{
    char buffer[256] = {};
    return FromUtf8(strerror_r(error, buffer, sizeof buffer));
}

FileStamp StampOf(const struct stat& status)
{
    return {static_cast<uint64_t>(status.st_dev),
            static_cast<uint64_t>(status.st_ino),
            static_cast<int64_t>(status.st_size),
            static_cast<int64_t>(status.st_mtim.tv_sec),
            static_cast<int64_t>(status.st_mtim.tv_nsec),
            static_cast<int64_t>(status.st_ctim.tv_sec) * 1'000'000'000 + status.st_ctim.tv_nsec};
}

FileStamp StampOf(const std::string& path)
{
    FileStamp stamp;
    ReadStamp(path, stamp);
    return stamp;
}

int ReadStamp(const std::string& path, FileStamp& stamp)
{
    struct stat status {};
    const int error = stat(path.c_str(), &status) == 0 ? 0 : errno;
    stamp = error == 0 ? StampOf(status) : FileStamp{};
    return error == ENOENT ? 0 : error;
}

bool IsFolder(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsPlainFile(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

int ListFolder(const std::string& folder, std::vector<FolderEntry>& entries)
{
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::error_code unknown;
        const bool isFolder = it->is_directory(unknown);
        if (isFolder || it->is_regular_file(unknown)) entries.push_back({it->path().filename().string(), isFolder});
    }
    if (entries.size() > kMostDetails) return error.value();
    for (FolderEntry& entry : entries) {
        const std::string path = folder + "/" + entry.name;
        struct stat status {};
        if (stat(path.c_str(), &status) != 0) continue;
        entry.size = status.st_size;
        entry.modified = status.st_mtim.tv_sec;
        entry.readOnly = faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0;
    }
    return error.value();
}

FileContent ReadWholeFile(const std::string& path, size_t limit)
{
    // A pipe must not block the program before it is known to be one.
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || fstat(file.Get(), &status) != 0) Refuse(path, errno);
    if (S_ISDIR(status.st_mode)) Refuse(path, EISDIR);
    if (!S_ISREG(status.st_mode)) throw Error(error_number::kStorage, FromFileName(path) + u" is not a plain file.");

    FileContent content;
    content.stamp = StampOf(status);
    CheckSize(path, static_cast<size_t>(status.st_size), limit);
    // One byte more than expected, so that the end is seen without a second buffer.
    size_t room = static_cast<size_t>(status.st_size) + 1;
    content.data = std::make_unique_for_overwrite<char[]>(room);
    AskForLargePages(content.data.get(), room);
    for (;;) {
        const ssize_t n = read(file.Get(), content.data.get() + content.size, room - content.size);
        if (n == 0) return content;
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) Refuse(path, errno);
        content.size += static_cast<size_t>(n);
        CheckSize(path, content.size, limit);
        if (content.size < room) continue;
        room = room * 2 + 4096;
        auto larger = std::make_unique_for_overwrite<char[]>(room);
        std::memcpy(larger.get(), content.data.get(), content.size);
        content.data = std::move(larger);
    }
}

uint64_t HashBytes(std::string_view bytes)
{
    // Each step can be undone, so no word is lost.
    constexpr uint64_t kOdd = 0x9E3779B97F4A7C15;
    uint64_t hash = bytes.size();
    size_t at = 0;
    for (uint64_t word = 0; at + sizeof word <= bytes.size(); at += sizeof word) {
        std::memcpy(&word, bytes.data() + at, sizeof word);
        hash = std::rotl((hash ^ word) * kOdd, 29);
    }
    for (; at < bytes.size(); ++at) hash = std::rotl((hash ^ static_cast<unsigned char>(bytes[at])) * kOdd, 29);
    return hash;
}

int WriteAll(int fd, std::string_view bytes, int64_t offset)
{
    while (!bytes.empty()) {
        const ssize_t n = pwrite(fd, bytes.data(), bytes.size(), offset);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return errno;
        if (n == 0) return ENOSPC;
        offset += n;
        bytes.remove_prefix(static_cast<size_t>(n));
    }
    return 0;
}

} // namespace nib
