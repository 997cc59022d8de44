#pragma once
// A view's text on pages: wrapped rows, page breaks, and the drawing of both through a surface that may be anything.

#include "text/SourceView.h"

#include <vector>

namespace nib {

/// What a page is drawn on; the rectangle inside the margins begins at 0, 0.
class PageSurface : public DrawSurface {
public:
    /// How many units of `text`, none of them blanks that may hang over, fit a row of `width`.
    virtual int32_t Fit(TextView text, int32_t width) = 0;
    /// Draws text of one style and answers where the next one begins.
    virtual double DrawRun(double x, int32_t y, TextView text, const TokenStyle& style) = 0;
    /// Begins a further sheet; never called before the first.
    virtual void NewPage() = 0;
};

/// In units of the surface.
struct PageShape {
    int32_t width = 0;
    int32_t height = 0;
    int32_t charWidth = 1;
    int32_t lineHeight = 1;
};

/// Inclusive; pages are numbered from 1, lines from 0.
struct PrintRange {
    int32_t first = 0;
    int32_t last = 0;
};

/// The pages of `count` that lie in the ranges, each once; all of them without ranges.
std::vector<int32_t> PagesToPrint(const std::vector<PrintRange>& ranges, int32_t count, bool lastFirst = false);

class PageLayout {
public:
    /// `handler` adds to each page. The lines are laid out here; the text must not change while the object lives.
    /// `lines` empty: all of them.
    PageLayout(SourceView& view, ISourceDraw2& handler, PageSurface& surface, const PageShape& shape,
               const std::vector<PrintRange>& lines = {});

    int32_t PageCount() const;
    int32_t RowCount() const { return static_cast<int32_t>(rows_.size()); }
    /// These pages, in this order.
    void Print(const std::vector<int32_t>& pages);

private:
    struct Row {
        int32_t line;
        int32_t start; ///< column
    };
    /// Where the text of a row begins, which is the draw handler's to say.
    int32_t RowStart();
    void LayOutLine(int32_t line, int32_t width);
    int32_t RowEnd(size_t row, int32_t lineLength) const;
    DrawContext Context() const;
    void DrawPage(DrawContext& context);
    void DrawRow(DrawContext& context, size_t row);
    void DrawTokens(double x, int32_t y, int32_t start, int32_t end);
    TokenStyle StyleOf(int32_t type) const;

    SourceView& view_;
    ISourceDraw2& handler_;
    PageSurface& surface_;
    PageShape shape_;
    int32_t rowsPerPage_;
    std::vector<Row> rows_;
    std::vector<Token> tokens_;
    std::vector<TokenStyle> styles_; ///< of the token types that source texts are full of
    int32_t scanned_ = -1;           ///< the line that tokens_ belongs to
    TextView text_;                  ///< and its text
    Text scratch_;
};

} // namespace nib
