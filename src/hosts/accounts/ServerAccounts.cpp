#include "hosts/accounts/ServerAccounts.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"

namespace nib {

bool IsHashedFile(const std::string& folder)
{
    return IsPlainFile(folder + "/~0");
}

bool IsServerAccount(const std::string& accountFolder)
{
    return IsHashedFile(accountFolder + "/VOC");
}

void RefuseHashedFile(const std::string& folder, TextView account, TextView file)
{
    if (!IsHashedFile(folder)) return;
    throw Error(error_number::kStorage, u"File " + Text(file) + u" of account " + Text(account) +
                                            u" is a hashed file, which only its server can read and write: use a "
                                            u"connection with kind=network in hosts.conf.");
}

void ServerNotice::Opened(TextView account, const std::string& accountFolder)
{
    if (!IsServerAccount(accountFolder) || !told_.insert(accountFolder).second) return;
    boxes_.Show(u"The account " + Text(account) +
                    u" belongs to a MultiValue server, whose locks do not reach here: an item that is open here can "
                    u"be changed by others on the server at the same time, and one of the two changes is lost.\n\n"
                    u"A connection with kind=network in hosts.conf opens the same items under the server's own locks.",
                message_box::kOk | message_box::kWarning, u"Nib");
}

} // namespace nib
