#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// Full-text search over the help: all words of a query must begin a word of the page, upper and lower case alike.
class HelpIndex {
public:
    void AddPage(TextView title, TextView text);
    /// Pages by number, from 0 in the order of their adding; those with more of the words in their title come first.
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

/// A page of the help. The files stand in resources/help, those in another language in a folder of that below it; each
/// tells its own title.
struct HelpPage {
    const char16_t* group;
    const char16_t* file;
};

/// In the order of the contents.
inline constexpr HelpPage kHelpPages[] = {
    {u"Getting started", u"index.html"},
    {u"Getting started", u"guide.html"},
    {u"Getting started", u"files.html"},
    {u"Getting started", u"locks.html"},
    {u"Getting started", u"merge.html"},
    {u"Getting started", u"windows.html"},
    {u"Working with text", u"editing.html"},
    {u"Working with text", u"blocks.html"},
    {u"Working with text", u"search.html"},
    {u"Working with text", u"goto.html"},
    {u"Working with text", u"carets.html"},
    {u"Working with text", u"records.html"},
    {u"Working with text", u"bookmarks.html"},
    {u"Working with programs", u"format.html"},
    {u"Working with programs", u"programs.html"},
    {u"Working with programs", u"compare.html"},
    {u"Working with programs", u"compile.html"},
    {u"Reference", u"settings.html"},
    {u"Reference", u"keys.html"},
    {u"Reference", u"commandline.html"},
    {u"Reference", u"history.html"},
    {u"Reference", u"recovery.html"},
    {u"Reference", u"automation.html"},
};

} // namespace nib
