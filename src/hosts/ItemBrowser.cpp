#include "hosts/ItemBrowser.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>

#include <unicode/uchar.h>

namespace nib {

namespace {

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

BrowseEntry ShownAs(const FolderEntry& found, Text name, Text path)
{
    BrowseEntry entry;
    entry.name = std::move(name);
    entry.path = std::move(path);
    entry.isItem = !found.isFolder;
    entry.readOnly = found.readOnly;
    entry.size = found.isFolder ? -1 : found.size;
    entry.modified = found.modified;
    return entry;
}

std::vector<FolderEntry> ListFolder(const std::string& folder)
{
    std::vector<FolderEntry> entries;
    if (const int error = ListFolder(folder, entries); error != 0) {
        throw Error(error == EACCES ? error_number::kPermissionDenied : error_number::kStorage,
                    FromFileName(folder) + u" cannot be listed: " + SystemText(error));
    }
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
