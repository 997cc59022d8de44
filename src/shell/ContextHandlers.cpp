#include "shell/ContextHandlers.h"

#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "shell/Program.h"

namespace nib {

namespace {

SourceView* ViewOfDocument(mvDocument* document)
{
    return document && document->View() ? &document->View()->txtText() : nullptr;
}

uint32_t BlockState(SourceDocument& text, int32_t line)
{
    return text.GetLineData(line, LineWord::Control) & line_bits::kBlockStateMask;
}

/// The head of the innermost block round `line`, which may be the head itself; -1 when it is in none.
int32_t HeadOf(SourceDocument& text, int32_t line)
{
    int32_t closed = 0;
    for (int32_t at = line; at >= 0; --at) {
        uint32_t state = BlockState(text, at);
        bool head = state == line_bits::kBlockHead || state == line_bits::kBlockCollapsed;
        if (head && closed-- == 0) return at;
        if (state == line_bits::kBlockEnd && at != line) ++closed;
    }
    return -1;
}

/// What the clicked text names, as it stands in the document's own host and account or beside its local file.
struct NamedItem {
    ItemPlace place;
    Text path;
};

ItemPlace HomeOf(Program& program, mvItem* item)
{
    if (item) return {item->Provider(), item->ServerName(), item->Database(), item->Folder(), {}};
    const Location& location = program.CurrentLocation();
    return {location.Provider, location.ServerName, location.Database, {}, {}};
}

Text FolderOf(const Text& name)
{
    return name.substr(0, name.find_last_of(u'/'));
}

NamedItem ResolveTarget(Program& program, mvDocument& document)
{
    TextView target = Trim(program.State().Target);
    NamedItem named{HomeOf(program, document.ItemObject().get()), {}};
    bool local = EqualsNoCase(named.place.provider, u"file");
    if (CountFields(target, u' ') > 1) {
        Text file(Field(target, u' ', 1));
        target = Trim(target.substr(file.size()));
        target = Field(target, u' ', 1);
        // Beside the folder of a local file stand the other folders of its account.
        named.place.folder = local && file.front() != u'/' ? FolderOf(named.place.folder) + u"/" + file : file;
    }
    named.place.itemId = target;
    named.path = local ? program.Connection().ComposeFilePath(named.place.folder + u"/" + named.place.itemId)
                       : program.Connection().ComposeHostPath(named.place);
    return named;
}

bool ActivateOpen(Program& program, const ItemPlace& place)
{
    for (auto& open : program.OpenDocuments().All()) {
        if (!EqualsNoCase(open->Filename(), place.folder) || !EqualsNoCase(open->ItemID(), place.itemId)) continue;
        open->Activate();
        return true;
    }
    return false;
}

} // namespace

void HandleBookmarkToggle(Program& program, mvDocument* document)
{
    int32_t line = program.State().TargetLine;
    if (SourceView* view = ViewOfDocument(document); view && line > 0) view->Document().ToggleBookmark(line - 1);
}

void HandleBlockToggle(Program& program, mvDocument* document)
{
    SourceView* view = ViewOfDocument(document);
    const Text& target = program.State().Target;
    if (!view || target.empty()) return;
    SourceDocument& text = view->Document();
    int32_t line = std::min(ToInt(TextView(target).substr(1)), text.LineCount() - 1);
    if (target.front() == u'+') text.ExpandBlock(line);
    if (target.front() != u'-') return;
    while (line >= 0 && BlockState(text, line) != line_bits::kBlockHead) --line;
    if (line >= 0) text.CollapseBlock(line);
}

void HandleBlockCollapse(mvDocument* document, bool collapse, bool all)
{
    SourceView* view = ViewOfDocument(document);
    if (!view) return;
    SourceDocument& text = view->Document();
    if (all) return collapse ? text.CollapseAll() : text.ExpandAll();
    int32_t line = view->CaretLine();
    bool inBlock = (text.GetLineData(line, LineWord::Control) & line_bits::kBlockMask) != 0;
    bool closed = BlockState(text, line) == line_bits::kBlockCollapsed;
    if (closed && !collapse) text.ExpandBlock(line);
    if (closed || !inBlock || !collapse) return;
    if (int32_t head = HeadOf(text, line); head >= 0) text.CollapseBlock(head);
}

void HandleGoto(Program& program, Dialogs* dialogs, mvDocument* document, bool alwaysAsk)
{
    Text& target = program.State().Target;
    if (target.empty() || alwaysAsk || !program.EditorSettings().NoGotoDialog) {
        if (dialogs) dialogs->Goto(target);
    } else if (document) {
        document->GotoLabel(target);
    }
}

void HandleOpen(Program& program, mvDocument* document)
{
    if (!document || Trim(program.State().Target).empty()) return;
    NamedItem named = ResolveTarget(program, *document);
    if (ActivateOpen(program, named.place)) return;
    SelectedItem picked;
    {
        AutoSaveHold hold(program.Shell());
        auto item = program.Connection().OpenServerForPath(named.path, true, false);
        SelectRequest request{.mode = u"Open", .extension = {}, .offerReadOnly = true};
        request.lock = program.EditorSettings().RecordLocking;
        request.startNamed = true;
        picked = program.Connection().SelectItem(request, item.get());
    }
    if (picked.item) program.OpenPicked(picked);
}

} // namespace nib
