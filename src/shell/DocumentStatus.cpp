#include "shell/DocumentStatus.h"

#include "editing/MvEdit.h"
#include "hosts/StoredForm.h"
#include "shell/menus/MenuModel.h"

namespace nib {

namespace {

struct PanelText {
    TextView panel;
    Text (*text)(const mvDocument& document);
};

constexpr PanelText kPanels[] = {
    {u"Place", [](const mvDocument& document) { return document.PlaceText(); }},
    {u"Lock", LockText},
    {u"Coding", CodingText},
    {u"Ends", EndsText},
};

constexpr TextView kEnds[] = {u"LF", u"CR LF", u"CR"};

} // namespace

Text LockText(const mvDocument& document)
{
    const auto item = document.ItemObject();
    if (!item) return {};
    if (item->ReadOnly()) return u"Read only";
    if (document.LocalFile()) return {};
    return item->HoldsLock() ? u"Locked here" : u"Not locked";
}

Text CodingText(const mvDocument& document)
{
    const StoredForm* form = document.Stored();
    return form ? form->CodingName() : Text();
}

Text EndsText(const mvDocument& document)
{
    const StoredForm* form = document.Stored();
    if (!form || !form->HasLineEnds()) return {};
    const Text ends(kEnds[static_cast<size_t>(form->Ends())]);
    return document.MixedEnds() ? ends + u", mixed" : ends;
}

void ShowDocumentStatus(MenuModel& menus, const mvDocument* document, TextView dialect)
{
    MenuBatch batch(menus);
    for (const PanelText& row : kPanels)
        menus.SetCaption(Band::StatusBar, row.panel, document ? row.text(*document) : Text());
    const bool none = dialect.empty() || EqualsNoCase(dialect, kNoDialect);
    menus.SetCaption(Band::StatusBar, u"Dialect", !document ? TextView() : none ? u"No dialect" : dialect);
    menus.SetColor(Band::StatusBar, u"Place", document ? document->Color() : Text());
}

} // namespace nib
