#pragma once
#include "printing/PageLayout.h"

#include <string>

namespace nib::test {

/// Sheets of paper as rows of characters: every unit is as wide as the grid's cell, and styles are noted.
struct PaperSurface final : PageSurface {
    PageShape shape{400, 120, 10, 12};
    struct Run {
        int32_t page = 0;
        int32_t row = 0;
        double x = 0;
        Text text;
        TokenStyle style;
    };
    std::vector<Run> runs;                    ///< of tokens
    std::vector<std::vector<Text>> pages{{}}; ///< everything, by rows

    int32_t TextWidth(TextView text) override { return static_cast<int32_t>(text.size()) * shape.charWidth; }
    int32_t Fit(TextView text, int32_t width) override
    {
        return std::min(static_cast<int32_t>(text.size()), width / shape.charWidth);
    }
    void DrawText(int32_t x, int32_t y, TextView text) override { Put(x, y, text); }
    double DrawRun(double x, int32_t y, TextView text, const TokenStyle& style) override
    {
        runs.push_back({static_cast<int32_t>(pages.size()), y / shape.lineHeight, x, Text(text), style});
        Put(static_cast<int32_t>(x), y, text);
        return x + static_cast<double>(text.size()) * shape.charWidth;
    }
    void NewPage() override { pages.emplace_back(); }

    /// Without blanks at the end; empty when nothing stands there.
    Text Row(size_t page, size_t row) const
    {
        if (page > pages.size() || row >= pages[page - 1].size()) return {};
        Text text = pages[page - 1][row];
        text.erase(text.find_last_not_of(u' ') + 1);
        return text;
    }

private:
    void Put(int32_t x, int32_t y, TextView text)
    {
        auto row = static_cast<size_t>(y / shape.lineHeight);
        auto column = static_cast<size_t>(x / shape.charWidth);
        std::vector<Text>& page = pages.back();
        if (page.size() <= row) page.resize(row + 1);
        if (page[row].size() < column + text.size()) page[row].resize(column + text.size(), u' ');
        page[row].replace(column, text.size(), text);
    }
};

} // namespace nib::test
