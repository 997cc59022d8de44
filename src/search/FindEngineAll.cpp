// All hits at once: listed, or marked.

#include "documents/DocumentServices.h"
#include "search/FindEngine.h"

namespace nib {

namespace {

constexpr TextView kListTitle{u"Search Results"};
/// A listed line begins with its number, of four digits or more, and a blank.
constexpr size_t kNumberDigits = 4;

Text ListedNumber(int32_t line)
{
    Text number = Decimal(line + 1);
    if (number.size() < kNumberDigits) number.insert(0, kNumberDigits - number.size(), u'0');
    return number + u" ";
}

void MarkLine(SourceDocument& text, int32_t line)
{
    if (!text.HasBookmark(line)) text.ToggleBookmark(line);
}

} // namespace

int32_t FindEngine::FindAll(FindMode mode)
{
    return Operation(u"frmFind.FindAll", [&]() -> int32_t {
        ClearStatus();
        GetActiveDocument();
        const auto query = MakeQuery(mode);
        if (!query || current_.expired()) return 0;
        int32_t hits = 0;
        {
            const WaitCursor wait(services_.frame);
            const std::vector<DocumentHits> all = AllHits(*query);
            if (mode == FindMode::List && !all.empty()) results_.ResetResults(kListTitle);
            for (const DocumentHits& found : all) {
                hits += static_cast<int32_t>(found.hits.size());
                SourceDocument& text = found.document->EnsureView().txtText().Document();
                if (mode == FindMode::List)
                    ListHits(found);
                else
                    for (const FindHit& hit : found.hits) MarkLine(text, hit.at.line);
            }
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

std::vector<FindEngine::DocumentHits> FindEngine::AllHits(const FindQuery& query)
{
    std::vector<DocumentHits> all;
    walk_.Reset(); // all are all, wherever a step before has come to
    while (FindNextMatch(query)) {
        if (all.empty() || all.back().document != walk_.Document()) all.push_back({walk_.Document(), {}});
        all.back().hits.push_back({walk_.LastMatch(), walk_.LastLength()});
    }
    return all;
}

void FindEngine::ListHits(const DocumentHits& found)
{
    results_.AddResultLine(u"", 0, 0, false);
    results_.AddResultLine(found.document->ListName(), 0, 0, true);
    const SourceDocument& text = found.document->EnsureView().txtText().Document();
    int32_t last = -1;
    for (const FindHit& hit : found.hits) {
        if (std::exchange(last, hit.at.line) == hit.at.line) continue;
        const Text number = ListedNumber(hit.at.line);
        results_.AddItemLine(number + text.GetLine(hit.at.line), hit.at.col + static_cast<int32_t>(number.size()),
                             hit.length, hit.at.line + 1);
    }
}

} // namespace nib
