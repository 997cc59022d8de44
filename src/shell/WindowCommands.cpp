// The commands on windows, what they show, and their tabs.

#include "records/GridFiles.h"
#include "shell/ClosedDocuments.h"
#include "shell/Commands.h"
#include "shell/Program.h"
#include "shell/menus/MenuModel.h"

namespace nib {

namespace {

using namespace window_state;

using Context = const CommandContext;

bool HasDocuments(Context& c)
{
    return c.program.OpenDocuments().Count() > 0;
}
bool HasView(Context& c)
{
    return c.document && c.document->View();
}

int32_t ActiveTab(Context& c)
{
    return c.document ? c.document->DocumentID() : 0;
}
bool CanClose(Context& c)
{
    return c.document || c.program.Window().GuestInFront() != 0;
}
void Close(CommandContext& c)
{
    if (c.document)
        c.program.Files().FileClose(*c.document);
    else
        c.program.Window().CloseGuest(c.program.Window().GuestInFront());
}
bool HasMore(Context& c)
{
    return c.document && HasOthers(c.program, ActiveTab(c));
}
bool HasTabsToTheRight(Context& c)
{
    return c.document && HasRight(c.program, ActiveTab(c));
}
bool CanReopenClosed(Context& c)
{
    return c.program.Files().CanReopenClosed();
}

bool IsMaximized(Context& c)
{
    return HasView(c) && c.document->View()->WindowState() == kMaximized;
}

bool CanGrid(Context& c)
{
    return HasView(c) && c.document->ItemObject() && !c.document->LocalFile();
}
bool IsGrid(Context& c)
{
    return HasView(c) && c.document->View()->IsGrid();
}
void SetGrid(CommandContext& c)
{
    const bool mark = c.checked.value_or(!IsGrid(c));
    if (!c.document->View()->TakeInput().empty()) return;
    c.document->View()->SetGrid(mark);
    GridFiles(c.program.Store()).Set(*c.document->ItemObject(), mark);
}

template <int32_t Mode>
void Arrange(CommandContext& c)
{
    c.program.Window().Arrange(Mode);
}

/// The document whose tab the tab menu was opened on; null when it has closed since.
std::shared_ptr<mvDocument> TabDocument(Context& c)
{
    auto document = c.program.OpenDocuments().ById(ToInt(c.program.Menus().Root(Band::TabContext).tag));
    return document && document->View() ? document : nullptr;
}

bool HasTab(Context& c)
{
    return TabDocument(c) != nullptr;
}
int32_t MenuTab(Context& c)
{
    return ToInt(c.program.Menus().Root(Band::TabContext).tag);
}
bool HasTabAndMore(Context& c)
{
    return HasTab(c) && HasOthers(c.program, MenuTab(c));
}
bool HasTabAndMoreToTheRight(Context& c)
{
    return HasTab(c) && HasRight(c.program, MenuTab(c));
}

constexpr CommandRow kRows[] = {
    {u"TileHorizontal", Arrange<1>, HasDocuments},
    {u"TileVertical", Arrange<2>, HasDocuments},
    {u"Cascade", Arrange<0>, HasDocuments},
    {u"Maximize", [](CommandContext& c) { ToggleWindowState(*c.document->View(), kMaximized); }, HasView, IsMaximized},
    {u"RecordGrid", SetGrid, CanGrid, IsGrid},
    {u"Close", Close, CanClose},
    {u"CloseOthers", [](CommandContext& c) { CloseOthers(c.program, ActiveTab(c)); }, HasMore},
    {u"CloseRight", [](CommandContext& c) { CloseRight(c.program, ActiveTab(c)); }, HasTabsToTheRight},
    {u"CloseAll", [](CommandContext& c) { c.program.Files().FileCloseAll(); }, HasDocuments},
    {u"ReopenClosed", [](CommandContext& c) { c.program.Files().ReopenClosed(); }, CanReopenClosed},
    {u"tab_activate", [](CommandContext& c) { TabDocument(c)->View()->Activate(); }, HasTab},
    {u"tab_close", [](CommandContext& c) { CloseWindow(*TabDocument(c)); }, HasTab},
    {u"tab_others", [](CommandContext& c) { CloseOthers(c.program, MenuTab(c)); }, HasTabAndMore},
    {u"tab_right", [](CommandContext& c) { CloseRight(c.program, MenuTab(c)); }, HasTabAndMoreToTheRight},
    {u"tab_max", [](CommandContext& c) { ToggleWindowState(*TabDocument(c)->View(), kMaximized); }, HasTab},
    {u"tab_min", [](CommandContext& c) { ToggleWindowState(*TabDocument(c)->View(), kMinimized); }, HasTab},
};

} // namespace

std::span<const CommandRow> WindowCommands()
{
    return kRows;
}

} // namespace nib
