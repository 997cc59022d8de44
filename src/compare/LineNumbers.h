#pragma once
// The lines of two texts as numbers: lines that count as alike have the same one.

#include "compare/TextDifferences.h"

#include <string>

namespace nib {

/// A line that holds a comment and nothing else, no label either.
bool IsCommentLine(TextView line);

/// The line as it is compared with others.
Text ComparedForm(TextView line, const CompareOptions& options);

/// One text's lines that count.
struct ComparedLines {
    std::vector<uint64_t> keys;   ///< of equal lines equal; of others not, as far as 64 bits can tell
    std::vector<uint8_t> indents; ///< blanks that they begin with, as far as a byte can tell
    std::vector<int32_t> places;  ///< in the text; empty when every line counts
    int32_t count = 0;            ///< lines of the text

    int32_t Size() const { return static_cast<int32_t>(keys.size()); }
    int32_t Place(int32_t n) const { return places.empty() ? n : places[static_cast<size_t>(n)]; }
};

/// Empty once `cancelled`.
ComparedLines TakeLines(const LinewiseText& text, const CompareOptions& options, const std::atomic<bool>* cancelled);

/// Small numbers in place of keys, given out in the order of appearance.
class LineNumbers {
public:
    LineNumbers(const ComparedLines& left, const ComparedLines& right);

    std::vector<int32_t> left;
    std::vector<int32_t> right;

    int32_t Count() const { return static_cast<int32_t>(lines_.size()); }
    /// For a comparison of bytes: a short line for each number, which begins with as many blanks as the line did that
    /// it stands for, since these tell where a change is best cut off.
    void AppendLine(int32_t number, std::string& out) const;

private:
    struct Slot {
        uint64_t key = 0;
        int32_t number = -1;
    };
    struct Line {
        uint8_t indent = 0;
        bool empty = false;
    };

    std::vector<int32_t> Number(const ComparedLines& lines);

    std::vector<Slot> slots_;
    std::vector<Line> lines_;
};

} // namespace nib
