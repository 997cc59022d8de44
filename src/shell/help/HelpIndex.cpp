#include "shell/help/HelpIndex.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace nib {

namespace {

bool AnyBeginsWith(const std::vector<Text>& sorted, const Text& start)
{
    auto at = std::lower_bound(sorted.begin(), sorted.end(), start);
    return at != sorted.end() && at->starts_with(start);
}

std::vector<Text> Sorted(std::vector<Text> words)
{
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

} // namespace

std::vector<Text> WordsOf(TextView text)
{
    const Text lower = ToLower(text);
    std::vector<Text> words;
    size_t start = 0;
    auto take = [&](size_t end) {
        if (end > start) words.push_back(lower.substr(start, end - start));
    };
    for (size_t at = 0; at < lower.size();) {
        const size_t before = at;
        UChar32 c = 0;
        U16_NEXT(lower.data(), at, lower.size(), c);
        if (u_isalnum(c)) continue;
        take(before);
        start = at;
    }
    take(lower.size());
    return words;
}

void HelpIndex::AddPage(TextView title, TextView text)
{
    Page page{Sorted(WordsOf(title)), Sorted(WordsOf(Text(title) + u" " + Text(text)))};
    pages_.push_back(std::move(page));
}

std::vector<int32_t> HelpIndex::Find(TextView query) const
{
    const std::vector<Text> words = WordsOf(query);
    auto all = [&](const std::vector<Text>& in) {
        return std::all_of(words.begin(), words.end(), [&](const Text& word) { return AnyBeginsWith(in, word); });
    };
    std::vector<int32_t> found;
    for (size_t i = 0; i < pages_.size(); ++i)
        if (all(pages_[i].words)) found.push_back(static_cast<int32_t>(i));
    const auto inTitle = [&](int32_t page) {
        const std::vector<Text>& title = pages_[static_cast<size_t>(page)].titleWords;
        return std::count_if(words.begin(), words.end(), [&](const Text& word) { return AnyBeginsWith(title, word); });
    };
    // A page that mentions everything does not come before the one that is about it.
    std::stable_sort(found.begin(), found.end(), [&](int32_t a, int32_t b) { return inTitle(a) > inTitle(b); });
    return found;
}

} // namespace nib
