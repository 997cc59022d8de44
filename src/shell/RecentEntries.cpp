#include "shell/RecentEntries.h"

namespace nib {

namespace {

constexpr TextView kAny = u"*";

bool IsLocal(const ItemPlace& place)
{
    return EqualsNoCase(place.provider, u"file");
}

} // namespace

Text PathToRecentEntry(const mvConnection& connection, TextView path)
{
    ItemPlace place = connection.ParsePath(path);
    if (IsLocal(place)) return Text(path);
    place.serverName = place.database = kAny;
    return connection.ComposeHostPath(place);
}

Text RecentEntryToPath(const mvConnection& connection, const Location& location, TextView entry)
{
    ItemPlace place = connection.ParsePath(entry);
    if (IsLocal(place)) return Text(entry);
    bool anyHost = EqualsNoCase(place.serverName, u"(any)") || place.serverName == kAny;
    if (anyHost && !location.ServerName.empty()) place.serverName = location.ServerName;
    if (place.database == kAny && !location.Database.empty()) place.database = location.Database;
    return connection.ComposeHostPath(place);
}

Text RecentEntryCaption(mvConnection& connection, TextView entry)
{
    return connection.OpenServerForPath(entry, true, false)->DisplayPath();
}

} // namespace nib
