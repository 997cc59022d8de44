#include "platform/posix/FolderScan.h"

#include "platform/FileTransfer.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

struct FolderClose {
    void operator()(DIR* folder) const { closedir(folder); }
};

} // namespace

bool MatchesWildcard(TextView name, TextView pattern)
{
    if (pattern == u"*.*") return true;
    size_t n = 0;
    size_t p = 0;
    size_t star = TextView::npos;
    size_t resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != TextView::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == TextView::npos;
}

int FolderScan::Open(TextView pattern)
{
    const size_t slash = pattern.rfind(u'/');
    const TextView mask = slash == TextView::npos ? pattern : pattern.substr(slash + 1);
    folder_ = slash == TextView::npos ? std::string(".") : ToFileName(pattern.substr(0, slash + 1));
    const std::unique_ptr<DIR, FolderClose> handle(opendir(folder_.c_str()));
    if (!handle) return errno;
    errno = 0;
    while (const dirent* entry = readdir(handle.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != ".." && MatchesWildcard(FromFileName(name), mask)) names_.push_back(name);
        errno = 0;
    }
    if (errno != 0) return errno;
    std::sort(names_.begin(), names_.end());
    return 0;
}

bool FolderScan::Next(Text& name)
{
    if (next_ == names_.size()) return false;
    name = FromFileName(names_[next_++]);
    return true;
}

int32_t FolderScan::Attributes() const
{
    struct stat status {};
    if (next_ == 0) return -1;
    const std::string& name = names_[next_ - 1];
    const std::string path = folder_ + "/" + name;
    if (stat(path.c_str(), &status) != 0) return -1;
    int32_t attributes = 0;
    if (S_ISDIR(status.st_mode)) attributes |= file_attribute::kFolder;
    if (name.starts_with('.')) attributes |= file_attribute::kHidden;
    if (!S_ISDIR(status.st_mode) && !S_ISREG(status.st_mode)) attributes |= file_attribute::kSystem;
    if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) attributes |= file_attribute::kReadOnly;
    return attributes == 0 ? file_attribute::kNormal : attributes;
}

} // namespace nib
