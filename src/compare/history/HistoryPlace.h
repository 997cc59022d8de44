#pragma once
// Where versions are kept, and what they are called there.

#include "base/Text.h"
#include "hosts/mvConnect.h"

#include <string>

namespace nib {

/// The repository of a connection and account, and the branch in it that holds the versions of one item.
struct HistoryPlace {
    std::string repository; ///< its folder
    std::string branch;     ///< full name of the reference
    std::string fileName;   ///< of the text in each version

    friend bool operator==(const HistoryPlace&, const HistoryPlace&) = default;

    /// Below `folder`: "files.git", or "hosts/CONNECTION/ACCOUNT.git"; the branch is "FILE/ITEM". Names are escaped, so
    /// that none leads elsewhere, or is another one's on the way.
    static HistoryPlace Of(const ItemPlace& item, const std::string& folder);
};

} // namespace nib
