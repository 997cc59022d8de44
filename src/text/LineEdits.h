#pragma once
#include "text/LineStore.h"

#include <utility>
#include <vector>

namespace nib {

/// Edits within many lines that are made, told and taken back as one. Lines ascend; of one line's edits each is a place
/// in the text that those before it leave. A place behind the end of its line is that end.
class LineEdits {
public:
    void Remove(int32_t line, int32_t column, int32_t count);
    /// A text without line breaks.
    void Insert(int32_t line, int32_t column, TextView text) { Replace(line, column, 0, text); }
    void Replace(int32_t line, int32_t column, int32_t count, TextView text);
    /// Makes room for so many edits, each of which puts in so much.
    void Reserve(size_t edits, size_t inserted);

    bool IsEmpty() const { return splices_.empty(); }
    int32_t FirstLine() const { return splices_.front().line; }
    int32_t LastLine() const { return splices_.back().line; }
    /// Where `p` stands after they were made or, if not `forward`, taken back; `sticky` as in TextChange.
    Position Map(Position p, bool sticky, bool forward) const;
    /// Behind what was put in last.
    Position LastPlace(bool forward) const;

    /// True when each of these goes on where that of `before` in its place ended, as typing does.
    bool GoesOnFrom(const LineEdits& before) const;

    /// All or, if it throws, none.
    void Do(LineStore& lines);
    void Undo(LineStore& lines) { Undo(lines, splices_.size()); }
    template <typename Visit>
    void ForEachLine(Visit&& visit) const
    {
        int32_t before = -1;
        for (const Splice& splice : splices_)
            if (splice.line != std::exchange(before, splice.line)) visit(splice.line);
    }
    size_t MemoryUse() const { return splices_.capacity() * sizeof(Splice) + 2 * (in_.capacity() + out_.capacity()); }

private:
    struct Splice {
        int32_t line;
        int32_t column;
        int32_t removed;
        int32_t inserted;
    };

    void Undo(LineStore& lines, size_t done);

    std::vector<Splice> splices_;
    Text in_;  ///< what is inserted, one behind the other
    Text out_; ///< what was removed, alike
};

} // namespace nib
