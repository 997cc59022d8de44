#pragma once
// The pages of the help, in the order of its contents. The files stand in resources/help.

namespace nib {

struct HelpPage {
    const char16_t* group;
    const char16_t* file;
    const char16_t* title;
};

inline constexpr HelpPage kHelpPages[] = {
    {u"Getting started", u"index.html", u"Welcome to Nib"},
    {u"Getting started", u"files.html", u"Files and items"},
    {u"Getting started", u"locks.html", u"Locks and read-only documents"},
    {u"Getting started", u"windows.html", u"Windows and bars"},
    {u"Working with text", u"editing.html", u"Editing"},
    {u"Working with text", u"blocks.html", u"Blocks and folding"},
    {u"Working with text", u"search.html", u"Find and replace"},
    {u"Working with text", u"goto.html", u"Go to and history"},
    {u"Working with text", u"bookmarks.html", u"Bookmarks"},
    {u"Working with programs", u"format.html", u"Formatting"},
    {u"Working with programs", u"compile.html", u"Compile and results"},
    {u"Reference", u"settings.html", u"Settings"},
    {u"Reference", u"keys.html", u"Keyboard shortcuts"},
    {u"Reference", u"commandline.html", u"Command line"},
    {u"Reference", u"recovery.html", u"Recovery after a crash"},
    {u"Reference", u"automation.html", u"Automation"},
};

} // namespace nib
