#include "hosts/accounts/AccountReader.h"

#include "hosts/ItemBrowser.h"
#include "hosts/accounts/ServerAccounts.h"
#include "platform/posix/FileName.h"

#include <algorithm>

#include <fcntl.h>

namespace nib {

namespace {

constexpr int64_t kBlock = 1 << 20;
constexpr int64_t kSmallBlock = 1 << 12;

/// By id, as they are shown, what stands in a folder. A hashed file has nothing that can be read here.
std::vector<std::pair<Text, std::string>> Named(const std::string& folder, bool folders, IdRule rule)
{
    std::vector<std::pair<Text, std::string>> named;
    for (FolderEntry& found : ListFolder(folder)) {
        if (found.isFolder != folders || (folders && IsHashedFile(folder + "/" + found.name))) continue;
        if (std::optional<Text> id = DecodeName(found.name, rule))
            named.emplace_back(std::move(*id), std::move(found.name));
    }
    std::sort(named.begin(), named.end(), [](auto& a, auto& b) { return ComesBefore(a.first, b.first); });
    return named;
}

std::vector<Text> Ids(const std::vector<std::pair<Text, std::string>>& named)
{
    std::vector<Text> ids;
    for (const auto& [id, name] : named)
        if (ids.empty() || ids.back() != id) ids.push_back(id);
    return ids;
}

[[noreturn]] void Refuse(const std::string& path, int error)
{
    throw SystemFailure(FromFileName(path) + u" cannot be read", error);
}

} // namespace

void AccountReader::CheckStopped() const
{
    if (stopped_) throw Error(error_number::kStorage, u"The search was stopped.");
}

std::vector<Text> AccountReader::Files()
{
    CheckStopped();
    return nib::Ids(Named(store_.AccountFolder(account_), true, IdRule::Plain));
}

void AccountReader::Enter(TextView file)
{
    CheckStopped();
    if (!folder_.empty() && file == file_) return;
    folder_ = store_.FileFolder(account_, file);
    rule_ = store_.RuleOf(store_.AccountFolder(account_));
    file_ = file;
    names_.clear();
}

std::string AccountReader::PathOf(TextView file, TextView id)
{
    Enter(file);
    const auto known = names_.find(Text(id));
    return folder_ + "/" + (known == names_.end() ? FindName(folder_, id, rule_) : known->second);
}

std::vector<Text> AccountReader::Ids(TextView file)
{
    folder_.clear(); // which may be another one by now
    Enter(file);
    const auto named = Named(folder_, false, rule_);
    names_ = {named.begin(), named.end()};
    return nib::Ids(named);
}

std::optional<Text> AccountReader::Read(TextView file, TextView id)
{
    if (!ReadBytes(PathOf(file, id))) return std::nullopt;
    TextForm form;
    return store_.Coding().Decode(bytes_, form, Text(file) + u" " + Text(id));
}

Text AccountReader::Stamp(TextView file, TextView id)
{
    const FileStamp stamp = StampOf(PathOf(file, id));
    Text text;
    for (int64_t part : {stamp.size, stamp.seconds, stamp.nanoseconds, stamp.changed}) text += Decimal(part) + u" ";
    return text;
}

std::string AccountReader::Folder(TextView file)
{
    CheckStopped();
    return file.empty() ? store_.AccountFolder(account_) : store_.FileFolder(account_, file);
}

bool AccountReader::ReadBytes(const std::string& path)
{
    bytes_.clear();
    // A pipe must not block before it is known to be one.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || fstat(file.Get(), &status) != 0) Refuse(path, errno);
    if (!S_ISREG(status.st_mode)) return false;
    for (;;) {
        CheckStopped();
        const size_t size = bytes_.size();
        const int64_t left = status.st_size - static_cast<int64_t>(size) + 1;
        bytes_.resize(size + static_cast<size_t>(std::clamp(left, kSmallBlock, kBlock)));
        const ssize_t n = read(file.Get(), bytes_.data() + size, bytes_.size() - size);
        const int error = n < 0 ? errno : 0;
        bytes_.resize(size + static_cast<size_t>(std::max<ssize_t>(n, 0)));
        if (n < 0 && error != EINTR) Refuse(path, error);
        if (n == 0) return true;
        if (bytes_.find('\0', size) != std::string::npos) return false;
        if (bytes_.size() > kLargestText) throw Error(error_number::kStorage, FromFileName(path) + u" is too large.");
    }
}

} // namespace nib
