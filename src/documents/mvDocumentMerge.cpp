// What a document does with a text that was stored behind its back; part of mvDocument.

#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "hosts/StoredForm.h"
#include "text/LineDiff.h"
#include "text/TextSearch.h"

namespace nib {

namespace {

/// Where the lines of one text stand in the other, -1 where they do not.
std::vector<int32_t> PlacesOf(TextView text, TextView in)
{
    const std::vector<TextView> lines = LinesOf(text);
    std::vector<int32_t> places(lines.size(), -1);
    int32_t from = 0;
    int32_t to = 0;
    const auto same = [&](int32_t end) {
        for (; from < end; ++from, ++to) places[static_cast<size_t>(from)] = to;
    };
    for (const LineHunk& hunk : DiffLines(lines, LinesOf(in))) {
        same(hunk.oldLine);
        from = hunk.oldLine + hunk.oldCount;
        to = hunk.newLine + hunk.newCount;
    }
    same(static_cast<int32_t>(lines.size()));
    return places;
}

/// Those whose lines have a place, there.
template <typename Place>
std::vector<Place> Moved(const std::vector<Place>& all, const std::vector<int32_t>& places)
{
    std::vector<Place> moved;
    for (Place place : all) {
        place.line = places[static_cast<size_t>(place.line)];
        if (place.line >= 0) moved.push_back(place);
    }
    return moved;
}

} // namespace

bool mvDocument::TakeMerged(mvItem& stored, TextView theirs, TextView merged)
{
    if (!item_ || IsBeingSaved() || !item_->AcceptVersion(stored.Version())) return false;
    const WaitCursor wait(services_.frame);
    const int32_t tabSize = services_.settings.TabSize;
    const Text shown = ExpandTabs(theirs, tabSize);
    SourceDocument& text = EnsureView().txtText().Document();
    ReplaceByLines(text, merged);
    if (merged == shown)
        text.SetModified(false);
    else
        text.SetStoredText(shown);
    StoredForm* form = item_->Form();
    if (form && stored.Form()) *form = *stored.Form();
    const std::vector<int32_t> places = PlacesOf(shown, merged);
    std::vector<bool> which(static_cast<size_t>(text.LineCount()));
    for (int32_t line : places)
        if (line >= 0) which[static_cast<size_t>(line)] = true;
    stored_.ReadSome(which, Moved(TabsOf(theirs, tabSize), places),
                     form ? Moved(form->OddEnds(), places) : std::vector<OddEnd>(), tabSize, text,
                     services_.lastLineId);
    labels_.reset();
    services_.shell.DocumentChanged(*this);
    return true;
}

void mvDocument::TakeTabs(std::vector<TabPlace> tabs)
{
    SourceDocument& text = EnsureView().txtText().Document();
    std::erase_if(tabs, [&](const TabPlace& tab) { return text.GetLineData(tab.line, LineWord::Identity) != 0; });
    if (tabs.empty()) return;
    std::vector<bool> which(static_cast<size_t>(text.LineCount()));
    for (const TabPlace& tab : tabs) which[static_cast<size_t>(tab.line)] = true;
    stored_.ReadSome(which, tabs, {}, services_.settings.TabSize, text, services_.lastLineId);
}

} // namespace nib
