#include "shell/ClickTarget.h"
#include "shell/CommandRules.h"

namespace nib {

namespace {

using namespace rules;

bool CanBack(Context& c)
{
    return c.document && c.program.History().CanNavigateBack();
}
bool CanForward(Context& c)
{
    return c.document && c.program.History().CanNavigateForward();
}
bool HasBookmarks(Context& c)
{
    return HasView(c) && View(c).Document().BookmarkCount() > 0;
}

void ToggleBookmark(CommandContext& c)
{
    View(c).Document().ToggleBookmark(View(c).CaretLine());
}

template <bool Backward>
void GoToBookmark(CommandContext& c)
{
    int32_t line = View(c).Document().FindBookmark(View(c).CaretLine(), Backward);
    if (line >= 0) View(c).SetCaret({0, line});
}

void ClearAllBookmarks(CommandContext& c)
{
    for (auto& document : c.program.OpenDocuments().All())
        if (clsDocView* view = document->View()) view->txtText().Document().ClearBookmarks();
}

template <bool AlwaysAsk>
void Goto(CommandContext& c)
{
    HandleGoto(c.program, c.document.get(), AlwaysAsk);
}

constexpr CommandRow kRows[] = {
    {u"Find", [](CommandContext& c) { c.program.Forms().Find(); }, HasDocument},
    {u"FindNext", [](CommandContext& c) { c.program.Forms().FindNext(); }, HasDocument},
    {u"Replace", [](CommandContext& c) { c.program.Forms().Replace(); }, HasDocument},
    {u"NavBack", [](CommandContext& c) { c.program.History().NavigateBack(c.document.get()); }, CanBack},
    {u"NavForward", [](CommandContext& c) { c.program.History().NavigateForward(c.document.get()); }, CanForward},
    {u"ToggleBookmark", ToggleBookmark, HasView},
    {u"NextBookmark", GoToBookmark<false>, HasBookmarks},
    {u"PrevBookmark", GoToBookmark<true>, HasBookmarks},
    {u"ClearBookmarks", [](CommandContext& c) { View(c).Document().ClearBookmarks(); }, HasBookmarks},
    {u"ClearAllBookmarks", ClearAllBookmarks, HasDocument},
    {u"Goto", Goto<true>, HasDocument},
    {u"ctxGoto", Goto<false>, HasDocument},
    {u"ctxOpen", [](CommandContext& c) { HandleOpen(c.program, c.document.get()); }, HasDocument},
    {u"ctxToggleBlock", [](CommandContext& c) { HandleBlockToggle(c.program, c.document.get()); }, HasView},
    {u"ctxToggleBookmark", [](CommandContext& c) { HandleBookmarkToggle(c.program, c.document.get()); }, HasView},
};

} // namespace

std::span<const CommandRow> SearchCommandRows()
{
    return kRows;
}

} // namespace nib
