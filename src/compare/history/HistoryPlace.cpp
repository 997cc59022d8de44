#include "compare/history/HistoryPlace.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <cctype>
#include <cstdio>

namespace nib {

namespace {

/// What a file system and the program behind it take for one name, with the ends that are added to it.
constexpr size_t kLongestName = 200;

/// Plain letters stay readable; whatever a shell, a file system or the rules for references make something of does not
/// stay.
std::string Escaped(TextView name)
{
    if (name.empty()) return "%";
    const std::string bytes = ToFileName(name);
    const std::string_view all(bytes);
    std::string escaped = PercentEncode(all, [&](unsigned char c, size_t i) {
        if (c == '.') return i > 0 && std::isalnum(static_cast<unsigned char>(all[i - 1])) && all.substr(i) != ".lock";
        return c < 0x80 && (std::isalnum(c) || c == '_' || (c == '-' && i > 0));
    });
    if (escaped.ends_with('.')) escaped.replace(escaped.size() - 1, 1, "%2E");
    if (escaped.size() <= kLongestName) return escaped;
    char sum[24];
    std::snprintf(sum, sizeof sum, "%%%016llx", static_cast<unsigned long long>(HashBytes(bytes)));
    return escaped.substr(0, kLongestName - sizeof sum) + sum;
}

} // namespace

HistoryPlace HistoryPlace::Of(const ItemPlace& item, const std::string& folder)
{
    HistoryPlace place;
    if (item.provider == kFileProvider)
        place.repository = folder + "/files.git";
    else
        place.repository =
            folder + "/hosts/" + Escaped(ToLower(item.serverName)) + "/" + Escaped(item.database) + ".git";
    place.fileName = Escaped(item.itemId);
    place.branch = "refs/heads/" + Escaped(item.folder) + "/" + place.fileName;
    return place;
}

} // namespace nib
