#pragma once
// One text for a place: "mvdb:" and up to four levels with "/" between them, each percent-encoded, or "file:" and the
// absolute name of a local file as it is.

#include "hosts/mvConnect.h"

namespace nib {

inline constexpr TextView kHostProvider{u"mvdb"};
inline constexpr TextView kFileProvider{u"file"};

/// A place of provider "file" gives the path of its itemId.
Text ComposeHostPath(const ItemPlace& place);
/// A relative name is taken from the current folder.
Text ComposeFilePath(TextView fileName);
/// Also takes a bare absolute file name. Throws kBadFileName for anything else.
ItemPlace ParsePath(TextView path);

} // namespace nib
