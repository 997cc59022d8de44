#pragma once
#include "documents/DocumentServices.h"
#include "search/AccountSearch.h"

namespace nib {

/// The item is of the account that the place names.
bool IsInAccount(const mvItem& item, const ItemPlace& account);

/// What has become of one item.
struct ReplaceOutcome {
    int64_t hits = 0; ///< replaced
    Text report;      ///< for the user, one line
};

/// Replaces all hits in an item. One that is open is changed in its window, in one step of undo, and not saved. Any
/// other is locked, read, written and freed; where that fails it stays as it is. Throws nothing.
ReplaceOutcome ReplaceInItem(DocumentServices& services, const AccountQuery& query, TextView replacement,
                             const ItemPlace& place);

/// Without line breaks, which would make several lines of one of the results.
Text OneLine(TextView text);

} // namespace nib
