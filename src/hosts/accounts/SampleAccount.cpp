#include "hosts/accounts/SampleAccount.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <cerrno>
#include <filesystem>

#include <sys/stat.h>

namespace nib {

namespace {

namespace fs = std::filesystem;

/// An installed original is often write-protected; the copy is the user's own.
void MakeWritable(const fs::path& folder)
{
    std::error_code ignored;
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, ignored);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, ignored)) {
        const fs::perms added =
            entry.is_directory() ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write;
        fs::permissions(entry.path(), added, fs::perm_options::add, ignored);
    }
}

} // namespace

bool InstallSampleAccount(TextView sourceFolder, TextView accountsRoot)
{
    const std::string source = AbsolutePath(ToFileName(sourceFolder));
    const std::string root = ToFileName(accountsRoot);
    const std::string account = root + "/" + LastPart(source);
    struct stat status {};
    if (lstat(account.c_str(), &status) == 0) return false;
    if (const int error = MakeFolders(root); error != 0) {
        throw SystemFailure(u"The folder " + Text(accountsRoot) + u" cannot be made", error);
    }
    const std::string copy = root + "/.nib-" + RandomSuffix();
    std::error_code failed;
    fs::copy(source, copy, fs::copy_options::recursive | fs::copy_options::copy_symlinks, failed);
    int error = failed ? failed.value() : 0;
    if (error == 0) {
        MakeWritable(copy);
        error = RenameNew(copy, account);
    }
    if (error == 0) return true;
    std::error_code ignored;
    fs::remove_all(copy, ignored);
    if (error == EEXIST) return false;
    throw SystemFailure(u"The sample account cannot be copied to " + FromFileName(account), error);
}

} // namespace nib
