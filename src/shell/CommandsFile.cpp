#include "shell/CommandRules.h"

namespace nib {

namespace {

using namespace rules;

bool CanSave(Context& c)
{
    return Writable(c) && c.document->IsDirty();
}
bool CanSaveAll(Context& c)
{
    return c.document && (Writable(c) || c.program.OpenDocuments().Count() > 1);
}
bool CanCompile(Context& c)
{
    return Writable(c) && c.document->CanCompile();
}

void Compile(CommandContext& c)
{
    const Text question = u"Program has not been saved. Do you want\nto save the file, then compile the program?";
    if (c.program.Files().IsDocumentSaved(*c.document, question, message_box::kOkCancel) != Saved::Stop)
        c.document->Compile();
}

constexpr CommandRow kRows[] = {
    {u"New", [](CommandContext& c) { c.program.Files().FileNew(); }, Always},
    {u"Open", [](CommandContext& c) { c.program.Files().FileOpen(); }, Always},
    {u"Close", [](CommandContext& c) { c.program.Files().FileClose(*c.document); }, HasDocument},
    {u"Save", [](CommandContext& c) { c.program.Files().FileSave(*c.document); }, CanSave},
    {u"SaveAs", [](CommandContext& c) { c.program.Files().FileSaveAs(*c.document); }, HasDocument},
    {u"SaveAll", [](CommandContext& c) { c.program.Files().FileSaveAll(); }, CanSaveAll},
    {u"Print", [](CommandContext& c) { c.program.Forms().Print(*c.document); }, HasDocument},
    {u"Properties", [](CommandContext& c) { c.program.Forms().Properties(*c.document); }, HasDocument},
    {u"Exit", [](CommandContext& c) { c.program.Files().FileExit(); }, Always},
    {u"Format", [](CommandContext& c) { c.document->Format(); }, Writable},
    {u"Compile", Compile, CanCompile},
};

} // namespace

std::span<const CommandRow> FileCommandRows()
{
    return kRows;
}

} // namespace nib
