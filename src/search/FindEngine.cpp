#include "search/FindEngine.h"

#include "documents/DocumentServices.h"

#include <algorithm>

namespace nib {

namespace {

/// Values of the setting SearchEOD.
constexpr int16_t kAskAtEnd = 0;
constexpr int16_t kTellAtEnd = 2;

bool IsSearchWordUnit(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'$' || c == u'.' ||
           c == u'_';
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

std::optional<TextRange> FindEngine::RangeIn(mvDocument& document)
{
    if (!IsInSelection()) return {};
    return walk_.SelectedRange(document).value_or(TextRange{});
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

std::optional<FindQuery> FindEngine::MakeQuery(FindMode mode)
{
    if (const auto fault = dialog_.Fault()) {
        walk_.Reset();
        Inform(u"The regular expression is faulty.\n" + fault->Told());
        return {};
    }
    // What is replaced is replaced downwards, whatever an earlier search chose.
    bool up = dialog_.up && mode != FindMode::Replace;
    FindQuery query{GetSearchText(), mode, up, dialog_.matchCase, dialog_.wholeWord, IsInSelection(), IsAllDocuments()};
    if (query.text.empty()) return {};
    query.pattern = std::make_shared<TextPattern>(query.text, dialog_.Options());
    return query;
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
        [&](const Error& error) {
            // What was found so far would pass for all there is.
            if (error.number == error_number::kSearch) throw Error(error);
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
    Position end = walk_.LastEnd();
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
        const auto query = MakeQuery(FindMode::Interactive);
        if (!query) return false;
        bool selected = document->HasSelection();
        OrderedSelection before = document->GetOrderedSelection();
        bool found = StepTo(*query);
        if (found && (selected || walk_.LastLength() == 0) && walk_.Document() == document) {
            OrderedSelection now = document->GetOrderedSelection();
            if (now.start == before.start && now.end == before.end) found = StepTo(*query);
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

} // namespace nib
