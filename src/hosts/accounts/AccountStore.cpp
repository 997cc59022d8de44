#include "hosts/accounts/AccountStore.h"

#include "base/Error.h"
#include "hosts/accounts/ServerAccounts.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <cerrno>
#include <filesystem>

#include <sys/stat.h>

namespace nib {

namespace {

/// Of verbs and configuration: what is larger is none, and must not hold up a start.
constexpr size_t kLargestRecord = 4 << 20;

namespace fs = std::filesystem;

/// An installed original is often write-protected; the copy is the user's own, and nobody else's whatever the umask.
void MakeWritable(const fs::path& folder)
{
    std::error_code ignored;
    constexpr fs::perms kOthersWrite = fs::perms::group_write | fs::perms::others_write;
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::permissions(folder, kOthersWrite, fs::perm_options::remove, ignored);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, ignored)) {
        const fs::perms added =
            entry.is_directory() ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write;
        fs::permissions(entry.path(), added, fs::perm_options::add, ignored);
        fs::permissions(entry.path(), kOthersWrite, fs::perm_options::remove, ignored);
    }
}

} // namespace

std::string AccountStore::AccountFolder(TextView account) const
{
    if (account.empty()) throw Error(error_number::kPathNotFound, u"No account is named on " + hostName_ + u".");
    std::string folder = root_ + "/" + FindName(root_, account);
    if (IsFolder(folder)) return folder;
    throw Error(error_number::kPathNotFound, u"Account " + Text(account) + u" does not exist on " + hostName_ + u".");
}

std::string AccountStore::FileFolder(TextView account, TextView file) const
{
    const std::string accountFolder = AccountFolder(account);
    std::string folder = accountFolder + "/" + FindName(accountFolder, file);
    if (!file.empty() && IsFolder(folder)) {
        RefuseHashedFile(folder, account, file);
        return folder;
    }
    throw Error(error_number::kPathNotFound,
                u"File " + Text(file) + u" does not exist in account " + Text(account) + u".");
}

std::string AccountStore::ItemFile(TextView account, TextView file, TextView item) const
{
    const std::string folder = FileFolder(account, file);
    return folder + "/" + FindName(folder, item, RuleOf(AccountFolder(account)));
}

IdRule AccountStore::RuleOf(const std::string& accountFolder) const
{
    return ids_.value_or(IsServerAccount(accountFolder) ? IdRule::Escaped : IdRule::Plain);
}

Text AccountStore::ReadRecord(TextView account, TextView file, TextView item) const
{
    const std::string accountFolder = AccountFolder(account);
    const std::string folder = accountFolder + "/" + FindName(accountFolder, file);
    const std::optional<std::string> name = NameIfAny(folder, item, RuleOf(accountFolder));
    const std::string path = folder + "/" + name.value_or("");
    if (!name || IsHashedFile(folder) || !IsPlainFile(path)) return {};
    TextForm form;
    return coding_.Decode(ReadWholeFile(path, kLargestRecord).Bytes(), form, Text(file) + u" " + Text(item));
}

TextView Attribute(TextView record, int32_t number)
{
    TextView line = Field(record, u'\n', number);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    return line;
}

bool InstallSampleAccount(TextView sourceFolder, const HostConfig& config)
{
    if (config.Find({}).root != config.defaultRoot) return false;
    const std::string source = AbsolutePath(ToFileName(sourceFolder));
    const std::string& root = config.defaultRoot;
    const std::string account = root + "/" + LastPart(source);
    struct stat status {};
    if (lstat(account.c_str(), &status) == 0) return false;
    if (const int error = MakeFolders(root); error != 0) {
        throw SystemFailure(u"The folder " + FromFileName(root) + u" cannot be made", error);
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
