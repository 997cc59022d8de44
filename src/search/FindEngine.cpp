#include "search/FindEngine.h"

#include "documents/DocumentServices.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kListTitle{u"Search Results"};
/// A listed line begins with its number, of which there are four digits, and a blank.
constexpr size_t kNumberDigits = 4;
constexpr int32_t kTextColumn = 5;

/// Values of the setting SearchEOD.
constexpr int16_t kAskAtEnd = 0;
constexpr int16_t kTellAtEnd = 2;

bool IsSearchWordUnit(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'$' || c == u'.' ||
           c == u'_';
}

Text ListedNumber(int32_t line)
{
    Text number = Text(kNumberDigits, u'0') + Decimal(line + 1);
    return number.substr(number.size() - kNumberDigits);
}

} // namespace

Text GetCaretWord(TextView line, int32_t column)
{
    auto at = static_cast<size_t>(std::max(column, 0));
    if (line.empty() || at > line.size()) return {};
    if (at < line.size() && (line[at] == u' ' || line[at] == u'\t')) return {};
    size_t first = std::min(at + 1, line.size());
    while (first > 0 && IsSearchWordUnit(line[first - 1])) --first;
    size_t end = std::min(at + 1, line.size());
    while (end < line.size() && IsSearchWordUnit(line[end])) ++end;
    return Text(line.substr(first, end - first));
}

// The dialog

bool FindEngine::Find()
{
    return Operation(u"frmFind.Find", [&] { return PrepareDialog(false); });
}

bool FindEngine::Replace()
{
    return Operation(u"frmFind.Replace", [&] { return PrepareDialog(true); });
}

bool FindEngine::PrepareDialog(bool isReplace)
{
    GetActiveDocument();
    auto document = current_.lock();
    if (!document) return false;
    dialog_.replaceMode = isReplace;
    dialog_.upEnabled = !isReplace;
    if (isReplace) dialog_.up = false;
    dialog_.allDocumentsEnabled = services_.openDocuments.Count() >= 2;
    dialog_.selectionEnabled = document->HasSelection();
    if (dialog_.selectionEnabled)
        TakeSelection();
    else
        TakeCaretWord();
    if (dialog_.lookIn == LookIn::Nothing) dialog_.lookIn = LookIn::Document;
    walk_.Reset();
    return true;
}

void FindEngine::TakeSelection()
{
    auto document = current_.lock();
    walk_.KeepSelection(*document);
    if (document->SelectionIsMultiLine()) {
        dialog_.lookIn = LookIn::Selection;
        return;
    }
    if (dialog_.lookIn == LookIn::Selection) dialog_.lookIn = LookIn::Document;
    dialog_.findText = document->GetSelectionText();
}

void FindEngine::TakeCaretWord()
{
    auto document = current_.lock();
    if (dialog_.lookIn == LookIn::Selection || !dialog_.allDocumentsEnabled) dialog_.lookIn = LookIn::Document;
    SourceView& source = document->EnsureView().txtText();
    Position caret = source.Caret();
    if (caret == Position{}) return;
    Text word = GetCaretWord(source.Document().GetLine(caret.line), caret.col);
    if (!word.empty()) dialog_.findText = std::move(word);
}

void FindEngine::SetSearchUp(bool up)
{
    dialog_.up = up;
    walk_.Reset();
}

void FindEngine::GetActiveDocument()
{
    current_ = services_.openDocuments.ById(services_.frame.ActiveDocument());
}

bool FindEngine::IsAllDocuments() const
{
    return dialog_.lookIn == LookIn::AllDocuments && services_.openDocuments.Count() >= 2;
}

Text FindEngine::GetSearchText()
{
    if (!dialog_.findText.empty()) recentSearches_.AddItem(dialog_.findText);
    return dialog_.findText;
}

std::vector<Text> FindEngine::FindList() const
{
    std::vector<Text> rows;
    for (int32_t i = 1; i <= recentSearches_.ListCount(); ++i) rows.push_back(recentSearches_.ListItem(i));
    return rows;
}

FindQuery FindEngine::MakeQuery(FindMode mode)
{
    // What is replaced is replaced downwards, whatever an earlier search chose.
    bool up = dialog_.up && mode != FindMode::Replace;
    return {GetSearchText(), mode, up, dialog_.matchCase, dialog_.wholeWord, IsInSelection(), IsAllDocuments()};
}

// One hit

bool FindEngine::FindNextMatch(const FindQuery& query)
{
    return Guarded(
        services_.log, u"frmFind.FindNextMatch",
        [&] {
            auto current = current_.lock();
            return current && walk_.Next(query, *current);
        },
        [&](const Error&) {
            walk_.Reset();
            return false;
        });
}

bool FindEngine::StepTo(const FindQuery& query)
{
    if (auto current = current_.lock()) walk_.Rejoin(query, *current);
    if (!FindNextMatch(query)) return false;
    ShowHit(query);
    return true;
}

/// Brings the document to the front, or remembers where its caret was before it moves.
void FindEngine::Front(mvDocument& document)
{
    if (services_.frame.ActiveDocument() == document.DocumentID())
        services_.shell.RecordPosition(document);
    else
        document.Activate();
    current_ = document.weak_from_this();
}

void FindEngine::ShowHit(const FindQuery& query)
{
    mvDocument& document = *walk_.Document();
    Position start = walk_.LastMatch();
    Position end{start.col + query.Length(), start.line};
    Front(document);
    if (query.up) std::swap(start, end);
    document.EnsureView().txtText().SetSelection(start, end);
}

bool FindEngine::FindNext()
{
    return Operation(u"frmFind.FindNext", [&] {
        ClearStatus();
        GetActiveDocument();
        auto document = current_.lock();
        if (!document) return false;
        FindQuery query = MakeQuery(FindMode::Interactive);
        if (query.text.empty()) return false;
        bool selected = document->HasSelection();
        OrderedSelection before = document->GetOrderedSelection();
        bool found = StepTo(query);
        if (found && selected && walk_.Document() == document) {
            OrderedSelection now = document->GetOrderedSelection();
            if (now.start == before.start && now.end == before.end) found = StepTo(query);
        }
        if (found)
            ++walk_.matchCount;
        else
            ReportNotFound();
        return found;
    });
}

void FindEngine::ReportNotFound()
{
    if (walk_.matchCount > 0) return Inform(u"No more occurrences of search text found.");
    TextView where = IsInSelection() ? u"selection." : IsAllDocuments() ? u"any document." : u"document.";
    Inform(Text(u"Search text not found in ").append(where));
}

void FindEngine::Inform(TextView text)
{
    services_.shell.ShowMessage(text, message_box::kInformation);
}

bool FindEngine::MayWrap(const FindQuery& query)
{
    if (!query.FromCaret()) return true;
    int16_t setting = services_.settings.SearchEOD;
    if (setting != kTellAtEnd) services_.boxes.Beep();
    if (setting != kAskAtEnd) {
        services_.frame.SetStatusText(kStatusPane, u"Searched past end of document");
        return true;
    }
    Text question = Text(u"Search has reached the ")
                        .append(query.up ? u"beginning" : u"end")
                        .append(u" of the document. Do you want to continue searching at the ")
                        .append(query.up ? u"end?" : u"beginning?");
    bool waiting = query.mode == FindMode::Replace;
    if (waiting) services_.frame.SetWaitCursor(false);
    int32_t answer = services_.shell.ShowMessage(question, message_box::kYesNoCancel | message_box::kQuestion);
    if (waiting) services_.frame.SetWaitCursor(true);
    return answer == message_box::kAnswerYes;
}

// All hits

int32_t FindEngine::FindAll(FindMode mode)
{
    return Operation(u"frmFind.FindAll", [&]() -> int32_t {
        ClearStatus();
        GetActiveDocument();
        FindQuery query = MakeQuery(mode);
        if (query.text.empty() || current_.expired()) return 0;
        listing_ = {};
        int32_t hits = 0;
        {
            const WaitCursor wait(services_.frame);
            for (; FindNextMatch(query); ++hits) mode == FindMode::List ? ListHit(query) : MarkHit();
        }
        if (hits == 0)
            ReportNotFound();
        else if (mode == FindMode::List)
            results_.ShowResults(u"");
        else if (hits == 1)
            Inform(u"One occurrence found and bookmarked.");
        else
            Inform(Decimal(hits) + u" occurrences found and bookmarked.");
        return hits;
    });
}

void FindEngine::ListHit(const FindQuery& query)
{
    mvDocument& document = *walk_.Document();
    Position hit = walk_.LastMatch();
    if (listing_.documentId == 0) results_.ResetResults(kListTitle);
    if (listing_.documentId != document.DocumentID()) {
        listing_ = {document.DocumentID(), -1};
        results_.AddResultLine(u"", 0, 0, false);
        results_.AddResultLine(document.ListName(), 0, 0, true);
    }
    if (listing_.line == hit.line) return;
    listing_.line = hit.line;
    Text line = ListedNumber(hit.line) + u" " + document.EnsureView().txtText().Document().GetLine(hit.line);
    results_.AddResultLine(line, hit.col + kTextColumn, query.Length(), false);
}

void FindEngine::MarkHit()
{
    SourceDocument& text = walk_.Document()->EnsureView().txtText().Document();
    int32_t line = walk_.LastMatch().line;
    if (!text.HasBookmark(line)) text.ToggleBookmark(line);
}

} // namespace nib
