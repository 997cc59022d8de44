#pragma once
// Recent files are kept without host and account, so that an entry serves every session.

#include "documents/DocumentServices.h"
#include "hosts/mvConnect.h"

namespace nib {

Text PathToRecentEntry(const mvConnection& connection, TextView path);
Text RecentEntryToPath(const mvConnection& connection, const Location& location, TextView entry);
/// The entry's display form.
Text RecentEntryCaption(mvConnection& connection, TextView entry);

} // namespace nib
