#include "shell/Commands.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "documents/mvDocuments.h"
#include "shell/MenuModel.h"
#include "shell/Program.h"

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

bool RunExtended(TextView key, CommandContext& context)
{
    if (!context.ports.extended) return false;
    Text name = OrDefault([&] { return context.ports.extended->Look(key); }, Text());
    if (name.empty() || !context.document) return false;
    context.ports.extended->Raise(*context.document, name);
    return true;
}

bool Dispatch(TextView key, CommandContext& context)
{
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
    return RunExtended(key, context);
}

} // namespace

bool RunCommand(TextView key, CommandContext& context)
{
    return Guarded(
        context.program.Log(), u"frmMain.qkMenuBar_ToolClick",
        [&] {
            bool done = Dispatch(key, context);
            // Also after a refusal: the tool may show a state that has passed.
            context.program.UpdateToolBar();
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

} // namespace nib
