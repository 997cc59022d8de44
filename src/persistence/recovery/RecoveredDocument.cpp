#include "persistence/recovery/RecoveredDocument.h"

#include "diagnostics/Guarded.h"

namespace nib {

namespace {

constexpr TextView kHeader = u"*---> Recovered document: ";

using Fill = std::function<bool(mvDocument&)>;

std::shared_ptr<mvDocument> Make(DocumentServices& services, const Fill& fill)
{
    auto document = NewDocumentObject(services);
    if (!document) return nullptr;
    bool filled = false;
    if (auto failure = FailureOf([&] { filled = fill(*document); })) {
        document->FileClose(false);
        throw *failure;
    }
    if (filled) return document;
    document->FileClose(false);
    return nullptr;
}

/// Where a text goes back to, or why it cannot.
struct Target {
    std::shared_ptr<mvItem> item;
    std::shared_ptr<mvDocument> open; ///< a window of this program that has the item
    Text hindrance;
};

/// What was saved last needs no recovery, wherever the crash came.
bool IsStored(mvItem& item, const JournalText& recovered, int32_t tabSize)
{
    return OrDefault([&] { return ExpandTabs(item.ReadItem(0, 0, 0), tabSize) == recovered.text; }, false);
}

Text Hindrance(mvItem& item, const JournalText& recovered, int32_t tabSize)
{
    const bool wasNew = recovered.head.version.empty();
    if (!item.IsItem() || (!item.Exists() && !wasNew)) return u"it is no longer there";
    if (item.ReadOnly()) return u"it cannot be written now";
    if (!item.Exists()) return {};
    const bool same = IsStored(item, recovered, tabSize) || (!wasNew && item.Version() == recovered.head.version);
    return same ? Text() : Text(u"it was changed since");
}

Target FindTarget(DocumentServices& services, const JournalText& recovered)
{
    Target target;
    const Text& path = recovered.head.path;
    auto failure = FailureOf([&] {
        target.item = services.connection.OpenServerForPath(path, true, false);
        target.open = services.openDocuments.On(*target.item);
        if (target.open) {
            if (target.open->IsDirty()) target.hindrance = u"it is open and has other changes";
            return;
        }
        target.item = services.connection.OpenServerForPath(path, false, services.settings.RecordLocking);
        target.hindrance = Hindrance(*target.item, recovered, services.settings.TabSize);
    });
    if (failure) target.hindrance = IsLocked(*failure) ? Text(u"it is locked now") : failure->description;
    return target;
}

std::shared_ptr<mvDocument> PutBack(DocumentServices& services, const JournalText& recovered, const Target& target)
{
    if (target.open) {
        target.open->ReplaceText(recovered.text);
        return target.open;
    }
    return Make(services, [&](mvDocument& document) {
        const bool there = target.item->Exists();
        if (!(there ? document.ItemOpen(target.item, false) : document.FileNewItem(target.item))) return false;
        document.ReplaceText(recovered.text);
        return true;
    });
}

std::shared_ptr<mvDocument> AsNew(DocumentServices& services, const JournalText& recovered, const Text& hindrance)
{
    const Text what = hindrance.empty() ? recovered.head.itemId : recovered.head.name + u" (" + hindrance + u")";
    return Make(services, [&](mvDocument& document) {
        if (!document.FileNew()) return false;
        document.SetText(Text(kHeader) + what + u"\r\n" + recovered.text);
        return true;
    });
}

} // namespace

std::shared_ptr<mvDocument> OpenRecovered(DocumentServices& services, const JournalText& recovered)
{
    if (recovered.head.path.empty()) return AsNew(services, recovered, {});
    const Target target = FindTarget(services, recovered);
    if (target.hindrance.empty())
        if (auto document = PutBack(services, recovered, target)) return document;
    return AsNew(services, recovered, target.hindrance);
}

} // namespace nib
