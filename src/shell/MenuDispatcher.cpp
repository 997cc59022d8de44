#include "shell/MenuDispatcher.h"

#include "hosts/StoredForm.h"
#include "shell/FileCommands.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kMostShown = 80;

bool IsHalf(char16_t unit, char16_t kind)
{
    return (unit & 0xFC00) == kind;
}

/// Both ends of a name that would make a menu as wide as the screen.
Text Shortened(TextView name)
{
    if (name.size() <= kMostShown) return Text(name);
    TextView head = name.substr(0, kMostShown / 2);
    TextView tail = name.substr(name.size() - kMostShown / 2);
    if (IsHalf(head.back(), 0xD800)) head.remove_suffix(1);
    if (IsHalf(tail.front(), 0xDC00)) tail.remove_prefix(1);
    return Text(head) + u"\u2026" + Text(tail);
}

} // namespace

CommandContext MenuDispatcher::Context() const
{
    return {program_, program_.OpenDocuments().ById(program_.Window().ActiveDocument())};
}

bool MenuDispatcher::Run(TextView key)
{
    CommandContext context = Context();
    return RunCommand(key, context);
}

void MenuDispatcher::UpdateToolBar()
{
    nib::UpdateToolBar(Context());
}

void MenuDispatcher::ToolClick(Band, const MenuTool& tool)
{
    CommandContext context = Context();
    if (tool.checkable) context.checked = tool.checked;
    // A copy: the command may remove its own tool, as when the list of windows is built afresh.
    Text key = tool.key;
    RunCommand(key, context);
}

void MenuDispatcher::MenuOpening(const MenuTool& menu)
{
    if (menu.key == u"File") BuildRecentMenu();
    if (menu.key == u"Window") BuildWindowMenu();
    if (menu.key == u"CharacterSet") NameOwnCharset();
}

/// What new items of the connection are written in where they are no UTF-8.
void MenuDispatcher::NameOwnCharset()
{
    const CommandContext context = Context();
    const StoredForm* form = context.document ? context.document->Stored() : nullptr;
    if (form) menus_.SetCaption(Band::MainMenu, u"CodingOwn", u"&" + form->CodingName(form->Codings().back()));
}

void MenuDispatcher::BuildRecentMenu()
{
    program_.Safely(u"modMain.BuildRecentMenu", [&] {
        MenuBatch batch(menus_);
        menus_.RemoveBeginning(Band::MainMenu, u"File", u"file_");
        for (int32_t i = 1; i <= program_.RecentFiles().ListCount(); ++i)
            AddEntry(u"File", u"file_", i, RecentEntryCaption(program_.RecentFiles().ListItem(i)), u"Exit");
    });
}

void MenuDispatcher::BuildWindowMenu()
{
    program_.Safely(u"modMain.BuildWindowMenu", [&] {
        MenuBatch batch(menus_);
        CommandContext context = Context();
        for (const auto& tool : menus_.Tool(Band::MainMenu, u"Window").tools) {
            if (!IsCommand(tool->key)) continue;
            const CommandState state = StateOfCommand(tool->key, context);
            menus_.SetState(Band::MainMenu, *tool, state.enabled, state.checked);
        }
        menus_.RemoveBeginning(Band::MainMenu, u"Window", u"miWList");
        if (!context.document) return;
        int32_t i = 0;
        for (auto& document : program_.OpenDocuments().All()) {
            Text name = document->DisplayName();
            if (IsSharedName(name)) name += u"\t" + document->PlaceText();
            const MenuTool& tool = AddEntry(u"Window", u"miWList", ++i, name, {});
            menus_.SetChecked(Band::MainMenu, tool.key, document == context.document);
        }
    });
}

/// Accounts have items of the same name.
bool MenuDispatcher::IsSharedName(TextView name) const
{
    const auto documents = program_.OpenDocuments().All();
    return std::count_if(documents.begin(), documents.end(), [&](auto& d) { return d->DisplayName() == name; }) > 1;
}

const MenuTool& MenuDispatcher::AddEntry(TextView menu, TextView prefix, int32_t number, TextView name, TextView before)
{
    MenuTool tool;
    tool.key = Text(prefix) + Decimal(number);
    // A digit calls one entry, so only the first ten have one.
    Text digits = Decimal(number);
    if (number <= 10) digits.insert(digits.size() - 1, 1, u'&');
    tool.caption = digits + u" " + DoubleAmpersands(Shortened(name));
    tool.beginGroup = number == 1;
    tool.checkable = before.empty();
    return menus_.Add(Band::MainMenu, menu, std::move(tool), before);
}

void MenuDispatcher::TabActivate(int32_t tab)
{
    program_.Safely(u"frmMain.qkMenuBar_TabActivate", [&] {
        if (tab < 0) return program_.Window().ActivateGuest(tab);
        if (auto document = program_.OpenDocuments().ById(tab)) document->Activate();
    });
}

void MenuDispatcher::TabClose(int32_t tab)
{
    program_.Safely(u"frmMain.qkMenuBar_TabClose", [&] {
        if (tab < 0) return program_.Window().CloseGuest(tab);
        if (auto document = program_.OpenDocuments().ById(tab)) CloseWindow(*document);
    });
}

void MenuDispatcher::TabContextMenu(int32_t tab, ScreenPoint at)
{
    auto document = program_.OpenDocuments().ById(tab);
    if (!document || !document->View()) return;
    menus_.SetTag(Band::TabContext, Decimal(tab));
    PrepareTabMenu(document->View()->WindowState(), document == Context().document);
    bar_.PopUp(Band::TabContext, at);
}

void MenuDispatcher::PrepareTabMenu(int32_t state, bool active)
{
    MenuBatch batch(menus_);
    bool buttons = program_.EditorSettings().MinMaxClose;
    menus_.SetVisible(Band::TabContext, u"tab_min", buttons);
    menus_.SetChecked(Band::TabContext, u"tab_min", state == window_state::kMinimized);
    menus_.SetEnabled(Band::TabContext, u"tab_min", active);
    menus_.SetBeginGroup(Band::TabContext, u"tab_min", true);
    menus_.SetChecked(Band::TabContext, u"tab_max", state == window_state::kMaximized);
    menus_.SetEnabled(Band::TabContext, u"tab_max", active);
    menus_.SetBeginGroup(Band::TabContext, u"tab_max", !buttons);
    for (TextView key : {u"tab_others", u"tab_right", u"CloseAll", u"ReopenClosed"})
        menus_.SetEnabled(Band::TabContext, key, StateOfCommand(key, Context()).enabled);
}

void MenuDispatcher::PrepareContextMenu(HitKind kind)
{
    MenuBatch batch(menus_);
    CommandContext context = Context();
    for (auto& tool : menus_.Root(Band::Popup).tools) {
        CommandState state = StateOfCommand(tool->key, context);
        menus_.SetState(Band::Popup, *tool, state.enabled, state.checked);
    }
    bool block = kind == HitKind::OpenBlock || kind == HitKind::ClosedBlock;
    bool item = kind == HitKind::Call || kind == HitKind::Include;
    const std::pair<TextView, bool> hits[] = {
        {u"ctxGoto", kind == HitKind::Label}, {u"ctxOpen", item}, {u"ctxToggleBlock", block}};
    for (auto [key, hit] : hits)
        if (!hit) menus_.SetEnabled(Band::Popup, key, false);
    menus_.SetVisible(Band::Popup, u"ctxToggleBlock", program_.EditorSettings().CollapseBlocks);
    menus_.SetCaption(Band::Popup, u"ctxToggleBlock",
                      kind == HitKind::ClosedBlock ? u"Expand block" : u"Collapse block");
    if (menus_.Find(Band::ToolBar, u"Undo"))
        menus_.SetEnabled(Band::ToolBar, u"Undo", StateOfCommand(u"Undo", context).enabled);
}

void MenuDispatcher::ShowContextMenu(HitKind kind, std::optional<ScreenPoint> at)
{
    PrepareContextMenu(kind);
    bar_.PopUp(Band::Popup, at);
}

} // namespace nib
