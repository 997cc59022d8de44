// What a document does with a text that was stored behind its back; part of mvDocument.

#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "hosts/StoredForm.h"
#include "text/LineDiff.h"
#include "text/TextSearch.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace nib {

namespace {

/// It becomes a new line with the same text, and undo brings the old one back with what is known of it.
void PutAnew(mvDocument& document, int32_t line)
{
    SourceDocument& text = document.EnsureView().txtText().Document();
    const bool bookmark = text.HasBookmark(line);
    const Text units = text.GetLine(line);
    const auto end = static_cast<int32_t>(units.size());
    text.InsertText({0, line}, units + u"\r\n");
    document.LineIdFromLine(line); // by now, so that redo brings it back
    text.DeleteRange({end, line}, {end, line + 1});
    if (bookmark && !text.HasBookmark(line)) text.ToggleBookmark(line);
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
    SetReplaced(Text(theirs));
    if (merged == shown) text.SetModified(false);
    StoredForm* form = item_->Form();
    if (form && stored.Form()) *form = *stored.Form();
    const std::vector<int32_t> places = LinePlaces(shown, merged);
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

void mvDocument::SetReplaced(Text theirs)
{
    EnsureView().txtText().Document().SetStoredText(ExpandTabs(theirs, services_.settings.TabSize));
    replaces_ = std::make_shared<const Text>(std::move(theirs));
    readAt_ = std::time(nullptr);
}

void mvDocument::TakeTabs(int32_t first, int32_t count, std::vector<TabPlace> tabs)
{
    SourceDocument& text = EnsureView().txtText().Document();
    const int32_t tabSize = services_.settings.TabSize;
    const Text blanks(static_cast<size_t>(std::max(tabSize, 1)), u' ');
    Text scratch;
    TextView shown;
    int32_t of = -1;
    // Where TABs had another width when the lines were shown, the lines have no place for these.
    std::erase_if(tabs, [&](const TabPlace& tab) {
        if (tab.line >= text.LineCount()) return true;
        if (std::exchange(of, tab.line) != tab.line) shown = text.LineText(tab.line, scratch);
        const auto column = static_cast<size_t>(tab.column);
        return column > shown.size() || !shown.substr(column).starts_with(blanks);
    });
    std::vector<bool> which(static_cast<size_t>(text.LineCount()));
    std::fill_n(which.begin() + first, count, true);
    std::vector<OddEnd> ends = stored_.OddEnds(*text.Snapshot());
    std::erase_if(ends, [&](const OddEnd& end) { return !which[static_cast<size_t>(end.line)]; });
    stored_.ReadSome(which, tabs, ends, tabSize, text, services_.lastLineId);
}

void mvDocument::BringBack(TextView text)
{
    const WaitCursor wait(services_.frame);
    const int32_t tabSize = services_.settings.TabSize;
    SourceDocument& own = EnsureView().txtText().Document();
    const Text shown = ExpandTabs(text, tabSize);
    const Text written = AsWritten().Whole();
    const std::vector<TextView> before = LinesOf(written);
    const std::vector<TextView> after = LinesOf(text);
    const std::vector<int32_t> places = LinePlaces(own.GetText(), shown);
    own.BreakTyping();
    own.BeginGroup();
    ReplaceByLines(own, shown);
    for (size_t line = 0; line < places.size(); ++line) {
        const int32_t place = places[line];
        if (place >= 0 && before[line] != after[static_cast<size_t>(place)]) PutAnew(*this, place);
    }
    own.EndGroup();
    TakeTabs(0, own.LineCount(), TabsOf(text, tabSize));
}

} // namespace nib
