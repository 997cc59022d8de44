#pragma once
// A place is named by five strings: provider ("mvdb" for a host, "file" for a local file), server name ("*" is the
// default connection), database (account), folder (MultiValue file) and item id. One text for it: "mvdb:" and up to
// four levels with "/" between them, each percent-encoded, or "file:" and the absolute name of a local file as it is.

#include "base/Text.h"

namespace nib {

struct ItemPlace {
    Text provider;
    Text serverName;
    Text database;
    Text folder;
    Text itemId; ///< for "file": the absolute name of the file, as is

    friend bool operator==(const ItemPlace&, const ItemPlace&) = default;
};

inline constexpr TextView kHostProvider{u"mvdb"};
inline constexpr TextView kFileProvider{u"file"};

/// A place of provider "file" gives the path of its itemId.
Text ComposeHostPath(const ItemPlace& place);
/// A relative name is taken from the current folder.
Text ComposeFilePath(TextView fileName);
/// Also takes a bare absolute file name. Throws kBadFileName for anything else.
ItemPlace ParsePath(TextView path);

/// True for a path of the local file system.
bool IsLocalPath(TextView path);
/// True for the path of a host item, which stands on the fourth level.
bool IsHostItemPath(TextView path);
/// The name that the last level of a path gives a place: what a list calls it is better where it is known.
Text PlaceName(TextView path);

} // namespace nib
