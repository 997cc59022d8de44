#include "platform/hosts/FolderList.h"

#include "platform/posix/FileName.h"
#include "platform/posix/SystemError.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <tuple>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace nib {

namespace {

struct FolderClose {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

/// The digits at the start, without leading zeros.
TextView TakeNumber(TextView& text)
{
    size_t zeros = 0;
    while (zeros < text.size() && text[zeros] == u'0') ++zeros;
    size_t end = zeros;
    while (end < text.size() && IsDigit(text[end])) ++end;
    const TextView number = text.substr(zeros, end - zeros);
    text.remove_prefix(end);
    return number;
}

/// Below 0, 0 or above.
int CompareNatural(TextView a, TextView b)
{
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a.front()) && IsDigit(b.front())) {
            const TextView left = TakeNumber(a);
            const TextView right = TakeNumber(b);
            if (left.size() != right.size()) return left.size() < right.size() ? -1 : 1;
            if (const int order = left.compare(right); order != 0) return order;
            continue;
        }
        const auto left = u_foldCase(a.front(), U_FOLD_CASE_DEFAULT);
        const auto right = u_foldCase(b.front(), U_FOLD_CASE_DEFAULT);
        if (left != right) return left < right ? -1 : 1;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

} // namespace

void ListFolder(const std::string& folder, const std::function<void(std::string_view, bool)>& visit)
{
    const std::unique_ptr<DIR, FolderClose> handle(opendir(folder.c_str()));
    if (!handle) throw SystemFailure(FromFileName(folder) + u" cannot be listed", errno);
    for (errno = 0; const dirent* entry = readdir(handle.get()); errno = 0) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
            struct stat status {};
            if (fstatat(dirfd(handle.get()), entry->d_name, &status, 0) != 0) continue;
            isFolder = S_ISDIR(status.st_mode);
            if (!isFolder && !S_ISREG(status.st_mode)) continue;
        } else if (!isFolder && entry->d_type != DT_REG) {
            continue;
        }
        visit(name, isFolder);
    }
    if (errno != 0) throw SystemFailure(FromFileName(folder) + u" cannot be listed", errno);
}

bool ComesBefore(TextView a, TextView b)
{
    const int order = CompareNatural(a, b);
    return order != 0 ? order < 0 : a < b;
}

void SortEntries(std::vector<BrowseEntry>& entries)
{
    std::sort(entries.begin(), entries.end(), [](const BrowseEntry& a, const BrowseEntry& b) {
        return a.isItem != b.isItem ? b.isItem : ComesBefore(a.name, b.name);
    });
    const auto same = [](const BrowseEntry& a, const BrowseEntry& b) {
        return a.isItem == b.isItem && a.name == b.name;
    };
    entries.erase(std::unique(entries.begin(), entries.end(), same), entries.end());
}

} // namespace nib
