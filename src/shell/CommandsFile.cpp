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
bool CanPrint(Context& c)
{
    return c.document && c.ports.printer;
}
bool HasProperties(Context& c)
{
    return c.document && c.ports.dialogs;
}
bool CanCompile(Context& c)
{
    return Writable(c) && c.ports.compiler && c.ports.compiler->CanCompile(*c.document);
}
bool CanFormat(Context& c)
{
    return Writable(c) && c.ports.edits;
}

void Compile(CommandContext& c)
{
    const Text question = u"Program has not been saved. Do you want\nto save the file, then compile the program?";
    if (c.program.Files().IsDocumentSaved(*c.document, question, message_box::kOkCancel) != Saved::Stop)
        c.ports.compiler->Compile(*c.document);
}

constexpr CommandRow kRows[] = {
    {u"New", [](CommandContext& c) { c.program.Files().FileNew(); }, Always},
    {u"Open", [](CommandContext& c) { c.program.Files().FileOpen(); }, Always},
    {u"Close", [](CommandContext& c) { c.program.Files().FileClose(*c.document); }, HasDocument},
    {u"Save", [](CommandContext& c) { c.program.Files().FileSave(*c.document); }, CanSave},
    {u"SaveAs", [](CommandContext& c) { c.program.Files().FileSaveAs(*c.document); }, HasDocument},
    {u"SaveAll", [](CommandContext& c) { c.program.Files().FileSaveAll(); }, CanSaveAll},
    {u"Print", [](CommandContext& c) { c.ports.printer->PrintText(*c.document); }, CanPrint},
    {u"Properties", [](CommandContext& c) { c.ports.dialogs->Properties(*c.document); }, HasProperties},
    {u"Exit", [](CommandContext& c) { c.program.Files().FileExit(); }, Always},
    {u"Format", [](CommandContext& c) { c.ports.edits->Format(*c.document); }, CanFormat},
    {u"Compile", Compile, CanCompile},
};

} // namespace

std::span<const CommandRow> FileCommandRows()
{
    return kRows;
}

} // namespace nib
