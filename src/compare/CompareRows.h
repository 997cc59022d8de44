#pragma once
// The rows of two texts side by side: lines that belong together in one row, long runs that are the same as one.

#include "compare/TextDifferences.h"
#include "text/SourceDocument.h"

#include <functional>
#include <set>
#include <utility>

namespace nib {

struct CompareRow {
    int32_t block = 0;  ///< of the differences that are shown
    int32_t left = -1;  ///< line; -1 for none
    int32_t right = -1; ///< the same
    int32_t folded = 0; ///< so many rows stand behind this one, the first of them with these lines
};

/// Rows of one change, `last` excluded.
struct RowRange {
    int32_t first = 0;
    int32_t last = 0;
};

class CompareRows {
public:
    /// Answers a line of one side, good until the next call.
    using LineOf = std::function<TextView(int32_t line)>;

    /// Runs that were opened before stay open, as far as they begin where they did on the left.
    void Build(TextDifferences differences, const LineOf& left, const LineOf& right);
    /// Forgets what was opened.
    void Clear();
    /// The text of one side was edited; rows and changes are those from before it until they are built anew.
    void Follow(bool right, const TextChange& change);
    /// The run behind a folded row.
    void Open(int32_t row);

    const TextDifferences& Differences() const { return differences_; }
    int32_t Count() const { return static_cast<int32_t>(rows_.size()); }
    const CompareRow& At(int32_t row) const { return rows_[static_cast<size_t>(row)]; }
    const LineBlock& BlockOf(int32_t row) const { return differences_.blocks[static_cast<size_t>(At(row).block)]; }

    int32_t ChangeCount() const { return static_cast<int32_t>(changes_.size()); }
    /// From 0.
    RowRange RowsOf(int32_t change) const { return changes_[static_cast<size_t>(change)]; }
    const LineBlock& BlockOfChange(int32_t change) const { return BlockOf(RowsOf(change).first); }
    /// The change that the row is of; -1 for none.
    int32_t ChangeAt(int32_t row) const;
    /// The first one that begins behind the row, or the last that ends before it; -1 when there is none.
    int32_t NextChange(int32_t row, bool backward) const;
    /// The row that shows a line of one side, be it folded.
    int32_t RowOfLine(int32_t line, bool right) const;

private:
    struct Run {
        size_t first;
        size_t last; ///< excluded
    };

    void LayOut();
    void AddRun(const Run& run);
    void AddChange(size_t block);

    TextDifferences differences_;
    std::vector<std::vector<std::pair<int32_t, int32_t>>>
        pairs_; ///< of changed blocks where lines are found to be like
    std::vector<CompareRow> rows_;
    std::vector<RowRange> changes_;
    std::set<int32_t> opened_; ///< left lines that open runs begin with
};

} // namespace nib
