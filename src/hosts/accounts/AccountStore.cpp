#include "hosts/accounts/AccountStore.h"

#include "base/Error.h"
#include "hosts/accounts/ItemName.h"
#include "platform/posix/FileContent.h"

namespace nib {

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
    if (!file.empty() && IsFolder(folder)) return folder;
    throw Error(error_number::kPathNotFound,
                u"File " + Text(file) + u" does not exist in account " + Text(account) + u".");
}

std::string AccountStore::ItemFile(TextView account, TextView file, TextView item) const
{
    const std::string folder = FileFolder(account, file);
    return folder + "/" + FindName(folder, item);
}

Text AccountStore::ReadRecord(TextView account, TextView file, TextView item) const
{
    const std::string accountFolder = AccountFolder(account);
    const std::string folder = accountFolder + "/" + FindName(accountFolder, file);
    const std::string path = folder + "/" + FindName(folder, item);
    if (!IsPlainFile(path)) return {};
    TextForm form;
    return coding_.Decode(ReadWholeFile(path).Bytes(), form, Text(file) + u" " + Text(item));
}

TextView Attribute(TextView record, int32_t number)
{
    TextView line = Field(record, u'\n', number);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    return line;
}

} // namespace nib
