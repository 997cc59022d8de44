// The text of a document: what callers read, select, replace and jump to, and the edits that the program makes in it.

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "editing/LexClass.h"
#include "editing/operations/BlockOps.h"
#include "editing/operations/OpFormat.h"
#include "text/LineDiff.h"
#include "text/TextSearch.h"

#include <algorithm>

namespace nib {

namespace {
using units::IsDigit;
using units::IsLetter;

bool IsNamePart(char16_t c)
{
    return IsDigit(c) || IsLetter(c) || c == u'$' || c == u'.' || c == u'_';
}
} // namespace

Label ScanLabel(TextView text, int32_t line)
{
    size_t start = text.find_first_not_of(u' ');
    if (start == TextView::npos) return {};
    auto belongs = IsDigit(text[start]) ? IsDigit : IsLetter(text[start]) ? IsNamePart : nullptr;
    if (!belongs) return {};
    size_t end = start;
    while (end < text.size() && belongs(text[end])) ++end;
    return {Text(text.substr(start, end - start)), line, static_cast<int32_t>(start)};
}

Text NormalizeLineEnds(Text text)
{
    if (std::count(text.begin(), text.end(), u'\r') == std::count(text.begin(), text.end(), u'\n')) return text;
    return Replace(Replace(Replace(text, u"\r\n", u"\n"), u"\r", u"\n"), u"\n", u"\r\n");
}

Text mvDocument::GetText()
{
    return NormalizeLineEnds(EnsureView().txtText().GetText());
}

void mvDocument::SetText(TextView text)
{
    SourceView& source = EnsureView().txtText();
    Text expanded = ExpandTabs(text, services_.settings.TabSize);
    if (expanded == source.GetText()) return;
    stored_.Keep(source.Document(), [&] { source.SetText(expanded); });
    source.Document().ClearBookmarks();
    source.Document().ClearUndo();
    source.Document().SetModified(true);
}

bool mvDocument::HasSelection() const
{
    return view_ && Source()->HasSelection();
}

OrderedSelection mvDocument::GetOrderedSelection() const
{
    OrderedSelection selection;
    if (!view_) return selection;
    Source()->GetSelection(selection.start, selection.end);
    selection.swapped = selection.end < selection.start;
    if (selection.swapped) std::swap(selection.start, selection.end);
    return selection;
}

bool mvDocument::SelectionIsMultiLine() const
{
    OrderedSelection selection = GetOrderedSelection();
    return selection.start.line != selection.end.line;
}

Text mvDocument::GetSelectionText() const
{
    if (!HasSelection()) return {};
    OrderedSelection selection = GetOrderedSelection();
    return Source()->Document().GetRange(selection.start, selection.end);
}

Text mvDocument::SelText()
{
    EnsureView();
    return NormalizeLineEnds(GetSelectionText());
}

void mvDocument::SetSelText(TextView text)
{
    EnsureView();
    ReplaceSelection(ExpandTabs(text, services_.settings.TabSize));
}

void mvDocument::ReplaceSelection(TextView text)
{
    SourceView& source = EnsureView().txtText();
    if (!source.HasSelection()) {
        source.SetCaret(source.Document().InsertText(source.Caret(), text));
        return;
    }
    OrderedSelection selection = GetOrderedSelection();
    source.Document().ExecuteOp(std::make_unique<OpReplace>(selection.start, selection.end, Text(text)));
}

void mvDocument::ReplaceText(TextView text)
{
    ReplaceByLines(EnsureView().txtText().Document(), ExpandTabs(text, services_.settings.TabSize));
}

/// Typed by hand it goes to all carets.
void mvDocument::InsertMark(TextView mark)
{
    if (view_ && Source()->HasSeveral())
        Source()->TypeText(mark);
    else
        SetSelText(mark);
}

void mvDocument::InsValue()
{
    InsertMark(ValueMark);
}

void mvDocument::InsSubValue()
{
    InsertMark(SubValueMark);
}

void mvDocument::Undo()
{
    if (CanUndo()) Source()->Document().Undo();
}

void mvDocument::UndoSweep()
{
    if (CanUndoSweep()) Source()->Document().UndoSweep();
}

void mvDocument::Redo()
{
    if (CanRedo()) Source()->Document().Redo();
}

void mvDocument::SetModified(bool modified)
{
    if (view_) Source()->Document().SetModified(modified);
}

int32_t mvDocument::LineIdFromLine(int32_t line)
{
    if (line < 0) return -1;
    SourceDocument& text = EnsureView().txtText().Document();
    auto id = static_cast<int32_t>(text.GetLineData(line, LineWord::Identity));
    if (id == 0) {
        id = ++services_.lastLineId;
        text.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(id));
    }
    return id;
}

int32_t mvDocument::LineFromLineId(int32_t id) const
{
    if (id < 1 || !view_) return -1;
    const SourceDocument& text = Source()->Document();
    for (int32_t line = 0; line < text.LineCount(); ++line)
        if (static_cast<int32_t>(text.GetLineData(line, LineWord::Identity)) == id) return line;
    return -1;
}

void mvDocument::RevealLine(int32_t line)
{
    if (services_.settings.CollapseBlocks && view_) Source()->Document().Reveal(line);
}

void mvDocument::ShowLine(int32_t column, int32_t line, bool centre)
{
    SourceView& source = EnsureView().txtText();
    line = std::clamp(line, 0, source.Document().LineCount() - 1);
    int32_t firstLine = 0;
    int32_t firstColumn = 0;
    source.SetCaret({column, line});
    if (!centre) return;
    int32_t page = source.PageLines();
    int32_t half = page / 2;
    source.GetFirstVisible(firstLine, firstColumn);
    if (line <= firstLine + half) return;
    source.SetFirstVisible(std::max(0, std::min(line - half, source.Document().LineCount() - page)), firstColumn);
}

namespace {

/// Without highlighting the lexer leaves no flags, and a program would have no labels and be laid out flat.
class Highlighted {
public:
    explicit Highlighted(mvDocument& document) : document_(document), before_(document.Highlight())
    {
        document_.SetHighlight(true);
    }
    ~Highlighted()
    {
        IgnoringErrors([this] { document_.SetHighlight(before_); });
    }
    Highlighted(const Highlighted&) = delete;
    Highlighted& operator=(const Highlighted&) = delete;

private:
    mvDocument& document_;
    bool before_;
};

} // namespace

const std::vector<Label>& mvDocument::Labels()
{
    const SourceDocument& text = EnsureView().txtText().Document();
    // Built from a modified text they would outlive an undo back to the saved one.
    if (labels_ && labelsOfSavedText_ && !text.Modified()) return *labels_;
    const Highlighted highlighted(*this);
    std::vector<Label> labels;
    for (int32_t line = 0; line < text.LineCount(); ++line) {
        if (!(text.GetLineData(line, LineWord::Lexer) & line_flag::kLabel)) continue;
        Label label = ScanLabel(text.GetLine(line), line);
        if (!label.name.empty()) labels.push_back(std::move(label));
    }
    labelsOfSavedText_ = !text.Modified();
    return labels_.emplace(std::move(labels));
}

void mvDocument::GotoLabel(TextView target)
{
    const std::vector<Label>& labels = Labels();
    auto found = std::find_if(labels.begin(), labels.end(), [&](const Label& label) { return label.name == target; });
    if (found == labels.end()) throw Error{error_number::kLabelNotFound, u"Target label not found!"};
    if (view_->IsActive()) services_.shell.RecordPosition(*this);
    ShowLine(found->column, found->line, true);
}

void mvDocument::GotoLine(int32_t line)
{
    if (EnsureView().IsActive()) services_.shell.RecordPosition(*this);
    ShowLine(0, std::max(line, 1) - 1, true);
}

// Edits of the program on a document's lines; each is one step of undo.

void mvDocument::Format()
{
    SourceView& source = EnsureView().txtText();
    Highlighted highlighted(*this);
    auto showWait = [&frame = services_.frame](bool wait) { frame.SetWaitCursor(wait); };
    source.Document().ExecuteOp(std::make_unique<OpFormat>(source, services_.settings, showWait));
}

void mvDocument::IndentBlock(bool indent)
{
    SourceView& source = EnsureView().txtText();
    source.Document().ExecuteOp(std::make_unique<OpIndentBlock>(indent, source));
}

void mvDocument::CommentBlock(bool comment)
{
    SourceView& source = EnsureView().txtText();
    source.Document().ExecuteOp(std::make_unique<OpCommentBlock>(comment, source, services_.settings));
}

void mvDocument::ToggleCase()
{
    SourceView& source = EnsureView().txtText();
    // No step of undo that does nothing, and no document that counts as changed by it.
    if (!source.HasSelection()) return;
    source.Document().ExecuteOp(std::make_unique<OpToggleCase>(source));
}

} // namespace nib
