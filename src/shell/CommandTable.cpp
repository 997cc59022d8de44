// Commands: what each does, when it can act, when it shows as checked.

#include "shell/ClickTarget.h"
#include "shell/Commands.h"
#include "shell/Program.h"
#include "shell/menus/MenuModel.h"

namespace nib {

namespace {

using Context = const CommandContext;

bool Always(Context&)
{
    return true;
}
bool HasDocument(Context& c)
{
    return c.document != nullptr;
}
bool HasView(Context& c)
{
    return c.document && c.document->View();
}
bool Writable(Context& c)
{
    return c.document && !c.document->ReadOnly();
}
bool FoldsBlocks(Context& c)
{
    return HasView(c) && c.program.EditorSettings().CollapseBlocks;
}

SourceView& View(Context& c)
{
    return c.document->View()->txtText();
}

/// The check mark that a command is to set.
bool NewMark(Context& c, bool present)
{
    return c.checked.value_or(!present);
}

/// A form's own doing.
template <Form Which>
void Show(CommandContext& c)
{
    c.program.Forms().Show(Which, c.document.get());
}

// File

template <void (FileCommands::*Member)()>
void ForAll(CommandContext& c)
{
    (c.program.Files().*Member)();
}

bool CanSave(Context& c)
{
    return c.document && c.document->IsDirty();
}
bool CanSaveAll(Context& c)
{
    return c.document && (Writable(c) || c.program.OpenDocuments().Count() > 1);
}
/// Its item, that is, which may have gone since.
bool HasStored(Context& c)
{
    return c.document && c.document->ItemObject();
}
bool HasTwo(Context& c)
{
    return c.document && c.program.OpenDocuments().Count() > 1;
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

// Edit

bool CanUndo(Context& c)
{
    return c.document && c.document->CanUndo();
}
bool CanUndoSweep(Context& c)
{
    return c.document && c.document->CanUndoSweep();
}
bool CanRedo(Context& c)
{
    return c.document && c.document->CanRedo();
}
bool HasSelection(Context& c)
{
    return HasView(c) && View(c).AnySelection();
}
bool CanPaste(Context& c)
{
    return c.document && c.program.ClipboardHasText();
}

/// A command that is one call on the document.
template <void (mvDocument::*Member)()>
void Do(CommandContext& c)
{
    (c.document.get()->*Member)();
}

/// The same for one that changes the text, which a read-only document refuses as it refuses keys.
template <void (mvDocument::*Member)()>
void Edit(CommandContext& c)
{
    if (c.document->EnsureView().txtText().MayEdit()) Do<Member>(c);
}

template <bool Indent>
void IndentBlock(CommandContext& c)
{
    if (c.document->EnsureView().txtText().MayEdit()) c.document->IndentBlock(Indent);
}
template <bool Comment>
void CommentBlock(CommandContext& c)
{
    if (c.document->EnsureView().txtText().MayEdit()) c.document->CommentBlock(Comment);
}
/// A command of the view itself.
template <void (SourceView::*Member)()>
void InView(CommandContext& c)
{
    (View(c).*Member)();
}

bool IndentsByBlocks(Context& c)
{
    return c.program.EditorSettings().IndentByBlocks;
}
void SetIndentByBlocks(CommandContext& c)
{
    const bool mark = c.program.EditorSettings().IndentByBlocks = NewMark(c, IndentsByBlocks(c));
    for (auto& document : c.program.OpenDocuments().All())
        if (clsDocView* view = document->View()) view->txtText().SetIndentsByBlocks(mark);
}
template <bool Collapse, bool All>
void Fold(CommandContext& c)
{
    HandleBlockCollapse(c.document.get(), Collapse, All);
}

// Search

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

void GoToMatch(CommandContext& c)
{
    const std::optional<Position> match = View(c).MatchOfCaret();
    if (!match) return;
    c.program.History().RecordPosition(c.document.get(), false);
    View(c).SetCaret(*match);
}

// View

bool ToolBarShown(Context& c)
{
    return c.program.Menus().State(Band::ToolBar).visible;
}
bool StatusBarShown(Context& c)
{
    return c.program.Menus().State(Band::StatusBar).visible;
}
bool Highlights(Context& c)
{
    return c.document && c.document->Highlight();
}
bool Wraps(Context& c)
{
    return HasView(c) && View(c).LineWrap();
}
bool CanWrap(Context& c)
{
    return HasView(c) && !c.program.EditorSettings().CollapseBlocks;
}

bool IsSplit(Context& c)
{
    return HasView(c) && c.document->View()->IsSplit();
}

template <bool MvEdit::*Mark>
bool Marks(Context& c)
{
    return c.program.EditorSettings().*Mark;
}
template <bool MvEdit::*Mark>
void SetMark(CommandContext& c)
{
    c.program.EditorSettings().*Mark = NewMark(c, Marks<Mark>(c));
    for (auto& document : c.program.OpenDocuments().All())
        if (clsDocView* view = document->View()) view->txtText().SetMarks(ViewMarksOf(c.program.EditorSettings()));
}

void SetHighlight(CommandContext& c)
{
    bool mark = NewMark(c, Highlights(c));
    c.document->SetHighlight(mark);
    c.program.Assist().DocumentChanged(*c.document);
    for (Band band : {Band::ToolBar, Band::MainMenu}) c.program.Menus().SetChecked(band, u"Highlight", mark);
}

// Programs

template <bool Backward>
void GoToFinding(CommandContext& c)
{
    c.program.Assist().GoToFinding(c.document->DocumentID(), Backward);
}

template <AssistForm Which>
void ShowAssist(CommandContext& c)
{
    if (c.program.Assist().Show) c.program.Assist().Show(Which, c.document.get());
}

template <bool MvEdit::*Panel>
void ShowPanel(CommandContext& c)
{
    c.program.EditorSettings().*Panel = NewMark(c, Marks<Panel>(c));
    if (c.program.Assist().PanelsChanged) c.program.Assist().PanelsChanged();
}

template <bool MvEdit::*Panel>
void ShowHistory(CommandContext& c)
{
    c.program.EditorSettings().*Panel = NewMark(c, Marks<Panel>(c));
    c.program.Versions().LookAgain();
}

template <bool MvEdit::*Switch>
void SetAssist(CommandContext& c)
{
    c.program.EditorSettings().*Switch = NewMark(c, Marks<Switch>(c));
    c.program.Assist().SettingsChanged();
}

constexpr CommandRow kRows[] = {
    {u"New", ForAll<&FileCommands::FileNew>, Always},
    {u"Open", ForAll<&FileCommands::FileOpen>, Always},
    {u"Save", [](CommandContext& c) { c.program.Files().FileSave(*c.document); }, CanSave, nullptr, true},
    {u"SaveAs", [](CommandContext& c) { c.program.Files().FileSaveAs(*c.document); }, HasDocument, nullptr, true},
    {u"SaveAll", ForAll<&FileCommands::FileSaveAll>, CanSaveAll, nullptr, true},
    {u"Print", Show<Form::Print>, HasDocument},
    {u"Properties", Show<Form::Properties>, HasDocument},
    {u"Exit", ForAll<&FileCommands::FileExit>, Always},
    {u"Format", [](CommandContext& c) { c.document->Format(); }, Writable},
    {u"Compile", Compile, CanCompile},
    {u"Undo", Edit<&mvDocument::Undo>, CanUndo},
    {u"UndoReplacements", Edit<&mvDocument::UndoSweep>, CanUndoSweep},
    {u"Redo", Edit<&mvDocument::Redo>, CanRedo},
    {u"Cut", Do<&mvDocument::Cut>, HasSelection},
    {u"Copy", Do<&mvDocument::Copy>, HasSelection},
    {u"Paste", Do<&mvDocument::Paste>, CanPaste},
    {u"Clear", Do<&mvDocument::Delete>, HasSelection},
    {u"DeleteLine", Do<&mvDocument::DeleteLine>, HasDocument},
    {u"SelectAll", Do<&mvDocument::SelectAll>, HasDocument},
    {u"IndentBlock", IndentBlock<true>, HasDocument},
    {u"OutdentBlock", IndentBlock<false>, HasDocument},
    {u"MoveLinesUp", InView<&SourceView::MoveLinesUp>, HasView},
    {u"MoveLinesDown", InView<&SourceView::MoveLinesDown>, HasView},
    {u"DuplicateLines", InView<&SourceView::DuplicateLines>, HasView},
    {u"JoinLines", InView<&SourceView::JoinLines>, HasView},
    {u"IndentByBlocks", SetIndentByBlocks, Always, IndentsByBlocks},
    {u"CommentBlock", CommentBlock<true>, HasDocument},
    {u"UncommentBlock", CommentBlock<false>, HasDocument},
    {u"CollapseBlock", Fold<true, false>, FoldsBlocks},
    {u"ExpandBlock", Fold<false, false>, FoldsBlocks},
    {u"CollapseAll", Fold<true, true>, FoldsBlocks},
    {u"ExpandAll", Fold<false, true>, FoldsBlocks},
    {u"AddCaretAbove", [](CommandContext& c) { View(c).AddCarets(true); }, HasView},
    {u"AddCaretBelow", [](CommandContext& c) { View(c).AddCarets(false); }, HasView},
    {u"SelectNextOccurrence", [](CommandContext& c) { View(c).SelectNextOccurrence(); }, HasView},
    {u"SelectAllOccurrences", [](CommandContext& c) { View(c).SelectAllOccurrences(); }, HasView},
    {u"ValueMark", Edit<&mvDocument::InsValue>, HasDocument},
    {u"SubValueMark", Edit<&mvDocument::InsSubValue>, HasDocument},
    {u"ToggleCase", Edit<&mvDocument::ToggleCase>, HasDocument},
    {u"Find", Show<Form::Find>, HasDocument},
    {u"FindNext", Show<Form::FindNext>, HasDocument},
    {u"FindBar", Show<Form::FindBar>, HasDocument},
    {u"Replace", Show<Form::Replace>, HasDocument},
    {u"FindInAccount", Show<Form::FindInAccount>, Always},
    {u"NavBack", [](CommandContext& c) { c.program.History().NavigateBack(c.document.get()); }, CanBack},
    {u"NavForward", [](CommandContext& c) { c.program.History().NavigateForward(c.document.get()); }, CanForward},
    {u"ToggleBookmark", ToggleBookmark, HasView},
    {u"NextBookmark", GoToBookmark<false>, HasBookmarks},
    {u"PrevBookmark", GoToBookmark<true>, HasBookmarks},
    {u"ClearBookmarks", [](CommandContext& c) { View(c).Document().ClearBookmarks(); }, HasBookmarks},
    {u"ClearAllBookmarks", ClearAllBookmarks, HasDocument},
    {u"Goto", Goto<true>, HasDocument},
    {u"MatchingWord", GoToMatch, HasView},
    {u"ctxGoto", Goto<false>, HasDocument},
    {u"ctxOpen", [](CommandContext& c) { HandleOpen(c.program, c.document.get()); }, HasDocument},
    {u"ctxToggleBlock", [](CommandContext& c) { HandleBlockToggle(c.program, c.document.get()); }, HasView},
    {u"ctxToggleBookmark", [](CommandContext& c) { HandleBookmarkToggle(c.program, c.document.get()); }, HasView},
    {u"ViewToolbar", [](CommandContext& c) { c.program.Menus().ShowBand(Band::ToolBar, NewMark(c, ToolBarShown(c))); },
     Always, ToolBarShown},
    {u"ViewStatusbar",
     [](CommandContext& c) { c.program.Menus().ShowBand(Band::StatusBar, NewMark(c, StatusBarShown(c))); }, Always,
     StatusBarShown},
    {u"Highlight", SetHighlight, HasDocument, Highlights},
    {u"LineWrap", [](CommandContext& c) { View(c).SetLineWrap(NewMark(c, Wraps(c))); }, CanWrap, Wraps},
    {u"SplitView", [](CommandContext& c) { c.document->View()->SetSplit(NewMark(c, IsSplit(c))); }, HasView, IsSplit},
    {u"OtherPane", [](CommandContext& c) { c.document->View()->ChangePane(); }, IsSplit},
    {u"CurrentLine", SetMark<&MvEdit::CurrentLine>, Always, Marks<&MvEdit::CurrentLine>},
    {u"Matches", SetMark<&MvEdit::Matches>, Always, Marks<&MvEdit::Matches>},
    {u"ChangeBars", SetMark<&MvEdit::ChangeBars>, Always, Marks<&MvEdit::ChangeBars>},
    {u"IndentGuides", SetMark<&MvEdit::IndentGuides>, Always, Marks<&MvEdit::IndentGuides>},
    {u"VisibleBlanks", SetMark<&MvEdit::VisibleBlanks>, Always, Marks<&MvEdit::VisibleBlanks>},
    {u"SmoothScrolling", SetMark<&MvEdit::SmoothScrolling>, Always, Marks<&MvEdit::SmoothScrolling>},
    {u"Results", Show<Form::Results>, Always},
    {u"Problems", ShowPanel<&MvEdit::ProblemsShown>, Always, Marks<&MvEdit::ProblemsShown>},
    {u"NextProblem", GoToFinding<false>, HasView},
    {u"PrevProblem", GoToFinding<true>, HasView},
    {u"Outline", ShowPanel<&MvEdit::OutlineShown>, Always, Marks<&MvEdit::OutlineShown>},
    {u"History", ShowHistory<&MvEdit::HistoryShown>, Always, Marks<&MvEdit::HistoryShown>},
    {u"Authors", ShowHistory<&MvEdit::AuthorsShown>, Always, Marks<&MvEdit::AuthorsShown>},
    {u"QuickOpen", ShowAssist<AssistForm::QuickOpen>, Always},
    {u"Definition", [](CommandContext& c) { c.program.Names().GoToDefinition(*c.document); }, HasView},
    {u"References", [](CommandContext& c) { c.program.Names().FindReferences(*c.document); }, HasView},
    {u"Rename", ShowAssist<AssistForm::Rename>, HasView},
    {u"CompleteWord", ShowAssist<AssistForm::Completion>, HasView},
    {u"QuickMend", ShowAssist<AssistForm::Mends>, HasView},
    {u"CompleteWords", SetAssist<&MvEdit::CompleteWords>, Always, Marks<&MvEdit::CompleteWords>},
    {u"CheckAsYouType", SetAssist<&MvEdit::CheckAsYouType>, Always, Marks<&MvEdit::CheckAsYouType>},
    {u"CompareStored", Show<Form::CompareStored>, HasStored},
    {u"CompareOpened", Show<Form::CompareOpened>, HasStored},
    {u"CompareCommitted", Show<Form::CompareCommitted>, HasStored},
    {u"CompareDocument", Show<Form::CompareDocument>, HasTwo},
    {u"CompareItem", Show<Form::CompareItem>, HasDocument},
    {u"Settings", Show<Form::Settings>, Always},
    {u"HelpTopics", Show<Form::HelpTopics>, Always},
    {u"HelpAbout", Show<Form::About>, Always},
};

} // namespace

std::span<const CommandRow> MainCommands()
{
    return kRows;
}

} // namespace nib
