#include "platform/posix/FileTraits.h"

#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <acl/libacl.h>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace nib {

namespace {

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

} // namespace

bool CopyTraits(int from, int to)
{
    return CopyOwnerAndMode(from, to) && CopyAttributes(from, to);
}

} // namespace nib
