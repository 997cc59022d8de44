#include "persistence/settings/KeywordRows.h"

#include "editing/KeywordList.h"

#include <algorithm>

namespace nib {

void KeywordRows::Fill(const clsKeywords& keywords, int32_t Class)
{
    rows_.clear();
    for (const clsKeyword& keyword : keywords)
        if (keyword.Class & Class) rows_.push_back({Text(FoldedWord(keyword.Word).View()), keyword.Word});
    std::sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.key < b.key; });
}

KeywordRows::Place KeywordRows::Find(TextView word) const
{
    FoldedWord folded(word);
    TextView key = folded.View();
    auto at = std::lower_bound(rows_.begin(), rows_.end(), key, [](const Row& row, TextView k) { return row.key < k; });
    return {static_cast<size_t>(at - rows_.begin()), at != rows_.end() && at->key == key};
}

void KeywordRows::Insert(size_t row, TextView word)
{
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(row), {Text(FoldedWord(word).View()), Text(word)});
}

} // namespace nib
