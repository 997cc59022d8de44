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

/// Why the text cannot go back to its item; empty when it can.
Text Hindrance(mvItem& item, const JournalHead& head)
{
    if (!item.IsItem() || !item.Exists()) return u"it is no longer there";
    if (item.ReadOnly()) return u"it cannot be written now";
    item.ReadItem(0, 0, 0);
    const bool known = !head.version.empty() && !item.Version().empty();
    return known && item.Version() == head.version ? Text() : Text(u"it was changed since");
}

/// What was saved last needs no recovery, wherever the crash came.
bool IsStored(mvItem& item, const JournalText& recovered, int32_t tabSize)
{
    return OrDefault([&] { return ExpandTabs(item.ReadItem(0, 0, 0), tabSize) == recovered.text; }, false);
}

std::shared_ptr<mvDocument> PutBack(DocumentServices& services, const JournalText& recovered, Text& hindrance)
{
    std::shared_ptr<mvItem> item;
    auto failure = FailureOf([&] {
        item = services.connection.OpenServerForPath(recovered.head.path, false, services.settings.RecordLocking);
        hindrance = Hindrance(*item, recovered.head);
        if (!hindrance.empty() && IsStored(*item, recovered, services.settings.TabSize)) hindrance.clear();
    });
    if (failure) hindrance = IsLocked(*failure) ? Text(u"it is locked now") : failure->description;
    if (!hindrance.empty()) return nullptr;
    return Make(services, [&](mvDocument& document) {
        if (!document.ItemOpen(std::move(item), false)) return false;
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
    Text hindrance;
    if (!recovered.head.path.empty())
        if (auto document = PutBack(services, recovered, hindrance)) return document;
    return AsNew(services, recovered, hindrance);
}

} // namespace nib
