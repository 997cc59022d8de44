#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// Full-text search over the help: all words of a query must begin a word of the page, upper and lower case alike.
class HelpIndex {
public:
    void AddPage(TextView title, TextView text);
    /// Pages by number, from 0 in the order of their adding; those that have all the words in their title come first.
    /// A query without words finds every page.
    std::vector<int32_t> Find(TextView query) const;

private:
    struct Page {
        std::vector<Text> titleWords;
        std::vector<Text> words; ///< sorted, each once; those of the title too
    };

    std::vector<Page> pages_;
};

/// The words of a text: letters and digits of any script, lower case.
std::vector<Text> WordsOf(TextView text);

} // namespace nib
