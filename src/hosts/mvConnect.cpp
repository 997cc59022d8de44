#include "hosts/mvConnect.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "hosts/ItemReader.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <array>
#include <string>

namespace nib {

namespace {

constexpr TextView kHostPrefix{u"mvdb:"};
constexpr TextView kFilePrefix{u"file:"};

using Levels = std::array<Text ItemPlace::*, 4>;
constexpr Levels kLevels{&ItemPlace::serverName, &ItemPlace::database, &ItemPlace::folder, &ItemPlace::itemId};

[[noreturn]] void Refuse(TextView path)
{
    throw Error(error_number::kBadFileName, u"\"" + Text(path) + u"\" is not the path of an item or a file.");
}

bool IsKept(unsigned char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string_view("-_.~*").find(static_cast<char>(c)) != std::string_view::npos;
}

std::string EncodeLevel(TextView level)
{
    const bool dots = level == u"." || level == u"..";
    return PercentEncode(ToFileName(level), [dots](unsigned char c, size_t) { return IsKept(c) && !dots; });
}

Text DecodeLevel(TextView level, TextView path)
{
    const std::optional<std::string> bytes = PercentDecode(ToFileName(level));
    if (!bytes) Refuse(path);
    return FromFileName(*bytes);
}

ItemPlace ParseHost(TextView path)
{
    ItemPlace place{Text(kHostProvider), {}, {}, {}, {}};
    const TextView levels = path.substr(kHostPrefix.size());
    const int32_t count = CountFields(levels, u'/');
    if (count > static_cast<int32_t>(kLevels.size())) Refuse(path);
    for (int32_t n = 1; n <= count; ++n) {
        place.*kLevels[static_cast<size_t>(n - 1)] = DecodeLevel(Field(levels, u'/', n), path);
    }
    return place;
}

Text LocalName(const ItemPlace& place)
{
    if (place.itemId.empty()) return place.folder;
    if (place.folder.empty() || place.itemId.starts_with(u'/')) return place.itemId;
    return place.folder + (place.folder.ends_with(u'/') ? u"" : u"/") + place.itemId;
}

} // namespace

Text ComposeHostPath(const ItemPlace& place)
{
    if (place.provider == kFileProvider) return ComposeFilePath(LocalName(place));
    size_t used = kLevels.size();
    while (used > 0 && (place.*kLevels[used - 1]).empty()) --used;
    Text path(kHostPrefix);
    for (size_t i = 0; i < used; ++i) {
        if (i > 0) path.push_back(u'/');
        path += FromUtf8(EncodeLevel(place.*kLevels[i]));
    }
    return path;
}

Text ComposeFilePath(TextView fileName)
{
    if (fileName.starts_with(kFilePrefix)) fileName.remove_prefix(kFilePrefix.size());
    if (fileName.starts_with(u'/')) return Text(kFilePrefix).append(fileName);
    return Text(kFilePrefix) + FromFileName(AbsolutePath(ToFileName(fileName)));
}

ItemPlace ParsePath(TextView path)
{
    if (path.starts_with(kHostPrefix)) return ParseHost(path);
    const TextView name = path.starts_with(kFilePrefix) ? path.substr(kFilePrefix.size()) : path;
    if (!name.starts_with(u'/') || name.find(u'\0') != TextView::npos) Refuse(path);
    return {Text(kFileProvider), {}, {}, {}, Text(name)};
}

bool IsSameHost(TextView a, TextView b)
{
    constexpr TextView kDefault{u"*"};
    return EqualsNoCase(a.empty() ? kDefault : a, b.empty() ? kDefault : b);
}

bool IsSameFile(TextView pathA, TextView pathB)
{
    if (pathA == pathB) return true;
    if (!IsLocalPath(pathA) || !IsLocalPath(pathB)) return false;
    const FileStamp a = StampOf(ToFileName(pathA.substr(kFilePrefix.size())));
    const FileStamp b = StampOf(ToFileName(pathB.substr(kFilePrefix.size())));
    return a.Exists() && b.Exists() && a.device == b.device && a.inode == b.inode;
}

bool IsSameItem(const mvItem& a, const mvItem& b)
{
    if (a.Provider() != b.Provider()) return false;
    if (a.Provider() == kFileProvider) return IsSameFile(a.Path(), b.Path());
    return IsSameHost(a.ServerName(), b.ServerName()) && a.Database() == b.Database() && a.Folder() == b.Folder() &&
           a.ItemID() == b.ItemID();
}

std::optional<ReadText> ReadIfThere(mvItem& item)
{
    std::optional<ReadText> text;
    const auto failure = FailureOf([&] { text = item.ReadWhole(); });
    if (!failure) return text;
    // A file answers at once. A host would be waited for once more, and may want a password each time.
    const bool isFile = !item.StoredFile().empty();
    if (failure->number != error_number::kFileNotFound && (!isFile || item.Exists())) throw Error(*failure);
    return std::nullopt;
}

std::unique_ptr<ItemReader> RefuseReader(const ItemPlace& account)
{
    throw Error(error_number::kStorage, u"The account " + account.database + u" cannot be searched.");
}

std::unique_ptr<ItemReader> mvConnection::Reader(const ItemPlace& account)
{
    return RefuseReader(account);
}

bool IsLocalPath(TextView path)
{
    return path.starts_with(kFilePrefix);
}

bool IsHostItemPath(TextView path)
{
    return !IsLocalPath(path) && std::count(path.begin(), path.end(), u'/') == 3;
}

Text PlaceName(TextView path)
{
    const bool local = IsLocalPath(path);
    if (local && path.substr(kFilePrefix.size()) == u"/") return u"/";
    const TextView name = path.substr(path.find_last_of(u":/") + 1);
    if (local) return Text(path.substr(path.rfind(u'/') + 1));
    const std::optional<std::string> bytes = PercentDecode(ToFileName(name));
    return bytes ? FromFileName(*bytes) : Text(name);
}

} // namespace nib
