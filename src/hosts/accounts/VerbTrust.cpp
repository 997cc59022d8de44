#include "hosts/accounts/VerbTrust.h"

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr TextView kAllowed = u"AllowedVerbs";
constexpr char16_t kRecord = u'\x1E';
constexpr char16_t kUnit = u'\x1F';

bool HoldsControl(TextView text)
{
    return std::any_of(text.begin(), text.end(), [](char16_t c) { return c < u' '; });
}

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
    const Text entry = kRecord + Text(account) + kUnit + Text(commandLine) + kRecord;
    // What holds a separator could bring entries of its own along, and is asked for each time.
    const bool kept = !HoldsControl(account) && !HoldsControl(commandLine);
    const Text allowed = store_.Get(kAllowed, u"");
    if (kept && allowed.find(entry) != Text::npos) return true;
    const Text question =
        u"Other users can change the verbs of the account " + Text(account) + u".\n\nRun `" + Text(commandLine) + u"`?";
    const int32_t answer =
        boxes_.Show(question, message_box::kYesNo | message_box::kWarning | message_box::kSecondDefault, u"Nib");
    if (answer != message_box::kAnswerYes) return false;
    if (kept) store_.Save(kAllowed, allowed + entry);
    return true;
}

} // namespace nib
