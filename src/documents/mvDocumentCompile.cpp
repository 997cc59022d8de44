// Compile: the host's compiler on the saved item.

#include "documents/CompileCommand.h"
#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"

namespace nib {

namespace {

constexpr TextView kNoItem = u"Unable to compile un-saved document! Use Save-As from the File menu to save the "
                             u"document, then compile it.";
constexpr TextView kLocalFile = u"Unable to compile document saved as a local file!";
constexpr TextView kModified = u"Unable to compile un-saved document! Do you want to save the document, then compile "
                               u"it?";
constexpr TextView kNoExecute = u"Host does not allow Nib to EXECUTE any utilities. Please enable this feature!";
constexpr TextView kCompiling = u"Compiling program on host system";

} // namespace

bool mvDocument::CanCompile() const
{
    return item_ && !LocalFile() && item_->Supports(kSupportsExecute);
}

void mvDocument::Compile()
{
    EnsureView();
    if (!item_) return Warn(kNoItem);
    if (LocalFile()) return Warn(kLocalFile);
    if (IsDirty() && !(Ask(kModified) && FileSave())) return;
    // Others may close the document while the host is busy.
    const auto self = shared_from_this();
    const auto item = item_;
    if (!item->Supports(kSupportsExecute) || !item->Session()) {
        services_.shell.ShowMessage(kNoExecute, message_box::kOk);
        return;
    }
    Text shown;
    {
        WaitCursor wait(services_.shell);
        StatusNote note(services_.shell, kCompiling);
        AutoSaveHold hold(services_.shell);
        const Text command = BuildCompileCommand(services_.settings.CompileCommand, services_.settings.CompileOptions,
                                                 item->Folder(), item->ItemID());
        shown = FilterCompileOutput(item->Session()->Execute(command, u"", 0));
    }
    if (shown.empty()) shown = u"\r\n";
    if (!services_.results) return;
    services_.shell.Beep();
    services_.results->ShowResults(shown);
}

} // namespace nib
