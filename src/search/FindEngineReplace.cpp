// Replacing: the selected hit, or all of them.

#include "documents/DocumentServices.h"
#include "search/FindEngine.h"

#include <algorithm>

namespace nib {

bool FindEngine::ReplaceNext()
{
    return Operation(u"frmFind.ReplaceNext", [&] {
        GetActiveDocument();
        if (current_.expired()) return false;
        ClearStatus();
        FindQuery query = MakeQuery(FindMode::Interactive);
        if (query.text.empty()) return false;
        ReplaceSelected(query);
        bool found = StepTo(query);
        if (found)
            ++walk_.matchCount;
        else
            ReportNotFound();
        return found;
    });
}

void FindEngine::ReplaceSelected(const FindQuery& query)
{
    mvDocument& document = *current_.lock();
    OrderedSelection selection = document.GetOrderedSelection();
    if (selection.start.line != selection.end.line || selection.end.col - selection.start.col != query.Length()) return;
    Text selected = document.GetSelectionText();
    if (query.matchCase ? selected != query.text : !EqualsNoCase(selected, query.text)) return;
    if (!document.EnsureView().txtText().MayEdit()) return;
    document.ReplaceSelection(dialog_.replaceText);
    // The last match moves so that the search goes on behind the replacement.
    Position caret = document.EnsureView().txtText().Caret();
    walk_.MoveLastMatch(document, {caret.col - query.Length(), caret.line});
}

int32_t FindEngine::ReplaceAll()
{
    return Operation(u"frmFind.ReplaceAll", [&]() -> int32_t {
        ClearStatus();
        GetActiveDocument();
        auto document = current_.lock();
        FindQuery query = MakeQuery(FindMode::Replace);
        if (query.text.empty() || !document) return 0;
        BeginReplacing(query);
        bool breaksLines = dialog_.replaceText.find_first_of(u"\r\n") != Text::npos;
        int32_t shift = breaksLines ? 0 : static_cast<int32_t>(dialog_.replaceText.size()) - query.Length();
        std::shared_ptr<mvDocument> readOnly; // the last that keeps its hits
        {
            const WaitCursor wait(services_.frame);
            walk_.Rejoin(query, *document);
            while (FindNextMatch(query)) {
                if (walk_.Document()->EnsureView().txtText().ReadOnly()) {
                    readOnly = walk_.Document();
                    continue;
                }
                replacing_->hits.push_back(walk_.LastMatch());
                walk_.ShiftLine(shift);
                if (query.wholeWord && IsNextBehindHit(query)) CommitBeforeNext(query);
            }
        }
        RestoreSelection(*document);
        if (readOnly) readOnly->EnsureView().txtText().MayEdit(); // says why
        if (replacing_->count > 0)
            Inform(Decimal(replacing_->count) + u" occurrences replaced.");
        else if (!readOnly)
            ReportNotFound();
        return replacing_->count;
    });
}

void FindEngine::BeginReplacing(FindQuery query)
{
    auto document = current_.lock();
    replacing_.emplace();
    if (query.inSelection && document->HasSelection()) replacing_->selection = document->GetOrderedSelection();
    replacing_->query = std::move(query);
}

void FindEngine::PassEnds()
{
    if (replacing_ && !replacing_->hits.empty()) CommitReplacements(*walk_.Document());
}

/// What follows the last hit without a gap is a whole word or none by what takes the place of that hit.
bool FindEngine::IsNextBehindHit(const FindQuery& query) const
{
    Position behind = walk_.LastMatch();
    behind.col += query.Length();
    FindHit next;
    SourceDocument& text = walk_.Document()->EnsureView().txtText().Document();
    return text.Find(query.text, behind, {query.up, query.matchCase, false}, next) && next.at == behind;
}

void FindEngine::CommitBeforeNext(const FindQuery& query)
{
    mvDocument& document = *walk_.Document();
    Position end = CommitReplacements(document);
    walk_.MoveLastMatch(document, {end.col - query.Length(), end.line});
    walk_.Rejoin(query, document);
}

/// Answers the place behind the last one.
Position FindEngine::CommitReplacements(mvDocument& document)
{
    Replacing& work = *replacing_;
    Front(document);
    SourceDocument& text = document.EnsureView().txtText().Document();
    int32_t onLastLine = 0;
    for (Position hit : work.hits) {
        document.RevealLine(hit.line);
        if (work.selection && hit.line == work.selection->end.line) ++onLastLine;
    }
    work.count += static_cast<int32_t>(work.hits.size());
    auto pass = std::make_shared<ReplacePass>(std::exchange(work.hits, {}), work.query.text, work.query.matchCase,
                                              dialog_.replaceText, work.sweep);
    for (size_t hit = 0; hit < pass->Count(); ++hit) text.ExecuteOp(std::make_unique<OpReplaceHit>(pass, hit));
    if (work.selection) MoveSelection(*pass, onLastLine);
    return pass->LastEnd();
}

void FindEngine::MoveSelection(const ReplacePass& pass, int32_t hitsOnLastLine)
{
    Position& end = replacing_->selection->end;
    Position moved = pass.Map(end);
    if (moved.line == end.line)
        end.col += pass.Growth() * hitsOnLastLine;
    else
        end = moved;
}

void FindEngine::RestoreSelection(mvDocument& document)
{
    if (!replacing_->selection) return;
    auto [start, end, swapped] = *replacing_->selection;
    SourceView& source = document.EnsureView().txtText();
    end.col = std::clamp(end.col, 0, source.Document().LineLength(end.line));
    source.SetSelection(start, end);
}

} // namespace nib
