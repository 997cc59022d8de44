#include "search/AccountReplace.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kNoHits{u"Not changed: the text is not in it any more."};

/// The window that the item can be changed in, else one that shows it; null when it is not open.
std::shared_ptr<mvDocument> WindowOf(const mvDocuments& documents, const ItemPlace& place)
{
    std::shared_ptr<mvDocument> found;
    for (auto& document : documents.All()) {
        const auto item = document->ItemObject();
        const bool same = item && document->View() && IsInAccount(*item, place) && item->Folder() == place.folder &&
                          item->ItemID() == place.itemId;
        if (same && (!found || found->ReadOnly())) found = document;
    }
    return found;
}

ReplaceOutcome InWindow(mvDocument& document, const AccountQuery& query, TextView replacement)
{
    if (document.View()->txtText().ReadOnly()) return {0, u"Not changed: it is open as read-only."};
    const ReplacedText replaced = ReplaceInText(query.Prepared(), document.GetText(), replacement, query.tabSize);
    if (replaced.hits == 0) return {0, Text(kNoHits)};
    document.ReplaceText(replaced.text);
    return {replaced.hits, Decimal(replaced.hits) + u" replaced in its window, not saved."};
}

ReplaceOutcome InStorage(DocumentServices& services, const AccountQuery& query, TextView replacement, TextView path)
{
    const AutoSaveHold hold(services.shell);
    const auto item = services.connection.OpenServerForPath(path, false, true);
    if (!item->IsItem() || !item->Exists()) return {0, u"Not changed: it is not there any more."};
    if (item->ReadOnly()) return {0, u"Not changed: it is read-only."};
    const ReplacedText replaced = ReplaceInText(query.Prepared(), item->ReadItem(0, 0, 0), replacement, query.tabSize);
    if (replaced.hits == 0) return {0, Text(kNoHits)};
    item->WriteItem(0, 0, 0, replaced.text);
    item->Commit();
    return {replaced.hits, Decimal(replaced.hits) + u" replaced."};
}

/// Who holds an item that could not be locked.
Text Holder(mvConnection& connection, TextView path)
{
    return OrDefault([&] { return connection.OpenServerForPath(path, true, false)->LockHolder(); }, Text());
}

} // namespace

bool IsInAccount(const mvItem& item, const ItemPlace& account)
{
    return item.Provider() == account.provider && IsSameHost(item.ServerName(), account.serverName) &&
           item.Database() == account.database;
}

ReplaceOutcome ReplaceInItem(DocumentServices& services, const AccountQuery& query, TextView replacement,
                             const ItemPlace& place)
{
    const Text path = ComposeHostPath(place);
    ReplaceOutcome outcome;
    const std::optional<Error> failure = FailureOf([&] {
        if (auto document = WindowOf(services.openDocuments, place))
            outcome = InWindow(*document, query, replacement);
        else
            outcome = InStorage(services, query, replacement, path);
    });
    if (!failure) return outcome;
    Text why = failure->description;
    if (IsLocked(*failure)) why += HeldBy(Holder(services.connection, path));
    return {0, OneLine(u"Not changed: " + why)};
}

Text OneLine(TextView text)
{
    Text line(text);
    std::replace_if(
        line.begin(), line.end(), [](char16_t c) { return c == u'\r' || c == u'\n'; }, u' ');
    return line;
}

} // namespace nib
