#include "printing/PageLayout.h"

#include "text/TextSearch.h"

#include <algorithm>
#include <utility>

namespace nib {

namespace {

constexpr int32_t kPlainText = 8; ///< the token type of what no token covers
constexpr int32_t kKnownTypes = 16;
/// The header's row and the blank one below it.
constexpr int32_t kHeaderRows = 2;

/// Takes what a draw handler draws while it is only asked where the text begins.
struct BlindSurface final : DrawSurface {
    int32_t charWidth = 1;
    int32_t TextWidth(TextView text) override { return static_cast<int32_t>(text.size()) * charWidth; }
    void DrawText(int32_t, int32_t, TextView) override {}
};

bool Holds(const std::vector<PrintRange>& ranges, int32_t number)
{
    return ranges.empty() || std::any_of(ranges.begin(), ranges.end(), [&](const PrintRange& range) {
               return number >= range.first && number <= range.last;
           });
}

} // namespace

std::vector<int32_t> PagesToPrint(const std::vector<PrintRange>& ranges, int32_t count, bool lastFirst)
{
    std::vector<int32_t> pages;
    for (int32_t page = 1; page <= count; ++page) {
        if (Holds(ranges, page)) pages.push_back(page);
    }
    if (lastFirst) std::reverse(pages.begin(), pages.end());
    return pages;
}

PageLayout::PageLayout(SourceView& view, ISourceDraw2& handler, PageSurface& surface, const PageShape& shape,
                       const std::vector<PrintRange>& lines)
    : view_(view), handler_(handler), surface_(surface), shape_(shape),
      rowsPerPage_(std::max(shape.height / std::max(shape.lineHeight, 1) - kHeaderRows, 1))
{
    for (int32_t type = 0; type < kKnownTypes; ++type) styles_.push_back(view_.PrintTokenStyles().Get(type));
    const SourceDocument& buffer = view_.Document();
    view_.Document().EnsureScanned();
    rows_.reserve(static_cast<size_t>(buffer.LineCount()));
    int32_t width = std::max(shape_.width - RowStart(), shape_.charWidth);
    for (int32_t line = 0; line < buffer.LineCount(); ++line) {
        if (Holds(lines, line)) LayOutLine(line, width);
    }
}

int32_t PageLayout::PageCount() const
{
    return std::max((RowCount() + rowsPerPage_ - 1) / rowsPerPage_, 1);
}

DrawContext PageLayout::Context() const
{
    DrawContext context;
    context.surface = &surface_;
    context.charWidth = shape_.charWidth;
    context.lineHeight = shape_.lineHeight;
    context.right = shape_.width;
    return context;
}

int32_t PageLayout::RowStart()
{
    BlindSurface blind;
    blind.charWidth = shape_.charWidth;
    DrawContext context = Context();
    context.surface = &blind;
    context.page = 1;
    handler_.PreDrawLine(context);
    return context.x;
}

void PageLayout::LayOutLine(int32_t line, int32_t width)
{
    TextView text = view_.Document().LineText(line, scratch_);
    for (size_t start = 0;;) {
        rows_.push_back({line, static_cast<int32_t>(start)});
        TextView rest = text.substr(start);
        auto fits = static_cast<size_t>(std::max(surface_.Fit(rest, width), 0));
        if (fits >= rest.size()) return;
        size_t end = std::max(fits, static_cast<size_t>(NextGrapheme(rest, 0)));
        // Behind a blank, but not behind the indent alone; blanks at the edge stay with the row above.
        size_t blank = rest.substr(0, end + 1).rfind(u' ');
        if (blank != TextView::npos && rest.find_first_not_of(u' ') < blank) end = blank + 1;
        while (end < rest.size() && rest[end] == u' ') ++end;
        if (end >= rest.size()) return;
        start += end;
    }
}

int32_t PageLayout::RowEnd(size_t row, int32_t lineLength) const
{
    bool last = row + 1 >= rows_.size() || rows_[row + 1].line != rows_[row].line;
    return last ? lineLength : rows_[row + 1].start;
}

void PageLayout::Print(const std::vector<int32_t>& pages)
{
    DrawContext context = Context();
    handler_.PreDraw(context);
    bool first = true;
    for (const int32_t page : pages) {
        if (!std::exchange(first, false)) surface_.NewPage();
        context = Context();
        context.page = page;
        context.y = kHeaderRows * shape_.lineHeight;
        DrawPage(context);
    }
    context = Context();
    handler_.PostDraw(context);
}

void PageLayout::DrawPage(DrawContext& context)
{
    handler_.PreDrawPage(context);
    auto from = static_cast<size_t>(context.page - 1) * static_cast<size_t>(rowsPerPage_);
    auto to = std::min(from + static_cast<size_t>(rowsPerPage_), rows_.size());
    context.y = kHeaderRows * shape_.lineHeight;
    for (size_t row = from; row < to; ++row, context.y += shape_.lineHeight) DrawRow(context, row);
    handler_.PostDrawPage(context);
}

void PageLayout::DrawRow(DrawContext& context, size_t row)
{
    const Row& at = rows_[row];
    context.line = at.line;
    context.continuation = at.start > 0;
    context.x = context.left;
    const int32_t y = context.y;
    handler_.PreDrawLine(context);
    if (scanned_ != at.line) {
        view_.Document().ScanLine(at.line, tokens_);
        text_ = view_.Document().LineText(at.line, scratch_);
        view_.Document().Look(text_, tokens_);
        scanned_ = at.line;
    }
    DrawTokens(context.x, y, at.start, RowEnd(row, static_cast<int32_t>(text_.size())));
    context.y = y;
}

void PageLayout::DrawTokens(double x, int32_t y, int32_t start, int32_t end)
{
    auto next = std::upper_bound(tokens_.begin(), tokens_.end(), start, [](int32_t column, const Token& token) {
        return column < token.start + token.length;
    });
    for (int32_t at = start; at < end;) {
        while (next != tokens_.end() && next->start + next->length <= at) ++next;
        bool more = next != tokens_.end() && next->type != 0;
        bool covered = more && next->start <= at;
        int32_t to = std::min(covered ? next->start + next->length : more ? next->start : end, end);
        x = surface_.DrawRun(x, y, text_.substr(static_cast<size_t>(at), static_cast<size_t>(to - at)),
                             StyleOf(covered ? next->type : kPlainText));
        at = to;
    }
}

TokenStyle PageLayout::StyleOf(int32_t type) const
{
    auto index = static_cast<size_t>(type);
    return index < styles_.size() ? styles_[index] : view_.PrintTokenStyles().Get(type);
}

} // namespace nib
