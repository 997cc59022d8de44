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

/// A page of the help; the files stand in resources/help.
struct HelpPage {
    const char16_t* group;
    const char16_t* file;
    const char16_t* title;
};

/// In the order of the contents.
inline constexpr HelpPage kHelpPages[] = {
    {u"Getting started", u"index.html", u"Welcome to Nib"},
    {u"Getting started", u"guide.html", u"The first hour"},
    {u"Getting started", u"files.html", u"Files and items"},
    {u"Getting started", u"locks.html", u"Locks and read-only documents"},
    {u"Getting started", u"merge.html", u"Merging changes of others"},
    {u"Getting started", u"windows.html", u"Windows and bars"},
    {u"Working with text", u"editing.html", u"Editing"},
    {u"Working with text", u"blocks.html", u"Blocks and folding"},
    {u"Working with text", u"search.html", u"Find and replace"},
    {u"Working with text", u"goto.html", u"Go to and history"},
    {u"Working with text", u"carets.html", u"Columns and several carets"},
    {u"Working with text", u"records.html", u"Records as a grid"},
    {u"Working with text", u"bookmarks.html", u"Bookmarks"},
    {u"Working with programs", u"format.html", u"Formatting"},
    {u"Working with programs", u"programs.html", u"Help with programs"},
    {u"Working with programs", u"compare.html", u"Compare"},
    {u"Working with programs", u"compile.html", u"Compile and results"},
    {u"Reference", u"settings.html", u"Settings"},
    {u"Reference", u"keys.html", u"Keyboard shortcuts"},
    {u"Reference", u"commandline.html", u"Command line"},
    {u"Reference", u"history.html", u"History"},
    {u"Reference", u"recovery.html", u"Recovery after a crash"},
    {u"Reference", u"automation.html", u"Automation"},
};

} // namespace nib
