#include "shell/CommandRules.h"

namespace nib {

namespace {

using namespace rules;

bool ToolBarShown(Context& c)
{
    return c.program.Menus().State(Band::ToolBar).visible;
}
bool StatusBarShown(Context& c)
{
    return c.program.Menus().State(Band::StatusBar).visible;
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

void SetHighlight(CommandContext& c)
{
    bool mark = NewMark(c, Highlights(c));
    c.document->SetHighlight(mark);
    for (Band band : {Band::ToolBar, Band::MainMenu}) c.program.Menus().SetChecked(band, u"Highlight", mark);
}

constexpr CommandRow kRows[] = {
    {u"ViewToolbar", [](CommandContext& c) { c.program.Menus().ShowBand(Band::ToolBar, NewMark(c, ToolBarShown(c))); },
     Always, ToolBarShown},
    {u"ViewStatusbar",
     [](CommandContext& c) { c.program.Menus().ShowBand(Band::StatusBar, NewMark(c, StatusBarShown(c))); }, Always,
     StatusBarShown},
    {u"Highlight", SetHighlight, HasDocument, Highlights},
    {u"LineWrap", [](CommandContext& c) { View(c).SetLineWrap(NewMark(c, Wraps(c))); }, CanWrap, Wraps},
    {u"Results", [](CommandContext& c) { c.program.Forms().Results(); }, Always},
    {u"Settings", [](CommandContext& c) { c.program.Forms().Settings(); }, Always},
    {u"HelpTopics", [](CommandContext& c) { c.program.Forms().HelpTopics(); }, Always},
    {u"HelpAbout", [](CommandContext& c) { c.program.Forms().About(); }, Always},
};

} // namespace

std::span<const CommandRow> ViewCommandRows()
{
    return kRows;
}

} // namespace nib
