#include "hosts/accounts/VerbTrust.h"

#include "hosts/Consent.h"

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr TextView kAllowed = u"AllowedVerbs";

} // namespace

bool OthersMayChange(const std::vector<std::string>& paths)
{
    return std::any_of(paths.begin(), paths.end(), [](const std::string& path) {
        struct stat status {};
        if (stat(path.c_str(), &status) != 0) return false;
        const bool ours = status.st_uid == geteuid() || status.st_uid == 0;
        return !ours || (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    });
}

bool VerbTrust::MayRun(TextView account, TextView commandLine)
{
    const Text question =
        u"Other users can change the verbs of the account " + Text(account) + u".\n\nRun `" + Text(commandLine) + u"`?";
    return Consents(store_, boxes_, kAllowed, {account, commandLine}, question);
}

} // namespace nib
