// Commands on whole lines, and where a line that is typed stands; part of SourceView.

#include "text/AutoIndent.h"
#include "text/Matching.h"
#include "text/SourceView.h"
#include "text/TextSearch.h"

#include <algorithm>

namespace nib {

namespace {

/// What goes with a line wherever it is put.
class CarriedLines {
public:
    CarriedLines(SourceDocument& document, int32_t first, int32_t last)
        : text(document.GetRange({0, first}, {document.LineLength(last), last}))
    {
        for (int32_t line = first; line <= last; ++line) {
            if (document.HasBookmark(line)) bookmarks_.push_back(line - first);
            if (document.BlockAt(line).IsCollapsed()) collapsed_.push_back(line - first);
            identities_.push_back(document.GetLineData(line, LineWord::Identity));
        }
    }

    /// They stand at `first` now.
    void PutDown(SourceDocument& document, int32_t first) const
    {
        int32_t line = first;
        for (uint32_t identity : identities_) {
            if (document.HasBookmark(line) != std::binary_search(bookmarks_.begin(), bookmarks_.end(), line - first))
                document.ToggleBookmark(line);
            document.SetLineData(line++, LineWord::Identity, identity);
        }
    }
    void Collapse(SourceDocument& document, int32_t first) const
    {
        for (int32_t head : collapsed_) document.CollapseBlock(first + head);
    }

    const Text text;

private:
    std::vector<int32_t> bookmarks_; ///< counted from the first line, as are the collapsed heads
    std::vector<int32_t> collapsed_;
    std::vector<uint32_t> identities_;
};

int32_t LastHiddenBehind(const SourceDocument& document, int32_t line)
{
    const int32_t next = document.VisibleIndex(line) + 1;
    return next < document.VisibleCount() ? document.VisibleLine(next) - 1 : document.LineCount() - 1;
}

} // namespace

ColumnRange SourceView::SelectedLines() const
{
    auto [start, end] = Selection();
    const int32_t last = end.col == 0 && end.line > start.line ? end.line - 1 : end.line;
    return {start.line, LastHiddenBehind(document_, last)};
}

void SourceView::MoveLines(bool up)
{
    auto [first, last] = SelectedLines();
    if ((up ? first == 0 : last + 1 == document_.LineCount()) || !MayEdit()) return;
    document_.BreakTyping();
    // The neighbour goes to the other side: what is moved keeps all that hangs on its lines.
    const int32_t from = up ? document_.VisibleLine(document_.VisibleIndex(first) - 1) : last + 1;
    const int32_t to = up ? first - 1 : LastHiddenBehind(document_, from);
    const int32_t shift = up ? from - first : to - last;
    Position anchor = anchor_;
    Position caret = caret_;
    const CarriedLines neighbour(document_, from, to);
    const CarriedLines edge(document_, up ? last : first, up ? last : first);
    const int32_t place = up ? last + shift + 1 : first;
    {
        Edit edit(*this, true);
        if (up) {
            document_.DeleteRange({0, from}, {0, first});
            document_.InsertText({document_.LineLength(last + shift), last + shift}, u"\r\n" + neighbour.text);
        } else {
            document_.DeleteRange({document_.LineLength(last), last}, {document_.LineLength(to), to});
            document_.InsertText({0, first}, neighbour.text + u"\r\n");
        }
        neighbour.PutDown(document_, place);
        edge.PutDown(document_, (up ? last : first) + shift);
    }
    neighbour.Collapse(document_, place);
    anchor.line += shift;
    caret.line += shift;
    goal_ = -1;
    Place(document_.Clamp(anchor), document_.Clamp(caret));
    document_.BreakTyping();
}

void SourceView::DuplicateLines()
{
    auto [first, last] = SelectedLines();
    if (!MayEdit()) return;
    document_.BreakTyping();
    const int32_t count = last - first + 1;
    Position anchor{anchor_.col, anchor_.line + count};
    Position caret{caret_.col, caret_.line + count};
    {
        Edit edit(*this, false);
        const Position end{document_.LineLength(last), last};
        document_.InsertText(end, u"\r\n" + document_.GetRange({0, first}, end));
    }
    goal_ = -1;
    Place(document_.Clamp(anchor), document_.Clamp(caret));
    document_.BreakTyping();
}

void SourceView::JoinLines()
{
    auto [selected, end] = Selection();
    const int32_t first = selected.line;
    const int32_t last = end.line > first + 1 && end.col == 0 ? end.line - 1 : std::max(end.line, first + 1);
    if (last >= document_.LineCount() || !MayEdit()) return;
    document_.BreakTyping();
    const Position start{document_.LineLength(first), first};
    Text joined;
    bool gap = start.col > 0 && document_.LineUnits(first)[static_cast<size_t>(start.col) - 1] != u' ';
    size_t seam = 0;
    for (int32_t line = first + 1; line <= last; ++line) {
        TextView text = document_.LineText(line, scratch_);
        text.remove_prefix(static_cast<size_t>(IndentOf(text)));
        seam = joined.size();
        if (text.empty()) continue;
        if (gap) joined += u' ';
        joined += text;
        gap = text.back() != u' ';
    }
    ReplaceRange(start, {document_.LineLength(last), last}, joined);
    const Position caret{start.col + static_cast<int32_t>(seam), first};
    Place(caret, caret);
    document_.BreakTyping();
}

std::optional<Position> SourceView::MatchOfCaret()
{
    const std::optional<TextRange> match = MatchingWord(document_, caret_);
    return match ? std::optional(match->start) : std::nullopt;
}

std::optional<int32_t> SourceView::IndentWhileTyping()
{
    if (!indentsByBlocks_ || readOnly_ || HasSeveral() || anchor_.line != caret_.line) return std::nullopt;
    constexpr int32_t kLongest = 10'000;
    if (document_.LineLength(caret_.line) > kLongest) return std::nullopt; // nobody indents that
    TextView text = document_.LineText(caret_.line, scratch_);
    // Only a line that stands where it belongs is moved: who indents otherwise knows why.
    const std::optional<int32_t> column = AutoIndent(document_, tabSize_).Of(caret_.line, text);
    return column && IndentOf(text) == *column && caret_.col >= *column ? column : std::nullopt;
}

/// After typing on a line that stood at `before`: a word that closes its block takes it out, what makes another word
/// of that one brings it back.
void SourceView::FollowBlocks(int32_t before)
{
    TextView text = document_.LineText(caret_.line, scratch_);
    const int32_t indent = IndentOf(text);
    const std::optional<int32_t> now = AutoIndent(document_, tabSize_).Of(caret_.line, text);
    if (!now || *now == before || indent != before) return;
    LineEdits edits;
    document_.ShiftLine(edits, caret_.line, *now - indent, SourceDocument::EmptyLine::Stays);
    document_.EditLines(std::move(edits));
}

} // namespace nib
