#include "hosts/FolderList.h"

#include "platform/posix/FileName.h"
#include "platform/posix/SystemError.h"

#include <unicode/uchar.h>

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

constexpr size_t kMostDetails = 1000;

/// False for what is neither a folder nor a plain file.
bool TellKind(int folder, const dirent& entry, bool& isFolder)
{
    isFolder = entry.d_type == DT_DIR;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return isFolder || entry.d_type == DT_REG;
    struct stat status {};
    if (fstatat(folder, entry.d_name, &status, 0) != 0) return false;
    isFolder = S_ISDIR(status.st_mode);
    return isFolder || S_ISREG(status.st_mode);
}

void AddDetails(int folder, FolderEntry& entry)
{
    struct stat status {};
    if (fstatat(folder, entry.name.c_str(), &status, 0) != 0) return;
    entry.size = status.st_size;
    entry.modified = status.st_mtim.tv_sec;
    entry.readOnly = faccessat(folder, entry.name.c_str(), W_OK, AT_EACCESS) != 0;
}

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

/// Its number tells a folder that may not be listed, whose files may still be opened by name.
Error ListingFailure(const std::string& folder, int error)
{
    return {error == EACCES ? error_number::kPermissionDenied : error_number::kStorage,
            FromFileName(folder) + u" cannot be listed: " + SystemText(error)};
}

} // namespace

BrowseEntry FolderEntry::Shown(Text shownName, Text path) const
{
    BrowseEntry entry;
    entry.name = std::move(shownName);
    entry.path = std::move(path);
    entry.isItem = !isFolder;
    entry.readOnly = readOnly;
    entry.size = isFolder ? -1 : size;
    entry.modified = modified;
    return entry;
}

std::vector<FolderEntry> ListFolder(const std::string& folder)
{
    const std::unique_ptr<DIR, FolderClose> handle(opendir(folder.c_str()));
    if (!handle) throw ListingFailure(folder, errno);
    std::vector<FolderEntry> entries;
    for (errno = 0; const dirent* entry = readdir(handle.get()); errno = 0) {
        FolderEntry found;
        found.name = entry->d_name;
        if (found.name != "." && found.name != ".." && TellKind(dirfd(handle.get()), *entry, found.isFolder)) {
            entries.push_back(std::move(found));
        }
    }
    if (errno != 0) throw ListingFailure(folder, errno);
    if (entries.size() > kMostDetails) return entries;
    for (FolderEntry& entry : entries) AddDetails(dirfd(handle.get()), entry);
    return entries;
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
