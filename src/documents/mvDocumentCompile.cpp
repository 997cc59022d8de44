// Compile: the host's compiler on the saved item; part of mvDocument.

#include "documents/CompileCommand.h"
#include "documents/CompilerOutput.h"
#include "documents/mvDocument.h"

namespace nib {

namespace {

constexpr TextView kLineEnd{u"\r\n"};
constexpr TextView kNoItem = u"Unable to compile un-saved document! Use Save-As from the File menu to save the "
                             u"document, then compile it.";
constexpr TextView kLocalFile = u"Unable to compile document saved as a local file!";
constexpr TextView kModified = u"Unable to compile un-saved document! Do you want to save the document, then compile "
                               u"it?";
constexpr TextView kNoExecute = u"Host does not allow Nib to EXECUTE any utilities. Please enable this feature!";
constexpr TextView kCompiling = u"Compiling program on host system";
constexpr TextView kAfterwards = u"Running the command for a clean compile";

TextView LastLine(TextView text)
{
    const size_t end = text.rfind(u'\n');
    return Trim(end == TextView::npos ? text : text.substr(end + 1));
}

} // namespace

Text mvDocument::Execute(mvItem& item, TextView note, TextView command, TextView options, const PrintedLines& printed)
{
    const WaitCursor wait(services_.frame);
    const StatusNote shown(services_.frame, note);
    const AutoSaveHold hold(services_.shell);
    return item.Session()->ExecuteTelling(BuildCompileCommand(command, options, item.Folder(), item.ItemID()), printed);
}

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
    const ItemPlace place{item->Provider(), item->ServerName(), item->Database(), item->Folder(), item->ItemID()};
    bool first = true;
    const auto printed = [&](TextView lines) {
        const Text text = FilterCompileOutput(lines);
        if (text.empty() || !services_.results) return;
        services_.compiled = place;
        services_.results->AddOutput(text, std::exchange(first, false));
    };
    const MvEdit& settings = services_.settings;
    const Text output = Execute(*item, kCompiling, settings.CompileCommand, settings.CompileOptions, printed);
    Text shown = FilterCompileOutput(output);
    services_.compiled = place;
    if (services_.onCompiled) services_.onCompiled(shown);
    if (shown.empty()) shown = kLineEnd;
    const bool clean = IsCleanCompile(output);
    Text said;
    if (clean && !Complains(shown)) said = LastLine(shown);
    if (services_.results) {
        services_.boxes.Beep();
        said.empty() ? services_.results->ShowResults(shown) : services_.results->KeepResults(shown);
    }
    if (clean && !settings.CleanCompileCommand.empty()) {
        // What the compiler said is there, should this fail.
        const Text further = FilterCompileOutput(Execute(*item, kAfterwards, settings.CleanCompileCommand, {}, {}));
        if (services_.results && !further.empty())
            services_.results->ShowResults(shown.append(kLineEnd).append(further));
    }
    if (!said.empty()) services_.frame.SetStatusText(1, item->ItemName() + u": " + said);
}

} // namespace nib
