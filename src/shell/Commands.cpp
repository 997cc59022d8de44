#include "shell/Commands.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "shell/Program.h"
#include "shell/menus/MenuModel.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kWindowEntry = u"miWList";
constexpr TextView kRecentEntry = u"file_";

const CommandRow* FindCommand(TextView key)
{
    for (auto table :
         {FileCommandRows(), EditCommandRows(), SearchCommandRows(), ViewCommandRows(), WindowCommandRows()})
        for (const CommandRow& row : table)
            if (key == row.key) return &row;
    return nullptr;
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

/// The name of the client's command behind a key; empty when it has none.
Text ExtendedName(TextView key, const CommandContext& context)
{
    if (!context.ports.extended) return {};
    return OrDefault([&] { return context.ports.extended->Look(key); }, Text());
}

bool Dispatch(TextView key, CommandContext& context)
{
    // First, since a client's name may begin like an entry of a list.
    if (Text name = ExtendedName(key, context); !name.empty()) {
        if (!context.document) return false;
        context.ports.extended->Raise(*context.document, name);
        return true;
    }
    if (const CommandRow* row = FindCommand(key)) {
        if (!row->enabled(context)) return false;
        row->run(context);
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
    return Guarded(
        context.program.Log(), u"frmMain.qkMenuBar_ToolClick",
        [&] {
            bool done = Dispatch(key, context);
            // Also after a refusal: the tool may show a state that has passed.
            context.program.StateChanged();
            return done;
        },
        [&](const Error& error) {
            context.program.ReportError(error.description);
            return false;
        });
}

CommandState StateOfCommand(TextView key, const CommandContext& context)
{
    const CommandRow* row = FindCommand(key);
    if (!row) return {};
    return {row->enabled(context), row->checked && row->checked(context)};
}

bool IsCommand(TextView key)
{
    return FindCommand(key) != nullptr;
}

bool IsReservedKey(TextView key)
{
    return IsCommand(key) || IsListEntry(key);
}

} // namespace nib
