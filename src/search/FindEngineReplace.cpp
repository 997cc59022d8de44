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
        const auto query = MakeQuery(FindMode::Interactive);
        if (!query) return false;
        ReplaceSelected(*query);
        bool found = StepTo(*query);
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
    SourceView& view = document.EnsureView().txtText();
    if (selection.start.line != selection.end.line) return;
    Text replacement = dialog_.replaceText;
    if (query.pattern->IsRegex()) {
        const Replacement prepared = query.pattern->Prepared(replacement);
        const Text line = view.Document().GetLine(selection.start.line);
        const auto at = static_cast<size_t>(selection.start.col);
        const auto hit = query.pattern->In(line, at);
        if (!hit || hit->first != selection.start.col || hit->last != selection.end.col) return;
        // Empty hits are where the caret is; only a step that came to one is followed by its replacement.
        if (hit->first == hit->last && walk_.LastMatch() != selection.start) return;
        replacement = query.pattern->Replaced(line, at, prepared);
    } else {
        const Text selected = document.GetSelectionText();
        if (query.matchCase ? selected != query.text : !EqualsNoCase(selected, query.text)) return;
    }
    if (!view.MayEdit()) return;
    document.ReplaceSelection(replacement);
    // The last match moves so that the search goes on behind the replacement.
    walk_.MoveLastMatch(document, view.Caret());
}

int32_t FindEngine::ReplaceAll()
{
    return Operation(u"frmFind.ReplaceAll", [&]() -> int32_t {
        ClearStatus();
        GetActiveDocument();
        auto document = current_.lock();
        const auto query = MakeQuery(FindMode::Replace);
        if (!query || !document) return 0;
        BeginReplacing(*query);
        std::shared_ptr<mvDocument> readOnly; // the last that keeps its hits
        {
            const WaitCursor wait(services_.frame);
            Prove(*query);
            walk_.Rejoin(*query, *document);
            while (FindNextMatch(*query)) {
                if (walk_.Document()->EnsureView().txtText().ReadOnly()) {
                    readOnly = walk_.Document();
                    continue;
                }
                KeepHit();
                const bool isText = !query->pattern->IsRegex(); // an expression sees the text before
                if (query->wholeWord && isText && IsNextBehindHit(*query)) CommitBeforeNext(*query);
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
    replacing_->replacement = query.pattern->Prepared(dialog_.replaceText);
    replacing_->query = std::move(query);
}

void FindEngine::KeepHit()
{
    Replacing& work = *replacing_;
    const Position at = walk_.LastMatch();
    const TextPattern& pattern = *work.query.pattern;
    Text put = dialog_.replaceText;
    if (pattern.IsRegex()) {
        const auto column = static_cast<size_t>(at.col);
        const SourceDocument& text = walk_.Document()->EnsureView().txtText().Document();
        const TextView line = pattern.Line(text.LineUnits(at.line));
        put = pattern.Replaced(line, column, work.replacement);
        work.found.Add(line.substr(column, static_cast<size_t>(walk_.LastLength())));
        work.put.Add(put);
    }
    const bool breaksLines = put.find_first_of(u"\r\n") != Text::npos;
    walk_.ShiftLine(breaksLines ? 0 : static_cast<int32_t>(put.size()) - walk_.LastLength());
    work.hits.push_back(at);
}

/// An expression that takes too long for some line shows that before anything is replaced; what follows is the same
/// once more, and has all the time that it needs.
void FindEngine::Prove(const FindQuery& query)
{
    if (!query.pattern->IsRegex()) return;
    for (auto& document : services_.openDocuments.All()) {
        if (!query.allDocuments && document != current_.lock()) continue;
        const SourceDocument& text = document->EnsureView().txtText().Document();
        for (int32_t line = 0; line < text.LineCount(); ++line)
            query.pattern->ForEach(query.pattern->Line(text.LineUnits(line)), [](ColumnRange) {});
    }
    query.pattern->Forget();
    query.pattern->SetPatience(RegexSearch::Nanoseconds::max() / 2);
}

void FindEngine::PassEnds()
{
    if (replacing_ && !replacing_->hits.empty()) CommitReplacements(*walk_.Document());
}

/// What follows the last hit without a gap is a whole word or none by what takes the place of that hit.
bool FindEngine::IsNextBehindHit(const FindQuery& query) const
{
    Position behind = walk_.LastMatch();
    behind.col += walk_.LastLength();
    FindHit next;
    SourceDocument& text = walk_.Document()->EnsureView().txtText().Document();
    return text.Find(query.text, behind, {query.up, query.matchCase, false}, next) && next.at == behind;
}

void FindEngine::CommitBeforeNext(const FindQuery& query)
{
    mvDocument& document = *walk_.Document();
    Position end = CommitReplacements(document);
    walk_.MoveLastMatch(document, end);
    walk_.Rejoin(query, document);
}

/// Answers the place behind the last one.
Position FindEngine::CommitReplacements(mvDocument& document)
{
    Replacing& work = *replacing_;
    Front(document);
    SourceDocument& text = document.EnsureView().txtText().Document();
    for (Position hit : work.hits) document.RevealLine(hit.line);
    work.count += static_cast<int32_t>(work.hits.size());
    auto pass = work.query.pattern->IsRegex()
                    ? std::make_shared<ReplacePass>(std::exchange(work.hits, {}), std::exchange(work.found, {}),
                                                    std::exchange(work.put, {}), work.sweep)
                    : std::make_shared<ReplacePass>(std::exchange(work.hits, {}), work.query.text, work.query.matchCase,
                                                    dialog_.replaceText, work.sweep);
    for (size_t hit = 0; hit < pass->Count(); ++hit) text.ExecuteOp(std::make_unique<OpReplaceHit>(pass, hit));
    if (work.selection) MoveSelection(*pass);
    return pass->LastEnd();
}

void FindEngine::MoveSelection(const ReplacePass& pass)
{
    Position& end = replacing_->selection->end;
    Position moved = pass.Map(end);
    if (moved.line == end.line)
        end.col += pass.GrowthOf(end.line);
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
