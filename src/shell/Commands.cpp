#include "shell/Commands.h"

#include "shell/Program.h"
#include "shell/menus/MenuModel.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kWindowEntry = u"miWList";
constexpr TextView kRecentEntry = u"file_";

constexpr std::span<const CommandRow> (*kTables[])() = {MainCommands, StorageCommands, WindowCommands};

/// Those that are also for the document that a window in front compares.
constexpr TextView kForCompared[] = {u"Save", u"SaveAll", u"Undo", u"UndoReplacements", u"Redo"};

const CommandRow* FindCommand(TextView key)
{
    for (const auto table : kTables)
        for (const CommandRow& row : table())
            if (key == row.key) return &row;
    return nullptr;
}

/// They edit or select by the lines and the caret of the text, which is not in sight while a record shows as tables.
/// The tables have keys of their own for what they can do of it.
constexpr TextView kOfText[]{u"Format",
                             u"Cut",
                             u"Copy",
                             u"Paste",
                             u"Clear",
                             u"DeleteLine",
                             u"SelectAll",
                             u"IndentBlock",
                             u"OutdentBlock",
                             u"MoveLinesUp",
                             u"MoveLinesDown",
                             u"DuplicateLines",
                             u"JoinLines",
                             u"CommentBlock",
                             u"UncommentBlock",
                             u"AddCaretAbove",
                             u"AddCaretBelow",
                             u"ValueMark",
                             u"SubValueMark",
                             u"ToggleCase",
                             u"Rename",
                             u"SelectNextOccurrence",
                             u"SelectAllOccurrences",
                             u"CompleteWord",
                             u"QuickMend"};

bool IsEnabled(const CommandRow& row, const CommandContext& context)
{
    const clsDocView* view = context.document ? context.document->View() : nullptr;
    const bool hidden = view && view->IsGrid() && std::ranges::find(kOfText, row.key) != std::end(kOfText);
    return !hidden && row.enabled(context);
}

CommandContext ContextFor(const CommandRow& row, const CommandContext& context)
{
    if (context.document || std::ranges::find(kForCompared, row.key) == std::end(kForCompared)) return context;
    const int32_t compared = context.program.Window().GuestDocument();
    return {context.program, context.program.OpenDocuments().ById(compared), context.checked};
}

CommandState StateOf(const CommandRow& row, const CommandContext& context)
{
    const CommandContext own = ContextFor(row, context);
    return {IsEnabled(row, own), row.checked && row.checked(own)};
}

int32_t NumberBehind(TextView key, TextView prefix)
{
    return ToInt(key.substr(prefix.size()));
}

/// A key that the window list or the recent files give to an entry; menus do not tell cases apart.
bool IsListEntry(TextView key)
{
    for (TextView prefix : {kWindowEntry, kRecentEntry}) {
        if (key.size() <= prefix.size() || !EqualsNoCase(key.substr(0, prefix.size()), prefix)) continue;
        TextView number = key.substr(prefix.size());
        return std::all_of(number.begin(), number.end(), units::IsDigit);
    }
    return false;
}

using Typing = SwitchedOn<MainWindow, &MainWindow::LetType>;

bool Dispatch(TextView key, CommandContext& context)
{
    // First, since a client's name may begin like an entry of a list.
    if (AutomationHost& clients = context.program.ClientCommands(); clients.Knows(key)) {
        if (context.document) clients.Raise(key);
        return context.document != nullptr;
    }
    if (const CommandRow* row = FindCommand(key)) {
        CommandContext own = ContextFor(*row, context);
        if (!IsEnabled(*row, own)) return false;
        std::optional<Typing> typing;
        if (row->typing) typing.emplace(context.program.Window());
        row->run(own);
        return true;
    }
    if (key.starts_with(kWindowEntry)) {
        auto document = context.program.OpenDocuments().Item(NumberBehind(key, kWindowEntry));
        if (document) document->Activate();
        return document != nullptr;
    }
    if (key.starts_with(kRecentEntry)) {
        context.program.Files().FileOpenRecent(NumberBehind(key, kRecentEntry));
        return true;
    }
    return false;
}

} // namespace

bool RunCommand(TextView key, CommandContext& context)
{
    const auto later = [key = Text(key), &program = context.program, checked = context.checked] {
        CommandContext then{program, program.OpenDocuments().ById(program.Window().ActiveDocument()), checked};
        RunCommand(key, then);
    };
    if (context.program.Window().Postpone(later)) return false;
    return context.program.Safely(u"frmMain.qkMenuBar_ToolClick", [&] {
        bool done = Dispatch(key, context);
        // Also after a refusal: the tool may show a state that has passed.
        context.program.StateChanged();
        return done;
    });
}

CommandState StateOfCommand(TextView key, const CommandContext& context)
{
    const CommandRow* row = FindCommand(key);
    return row ? StateOf(*row, context) : CommandState();
}

bool IsCommand(TextView key)
{
    return FindCommand(key) != nullptr;
}

bool IsReservedKey(TextView key)
{
    return IsCommand(key) || IsListEntry(key);
}

namespace {

void UpdateTools(MenuModel& menus, const CommandRow& row, const CommandContext& context)
{
    const MenuTool* onMenu = menus.Find(Band::MainMenu, row.key);
    const MenuTool* onToolBar = menus.Find(Band::ToolBar, row.key);
    if (!onMenu && !onToolBar) return;
    const CommandState state = StateOf(row, context);
    if (onMenu) menus.SetState(Band::MainMenu, *onMenu, state.enabled, state.checked);
    if (onToolBar) menus.SetState(Band::ToolBar, *onToolBar, state.enabled, state.checked);
}

} // namespace

void UpdateToolBar(const CommandContext& context)
{
    MenuModel& menus = context.program.Menus();
    MenuBatch batch(menus);
    for (const auto table : kTables)
        for (const CommandRow& row : table()) UpdateTools(menus, row, context);
    // With a document F1 belongs to the text.
    menus.SetShortcut(Band::MainMenu, u"HelpTopics", context.document ? u"" : u"F1");
}

} // namespace nib
