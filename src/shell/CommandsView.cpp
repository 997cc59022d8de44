#include "shell/CommandRules.h"

namespace nib {

namespace {

using namespace rules;

bool ToolBarShown(Context& c)
{
    return c.menus.State(Band::ToolBar).visible;
}
bool StatusBarShown(Context& c)
{
    return c.menus.State(Band::StatusBar).visible;
}
bool Highlights(Context& c)
{
    return c.document && c.document->Highlight();
}
bool Wraps(Context& c)
{
    return HasView(c) && View(c).LineWrap();
}
bool CanWrap(Context& c)
{
    return HasView(c) && !c.program.EditorSettings().CollapseBlocks;
}
bool HasResults(Context& c)
{
    return c.ports.results != nullptr;
}

void SetHighlight(CommandContext& c)
{
    bool mark = NewMark(c, Highlights(c));
    c.document->SetHighlight(mark);
    for (Band band : {Band::ToolBar, Band::MainMenu}) c.menus.SetChecked(band, u"Highlight", mark);
}

void OpenHelp(CommandContext& c)
{
    if (c.ports.dialogs->HelpTopics()) c.program.State().HelpWasOpened = true;
}

constexpr CommandRow kRows[] = {
    {u"ViewToolbar", [](CommandContext& c) { c.menus.ShowBand(Band::ToolBar, NewMark(c, ToolBarShown(c))); }, Always,
     ToolBarShown},
    {u"ViewStatusbar", [](CommandContext& c) { c.menus.ShowBand(Band::StatusBar, NewMark(c, StatusBarShown(c))); },
     Always, StatusBarShown},
    {u"Highlight", SetHighlight, HasDocument, Highlights},
    {u"LineWrap", [](CommandContext& c) { View(c).SetLineWrap(NewMark(c, Wraps(c))); }, CanWrap, Wraps},
    {u"Results", [](CommandContext& c) { c.ports.results->ShowResults(u""); }, HasResults},
    {u"Settings", [](CommandContext& c) { c.ports.dialogs->Settings(1); }, HasDialogs},
    {u"HelpTopics", OpenHelp, HasDialogs},
    {u"HelpAbout", [](CommandContext& c) { c.ports.dialogs->About(); }, HasDialogs},
};

} // namespace

std::span<const CommandRow> ViewCommandRows()
{
    return kRows;
}

} // namespace nib
