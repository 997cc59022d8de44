#include "app/basic/AccountItems.h"

#include "base/Error.h"
#include "hosts/ItemText.h"
#include "hosts/accounts/AccountStore.h"
#include "hosts/accounts/ServerAccounts.h"
#include "platform/posix/FileContent.h"

namespace nib {

namespace {

/// Files that come with a system and are in no account.
constexpr TextView kSystemFiles[] = {u"SYSCOM", u"UNIVERSE.INCLUDE", u"INCLUDE", u"JBC.H"};

/// Empty when there can be no such file.
std::string PathOf(const std::string& folder, TextView name, IdRule rule = IdRule::Plain)
{
    const std::optional<std::string> found = NameIfAny(folder, name, rule);
    return name.empty() || !found ? std::string() : folder + "/" + *found;
}

bool IsOfSystem(TextView file, TextView item)
{
    for (TextView known : kSystemFiles)
        if (IsWord(file, known)) return true;
    return item.size() > 2 && IsWord(item.substr(item.size() - 2), u".H");
}

} // namespace

IncludeSource::Answer AccountItems::Find(TextView file, TextView item, std::shared_ptr<const ProgramText>& text)
{
    const Answer exact = FindExactly(file, item, text);
    if (exact == Answer::Found) return exact;
    // Some systems do not tell case in names.
    if (FindExactly(ToUpper(file), ToUpper(item), text) == Answer::Found) return Answer::Found;
    return IsOfSystem(file, item) ? Answer::Unknown : exact;
}

IncludeSource::Answer AccountItems::FindExactly(TextView file, TextView item, std::shared_ptr<const ProgramText>& text)
{
    const std::string folder = PathOf(account_, file);
    if (folder.empty() || !IsFolder(folder)) return HasFile(file) ? Answer::Unknown : Answer::NoFile;
    if (IsHashedFile(folder)) return Answer::Unknown;
    const bool ofServer = IsServerAccount(account_);
    const std::string path = PathOf(folder, item, ofServer ? IdRule::Escaped : IdRule::Plain);
    if (path.empty() || !IsPlainFile(path)) return Answer::NoItem;
    std::shared_ptr<const ProgramText>& known = texts_[path];
    if (!known) {
        TextForm form;
        const FileContent content = ReadWholeFile(path);
        const Text name = Text(file) + u" " + Text(item);
        const Text decoded = ItemText::ForItems(Charset(), false).Decode(content.Bytes(), form, name);
        known = std::make_shared<ProgramText>(nullptr, LinesOfProgram(decoded));
    }
    text = known;
    return Answer::Found;
}

/// The account knows the file although it is kept elsewhere. What a server's VOC knows cannot be seen.
bool AccountItems::HasFile(TextView file) const
{
    if (IsServerAccount(account_)) return true;
    const std::string entry = PathOf(account_ + "/VOC", file);
    return !entry.empty() && IsPlainFile(entry);
}

} // namespace nib
