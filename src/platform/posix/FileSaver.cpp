#include "platform/posix/FileSaver.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <cerrno>
#include <climits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <acl/libacl.h>
#include <fcntl.h>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr int kMostLinks = 40;

struct AclFree {
    void operator()(void* acl) const { acl_free(acl); }
};

bool CopyOwnerAndMode(int from, int to)
{
    struct stat source {};
    struct stat target {};
    if (fstat(from, &source) != 0 || fstat(to, &target) != 0) return false;
    const bool sameOwner = source.st_uid == target.st_uid && source.st_gid == target.st_gid;
    if (!sameOwner && fchown(to, source.st_uid, source.st_gid) != 0) return false;

    // A new file may have inherited a list from its folder, so even a list without extra entries is set.
    std::unique_ptr<std::remove_pointer_t<acl_t>, AclFree> acl(acl_get_fd(from));
    if (acl && acl_set_fd(to, acl.get()) != 0 && acl_equiv_mode(acl.get(), nullptr) != 0) return false;
    return fchmod(to, source.st_mode & 07777) == 0;
}

/// Names that the kernel or an administrator keeps by itself, and the lists that were copied already.
bool IsKeptElsewhere(std::string_view name)
{
    return name.starts_with("system.posix_acl") || name.starts_with("security.") || name.starts_with("trusted.");
}

bool CopyAttribute(int from, int to, const char* name)
{
    const ssize_t size = fgetxattr(from, name, nullptr, 0);
    if (size < 0) return errno == ENODATA;
    std::string value(static_cast<size_t>(size), '\0');
    const ssize_t got = fgetxattr(from, name, value.data(), value.size());
    return got == size && fsetxattr(to, name, value.data(), value.size(), 0) == 0;
}

bool CopyAttributes(int from, int to)
{
    const ssize_t size = flistxattr(from, nullptr, 0);
    if (size <= 0) return size == 0 || errno == ENOTSUP || errno == ENOSYS;
    std::string names(static_cast<size_t>(size), '\0');
    const ssize_t got = flistxattr(from, names.data(), names.size());
    if (got < 0) return false;
    for (size_t at = 0; at < static_cast<size_t>(got); at += names.find('\0', at) - at + 1) {
        const char* name = names.c_str() + at;
        const bool copied = CopyAttribute(from, to, name);
        if (!copied && !IsKeptElsewhere(name)) return false;
    }
    return true;
}

bool HasDefaultAcl(const std::string& folder)
{
    std::unique_ptr<std::remove_pointer_t<acl_t>, AclFree> acl(acl_get_file(folder.c_str(), ACL_TYPE_DEFAULT));
    acl_entry_t entry = nullptr;
    return acl && acl_get_entry(acl.get(), ACL_FIRST_ENTRY, &entry) == 1;
}

/// Several users work in the folder of a group, whatever the mask of one of them. Where the user may not give the file
/// to the group, or the folder says itself what its files are like, it stays as it was made.
void TakeTraitsOfFolder(const std::string& folder, int file)
{
    struct stat place {};
    struct stat made {};
    if (stat(folder.c_str(), &place) != 0 || fstat(file, &made) != 0 || HasDefaultAcl(folder)) return;
    if (made.st_gid != place.st_gid && fchown(file, static_cast<uid_t>(-1), place.st_gid) != 0) return;
    fchmod(file, (place.st_mode & 0666) | 0600);
}

[[noreturn]] void Refuse(const std::string& path, int error)
{
    throw SystemFailure(FromFileName(path) + u" cannot be saved", error);
}

/// The file that a chain of symbolic links ends at; it need not exist.
std::string FollowLinks(const std::string& path)
{
    std::string target = path;
    for (int links = 0; links < kMostLinks; ++links) {
        char buffer[PATH_MAX];
        const ssize_t n = readlink(target.c_str(), buffer, sizeof buffer);
        // Taken for no link, it would be replaced by a file.
        if (n < 0 && errno != EINVAL && errno != ENOENT) Refuse(path, errno);
        if (n < 0) return target;
        const std::string_view next(buffer, static_cast<size_t>(n));
        target = next.starts_with('/') ? std::string() : FolderOf(target) + "/";
        target += next;
    }
    Refuse(path, ELOOP);
}

/// A file beside the target that goes away unless it was renamed. Without a name until it is complete, where the file
/// system can do that, so that a crash leaves nothing behind.
class TemporaryFile {
public:
    TemporaryFile(const std::string& folder, mode_t mode, const std::string& markFolder)
        : name_(folder + "/" + std::string(kTemporaryName) + RandomSuffix()), markFolder_(markFolder)
    {
        file_ = Descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
        if (file_) return;
        file_ = Descriptor(open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        named_ = static_cast<bool>(file_);
        error_ = file_ ? 0 : errno;
        if (named_) mark_.emplace(markFolder_, file_.Get(), name_);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        // What could not be removed is cleared by the next start.
        if (named_ && unlink(name_.c_str()) != 0 && mark_) mark_->Leave();
    }

    int OpenError() const { return error_; }
    int Handle() const { return file_.Get(); }

    /// Brings the bytes to disk. Answers 0 or the system's error.
    int Fill(std::string_view bytes)
    {
        if (int error = WriteAll(file_.Get(), bytes); error != 0) return error;
        return fsync(file_.Get()) == 0 ? 0 : errno;
    }
    int RenameTo(const std::string& target, const FileSaver::LastCheck& check, struct stat& status)
    {
        if (!named_) {
            mark_.emplace(markFolder_, file_.Get(), name_);
            const std::string open = "/proc/self/fd/" + std::to_string(file_.Get());
            if (linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name_.c_str(), AT_SYMLINK_FOLLOW) != 0) return errno;
            named_ = true;
        }
        // Its lock and its times are wanted for longer; what closing reports is wanted now.
        const Descriptor further(fcntl(file_.Get(), F_DUPFD_CLOEXEC, 0));
        if (!further || fstat(further.Get(), &status) != 0) return errno;
        if (int error = file_.Close(); error != 0) return error;
        if (check) check();
        if (rename(name_.c_str(), target.c_str()) != 0) return errno;
        named_ = false;
        // A rename is a change too. Without this look the file's bytes tell later that nobody else made it.
        fstat(further.Get(), &status);
        return 0;
    }

private:
    std::string name_;
    std::string markFolder_;
    Descriptor file_;
    std::optional<TemporaryMark> mark_;
    bool named_ = false;
    int error_ = 0;
};

bool MeansInPlace(int error)
{
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
}

/// The new content over the old one. Room is claimed first, so that a full disk is noticed while nothing has changed.
int Overwrite(int file, std::string_view bytes, size_t oldSize)
{
    if (bytes.size() > oldSize) {
        const auto room = static_cast<off_t>(bytes.size());
        if (int error = posix_fallocate(file, 0, room); error != 0 && error != EOPNOTSUPP && error != EINVAL) {
            return error;
        }
    }
    if (int error = WriteAll(file, bytes); error != 0) return error;
    if (ftruncate(file, static_cast<off_t>(bytes.size())) != 0 || fsync(file) != 0) return errno;
    return 0;
}

} // namespace

bool CopyTraits(int from, int to)
{
    return CopyOwnerAndMode(from, to) && CopyAttributes(from, to);
}

FileStamp FileSaver::Save(const std::string& path, std::string_view bytes, const LastCheck& check) const
{
    const std::string target = FollowLinks(path);
    struct stat status {};
    const bool exists = stat(target.c_str(), &status) == 0;
    if (!exists && errno != ENOENT) Refuse(path, errno);
    if (exists && S_ISDIR(status.st_mode)) Refuse(path, EISDIR);
    if (exists && !S_ISREG(status.st_mode))
        throw Error(error_number::kStorage, FromFileName(path) + u" is not a plain file.");
    // A rename would replace even a write-protected file.
    if (exists && faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) Refuse(path, errno);

    std::optional<FileStamp> done;
    if (!exists || status.st_nlink == 1) done = Replace(path, target, bytes, check);
    if (!done) done = WriteInPlace(path, target, bytes, check);
    ForgetCopiesOf(backupFolder_, target);
    return *done;
}

/// No answer when the file must be written in place instead.
std::optional<FileStamp> FileSaver::Replace(const std::string& path, const std::string& target, std::string_view bytes,
                                            const LastCheck& check) const
{
    Descriptor old(open(target.c_str(), O_RDONLY | O_CLOEXEC));
    if (!old && errno == EACCES) return std::nullopt; // Writable but not readable: its traits cannot be copied.
    if (!old && errno != ENOENT) Refuse(path, errno); // It is there: as a new file it would lose its traits.
    // Nobody else may look into the copy of a private file, not even while it is written.
    TemporaryFile temporary(FolderOf(target), old ? 0600 : newFileMode_, backupFolder_);
    if (int error = temporary.OpenError(); error != 0) {
        if (old && MeansInPlace(error)) return std::nullopt;
        Refuse(path, error);
    }
    if (old && !CopyTraits(old.Get(), temporary.Handle())) return std::nullopt;
    if (!old && likeFolders_) TakeTraitsOfFolder(FolderOf(target), temporary.Handle());
    if (int error = temporary.Fill(bytes); error != 0) Refuse(path, error);
    struct stat status {};
    if (int error = temporary.RenameTo(target, check, status); error != 0) {
        if (old && MeansInPlace(error)) return std::nullopt;
        Refuse(path, error);
    }
    if (int error = SyncFolder(FolderOf(target)); error != 0)
        throw UncertainSave(FromFileName(path) + u" is saved, but may not survive a power failure", error);
    return StampOf(status);
}

CopyKeeper FileSaver::Backup(const std::string& path, const std::string& target, std::string_view old,
                             std::string_view bytes) const
{
    if (int error = MakeFolders(backupFolder_); error != 0) {
        throw SystemFailure(FromFileName(path) + u" cannot be saved: no copy of it can be kept in " +
                                FromFileName(backupFolder_),
                            error);
    }
    CopyKeeper copy(backupFolder_, target);
    const int error = copy.Keep(old, bytes);
    if (error == 0) return copy;
    throw SystemFailure(
        FromFileName(path) + u" cannot be saved: the copy " + FromFileName(copy.Name()) + u" cannot be written", error);
}

FileStamp FileSaver::WriteInPlace(const std::string& path, const std::string& target, std::string_view bytes,
                                  const LastCheck& check) const
{
    const FileContent old = ReadWholeFile(target, SIZE_MAX);
    CopyKeeper backup = Backup(path, target, old.Bytes(), bytes);
    Descriptor file(open(target.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file) Refuse(path, errno);
    if (check) check();
    int error = Overwrite(file.Get(), bytes, old.size);
    struct stat status {};
    if (error == 0 && fstat(file.Get(), &status) != 0) error = errno;
    if (error != 0 && Overwrite(file.Get(), old.Bytes(), old.size) != 0) {
        backup.Leave();
        throw DamagedFile(FromFileName(path) + u" was damaged while it was saved. Its old content is in " +
                              FromFileName(backup.Name()),
                          error);
    }
    if (const int closing = file.Close(); error == 0 && closing != 0) {
        backup.Leave();
        throw UncertainSave(
            FromFileName(path) + u" may not be saved. Its old content is in " + FromFileName(backup.Name()), closing);
    }
    if (error != 0) Refuse(path, error);
    return StampOf(status);
}

} // namespace nib
