#pragma once
#include "editing/clsKeywords.h"

#include <vector>

namespace nib {

/// The words of one class in the order of the alphabet, for a list on the screen.
class KeywordRows {
public:
    void Fill(const clsKeywords& keywords, int32_t Class);
    size_t Count() const { return rows_.size(); }
    const Text& Word(size_t row) const { return rows_[row].word; }

    struct Place {
        size_t row;
        bool held;
    };
    /// Where the word stands, in whatever case, or where it would.
    Place Find(TextView word) const;
    void Insert(size_t row, TextView word);
    void Remove(size_t row) { rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row)); }

private:
    struct Row {
        Text key;
        Text word;
    };
    std::vector<Row> rows_;
};

} // namespace nib
