#pragma once
// What a person sees and decides of a merge. Nothing of it reaches a document before the outcome is taken.

#include "compare/ThreeWayMerge.h"

#include <array>
#include <vector>

namespace nib {

/// What becomes of a conflict.
enum class MergeChoice : uint8_t { Open, Theirs, Mine, TheirsThenMine, MineThenTheirs, Base };

/// A row of the three texts side by side.
struct MergeRow {
    MergeBlock::Kind kind = MergeBlock::Kind::Same;
    int32_t conflict = -1;
    std::array<int32_t, kMergeSides> lines{-1, -1, -1}; ///< by MergeSide; -1 where that text has none here
    int32_t folded = 0;                                 ///< so many lines that are the same in all three are left out
};

/// A row of the outcome.
struct OutcomeRow {
    MergeBlock::Kind kind = MergeBlock::Kind::Same;
    int32_t conflict = -1;
    MergeSide side = MergeSide::Mine; ///< whose line it is
    int32_t line = -1;                ///< of that text; -1 where none stands here, since nothing is chosen or all went
    int32_t number = 0;               ///< of the outcome's lines, from 0
    int32_t folded = 0;
};

/// What is to be done about a text that others have changed meanwhile.
enum class MergeAnswer : uint8_t { Cancel, Merge, TakeTheirs, KeepCopy };

class MergeModel {
public:
    /// Throws Error.
    MergeModel(Text base, Text theirs, Text mine);

    const MergeTexts& Texts() const { return texts_; }
    bool IsCoarse() const { return merge_.coarse; }
    int32_t Conflicts() const { return static_cast<int32_t>(choices_.size()); }
    int32_t Undecided() const;
    MergeChoice ChoiceOf(int32_t conflict) const { return choices_[static_cast<size_t>(conflict)]; }
    void Choose(int32_t conflict, MergeChoice choice);
    /// The conflict after this one, round the ends; -1 where there is none.
    int32_t Next(int32_t conflict, bool backward) const;
    /// The next one that nothing is chosen for; -1 when there is none left.
    int32_t NextUndecided(int32_t conflict) const;

    /// Changes that are in the outcome without a question.
    int32_t Changes(MergeBlock::Kind kind) const;
    const std::vector<MergeRow>& Rows() const { return rows_; }
    const std::vector<OutcomeRow>& OutcomeRows() const { return outcomeRows_; }
    /// The first row of a conflict, in either list.
    int32_t RowOf(int32_t conflict) const { return FirstOf(rows_, conflict); }
    int32_t OutcomeRowOf(int32_t conflict) const { return FirstOf(outcomeRows_, conflict); }

    /// CR LF between lines. What is undecided is left as it was in the base.
    Text Outcome() const;

private:
    /// Calls visit(side, line) for each line of a block as it will be.
    template <typename Visit>
    void ForEachLine(const MergeBlock& block, int32_t conflict, Visit&& visit) const;
    template <typename Row>
    static int32_t FirstOf(const std::vector<Row>& rows, int32_t conflict);
    void ListRows();
    void ListOutcome();

    MergeTexts texts_;
    ThreeWayMerge merge_;
    std::vector<MergeChoice> choices_; ///< by conflict
    std::vector<MergeRow> rows_;
    std::vector<OutcomeRow> outcomeRows_;
};

} // namespace nib
