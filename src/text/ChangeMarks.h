#pragma once
// Which lines differ from what was saved, and from what was opened, however they came to be as they are: texts are
// compared, so undo, redo and retyping need not be told apart.

#include "text/KeptText.h"

#include <cstdint>
#include <vector>

namespace nib {

/// Lines of a text that become others: so many more or, below 0, fewer.
struct ReplacedLines {
    int32_t first;
    int32_t last;
    int32_t more;
};

/// Where a text differs from what it was at one time: stretches of lines, each with sums of what stood there then. All
/// other lines are as they were, in the same order.
class LineDifferences {
public:
    void Clear();
    bool Any() const { return !hunks_.empty(); }
    /// These lines are about to be edited.
    void BeforeEdit(const LineStore& lines, int32_t first, int32_t last);
    /// After it: `first` to `oldLast` have become `first` to `newLast`.
    void LinesReplaced(const LineStore& lines, int32_t first, int32_t oldLast, int32_t newLast);

    /// The same for many that ascend and lie apart, as they were before any of it.
    void AllReplaced(const LineStore& lines, const std::vector<ReplacedLines>& all);

    bool Differs(const LineStore& lines, int32_t line) const;
    /// Lines that stood in front of this one have gone, and nothing came for them.
    bool LinesGoneAbove(int32_t line) const;
    /// The first line from `line` on of which either is true, -1 when there is none.
    int32_t Next(const LineStore& lines, int32_t line) const;

private:
    struct Hunk {
        int32_t first;
        int32_t count;
        size_t sums; ///< where its own begin
        int32_t was; ///< lines then

        int32_t End() const { return first + count; }
        /// What stood there then lies line by line beside what stands there now.
        bool IsByLines() const { return count == was; }
    };

    /// The first that ends behind the line.
    size_t IndexAt(int32_t line) const;
    bool DiffersIn(const Hunk& hunk, const LineStore& lines, int32_t line) const;
    void Settle(const LineStore& lines, size_t i);
    void Trim(Hunk& hunk, const LineStore& lines) const;
    void Compact();
    void Append(const LineStore& lines, std::vector<Hunk>& hunks, Hunk hunk);

    std::vector<Hunk> hunks_; ///< ascending
    std::vector<uint64_t> sums_;
};

enum class LineChange : uint8_t { None, Saved, Unsaved };

struct LineMarks {
    LineChange line = LineChange::None;
    LineChange goneAbove = LineChange::None;
    friend bool operator==(const LineMarks&, const LineMarks&) = default;
};

class ChangeMarks {
public:
    explicit ChangeMarks(const LineStore& lines) : lines_(lines) {}

    /// The text is another one: what was opened.
    void Reset();
    void Saved();
    /// What is edited until EndSaving is not in what is being saved.
    void BeginSaving();
    void EndSaving(bool saved);
    /// The text is again what was saved.
    void BackAtSaved();
    /// It is not what is stored; a text that nobody has edited yet is so as a whole.
    void Unsaved() { all_ = all_ || untouched_; }
    /// The whole text is about to become another one.
    void BeforeReset();
    /// What was read or saved last, null where that is not known any more.
    std::shared_ptr<const TextSnapshot> Stored() const { return stored_.Get(lines_); }
    /// Another program has stored this meanwhile, and the user knows.
    void SetStored(std::shared_ptr<const TextSnapshot> text) { stored_.Set(std::move(text)); }

    void BeforeEdit(int32_t first, int32_t last);
    void LinesReplaced(int32_t first, int32_t oldLast, int32_t newLast);

    /// Many edits as one: what is told of each of them until it is over says nothing.
    void BeforeAll(const std::vector<ReplacedLines>& all);
    void AllReplaced(const std::vector<ReplacedLines>& all);
    void NoneReplaced() { many_ = false; }

    LineMarks Of(int32_t line) const;
    /// The first line from `line` on with a mark of this kind, -1 when there is none.
    int32_t Next(int32_t line, LineChange change) const;

private:
    const LineStore& lines_;
    LineDifferences sinceSave_;
    LineDifferences sinceOpening_; ///< before the first save the other one is it
    LineDifferences sinceSaving_;  ///< while it is being saved
    bool wasSaved_ = false;
    bool saving_ = false;
    bool many_ = false;
    bool all_ = false; ///< nothing is known of what is stored
    bool untouched_ = true;
    KeptText stored_;
    KeptText written_; ///< what is being saved
};

} // namespace nib
