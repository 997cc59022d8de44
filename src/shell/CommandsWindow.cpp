#include "shell/CommandRules.h"
#include "shell/FileCommands.h"

namespace nib {

namespace {

using namespace rules;
using namespace window_state;

bool IsMaximized(Context& c)
{
    return HasView(c) && c.document->View()->WindowState() == kMaximized;
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

constexpr CommandRow kRows[] = {
    {u"TileHorizontal", Arrange<1>, HasDocuments},
    {u"TileVertical", Arrange<2>, HasDocuments},
    {u"Cascade", Arrange<0>, HasDocuments},
    {u"Maximize", [](CommandContext& c) { ToggleWindowState(*c.document->View(), kMaximized); }, HasView, IsMaximized},
    {u"tab_activate", [](CommandContext& c) { TabDocument(c)->View()->Activate(); }, HasTab},
    {u"tab_close", [](CommandContext& c) { CloseWindow(*TabDocument(c)); }, HasTab},
    {u"tab_max", [](CommandContext& c) { ToggleWindowState(*TabDocument(c)->View(), kMaximized); }, HasTab},
    {u"tab_min", [](CommandContext& c) { ToggleWindowState(*TabDocument(c)->View(), kMinimized); }, HasTab},
};

} // namespace

std::span<const CommandRow> WindowCommandRows()
{
    return kRows;
}

} // namespace nib
