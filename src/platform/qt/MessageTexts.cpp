#include "platform/qt/ShownTexts.h"

#include <QtGlobal>

namespace nib {

namespace {

constexpr const char* kTexts[] = {
    QT_TRANSLATE_NOOP("Message", "%8 (standard color) %1"),
    QT_TRANSLATE_NOOP("Message", "%8 (system color) %1"),
    QT_TRANSLATE_NOOP("Message", "custom color: %1"),
    QT_TRANSLATE_NOOP("Message", "unknown system color %1"),
    QT_TRANSLATE_NOOP("Message", "Ln %1, Col %2"),
    QT_TRANSLATE_NOOP("Message", "The following error has occurred:\n%9"),
    QT_TRANSLATE_NOOP("Message", "Save changes to %1 ?"),
    QT_TRANSLATE_NOOP("Message", "Item %1 does not exist. Create new item?"),
    QT_TRANSLATE_NOOP("Message", "Item %1 does not exist. Create new item?\nIts folder is %2."),
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): one text of two pieces
    QT_TRANSLATE_NOOP("Message", "Item %1 does not exist. Create new item?\nIts folder %2 does not exist either, so "
                                 "the item cannot be saved there."),
    QT_TRANSLATE_NOOP("Message", "%1 is open in another window. Open in \"read only\" mode instead?"),
    QT_TRANSLATE_NOOP("Message", "%1 is locked by another user or process. Open in \"read only\" mode instead?"),
    QT_TRANSLATE_NOOP(
        "Message", "%1 is locked by another user or process. Open in \"read only\" mode instead?\nIt is held by %7."),
    QT_TRANSLATE_NOOP("Message", "%1 is locked by another user or process."),
    QT_TRANSLATE_NOOP("Message", "Item %1 is \"read only\". Open in read-only mode?"),
    QT_TRANSLATE_NOOP("Message", "Unable to open item %1 because no file is named for it."),
    QT_TRANSLATE_NOOP("Message", "Unable to open item %1 because it appears to be a folder or file definition."),
    QT_TRANSLATE_NOOP("Message", "Cannot save document - file name and/or item ID missing!"),
    QT_TRANSLATE_NOOP("Message", "Cannot save %1 - document is read-only!"),
    QT_TRANSLATE_NOOP("Message", "Item '%1' is open in read-only mode. Please save using a different name."),
    QT_TRANSLATE_NOOP("Message", "Item '%1' may only be read. Please save using a different name."),
    QT_TRANSLATE_NOOP("Message", "'%1' appears to be a file or folder and cannot be overwritten!"),
    QT_TRANSLATE_NOOP("Message", "Item '%1' exists and cannot be overwritten. Please save using a different name."),
    QT_TRANSLATE_NOOP("Message", "Item '%1' exists. Overwrite?"),
    QT_TRANSLATE_NOOP("Message", "Item '%1' is currently locked and cannot be updated!"),
    QT_TRANSLATE_NOOP("Message", "Item '%1' is currently locked and cannot be updated!\nIt is held by %7."),
    QT_TRANSLATE_NOOP("Message", "%1 was changed by another program since it was opened.\n\nReload takes what is "
                                 "stored now, Keep stays with the text in the window, Compare lists what differs."),
    QT_TRANSLATE_NOOP("Message", "%1 was changed by another program since it was opened.\n\nReload takes what is "
                                 "stored now, Keep stays with the text in the window, Compare lists what differs. It "
                                 "has unsaved changes: after Reload they are lost unless you undo it."),
    QT_TRANSLATE_NOOP("Message", "%1 was changed by another program since it was opened.\n\nReload takes what is "
                                 "stored now, Keep stays with the text in the window, Compare lists what differs. It "
                                 "has unsaved changes: after Reload they are lost unless you undo it. Merge brings "
                                 "theirs and yours together, and stores nothing yet."),
    QT_TRANSLATE_NOOP("Message", "%1 was changed once more meanwhile. This is the merge with what is stored now."),
    QT_TRANSLATE_NOOP("Message", "%1 is not there any more: another program has deleted or renamed it. Keep leaves its "
                                 "text open, to be saved again; Close asks about that first."),
    QT_TRANSLATE_NOOP("Message", "%1 was changed by another program since it was opened. Save it again to replace it."),
    QT_TRANSLATE_NOOP("Message",
                      "%1 was deleted by another program since it was opened. Save it again to make it anew."),
    QT_TRANSLATE_NOOP("Message", "%1 was created by another program since it was opened. Save it again to replace it."),
    QT_TRANSLATE_NOOP("Message", "%1 is read-only. Save it under another name to change it."),
    QT_TRANSLATE_NOOP("Message", "Document %1 is read-only and cannot be saved. Continue with next document?"),
    QT_TRANSLATE_NOOP("Message",
                      "Program has not been saved. Do you want\nto save the file, then compile the program?"),
    QT_TRANSLATE_NOOP(
        "Message",
        "Unable to compile un-saved document! Use Save-As from the File menu to save the document, then compile it."),
    QT_TRANSLATE_NOOP("Message", "Unable to compile document saved as a local file!"),
    QT_TRANSLATE_NOOP("Message",
                      "Unable to compile un-saved document! Do you want to save the document, then compile it?"),
    QT_TRANSLATE_NOOP("Message", "Host does not allow Nib to EXECUTE any utilities. Please enable this feature!"),
    QT_TRANSLATE_NOOP("Message", "Target label not found!"),
    QT_TRANSLATE_NOOP("Message", "No document is open."),
    QT_TRANSLATE_NOOP("Message", "No more occurrences of search text found."),
    QT_TRANSLATE_NOOP("Message", "Search text not found in selection."),
    QT_TRANSLATE_NOOP("Message", "Search text not found in any document."),
    QT_TRANSLATE_NOOP("Message", "Search text not found in document."),
    QT_TRANSLATE_NOOP("Message", "Searched past end of document"),
    QT_TRANSLATE_NOOP(
        "Message", "Search has reached the end of the document. Do you want to continue searching at the beginning?"),
    QT_TRANSLATE_NOOP(
        "Message", "Search has reached the beginning of the document. Do you want to continue searching at the end?"),
    QT_TRANSLATE_NOOP("Message", "One occurrence found and bookmarked."),
    QT_TRANSLATE_NOOP("Message", "%1 occurrences found and bookmarked."),
    QT_TRANSLATE_NOOP("Message", "%1 occurrences replaced."),
    QT_TRANSLATE_NOOP("Message", "You must restart Nib for he new \"host Nib configuration\" setting to take effect."),
    QT_TRANSLATE_NOOP("Message", "The \"min, max, close\" setting cannot be changed while any documents are open. "
                                 "Please close all documents and try again."),
    QT_TRANSLATE_NOOP("Message", "Keyword may not contain a comma, semicolon or parenthesis!"),
    QT_TRANSLATE_NOOP("Message",
                      "Keyword '%1' contains an unexpected character: %2\nAre you sure you want to add this keyword?"),
    QT_TRANSLATE_NOOP("Message", "Are you sure you want to delete the recoverable copy of this document?\n\nOnce the "
                                 "recoverable copies are deleted, they can no longer be retrieved."),
    QT_TRANSLATE_NOOP("Message",
                      "Are you sure you want to delete the recoverable copies of these %1 documents?\n\nOnce the "
                      "recoverable copies are deleted, they can no longer be retrieved."),
    QT_TRANSLATE_NOOP("Message", "\"%1\" is not the path of an item or a file."),
    QT_TRANSLATE_NOOP("Message", "\"%1\" does not exist."),
    QT_TRANSLATE_NOOP("Message", "%1 has not been saved yet."),
    QT_TRANSLATE_NOOP("Message", "%1 is in no commit."),
    QT_TRANSLATE_NOOP("Message", "It is not known any more how %1 was opened."),
    QT_TRANSLATE_NOOP("Message", "The recoverable copy of %1 cannot be read."),
    QT_TRANSLATE_NOOP("Message", "The recoverable copy of %1 cannot be deleted."),
    QT_TRANSLATE_NOOP("Message", "File %1 does not exist in account %2."),
    QT_TRANSLATE_NOOP("Message", "Account %1 does not exist on %2."),
    QT_TRANSLATE_NOOP("Message", "%1 bytes"),
    QT_TRANSLATE_NOOP("Message", "'%1' is no date such as %2."),
    QT_TRANSLATE_NOOP("Message", "'%1' is no time such as %2."),
    QT_TRANSLATE_NOOP("Message", "'%1' is no number."),
    QT_TRANSLATE_NOOP("Message", "'%1' has more than %2 decimal places."),
    QT_TRANSLATE_NOOP("Message", "'%1' is not of the form %2."),
    QT_TRANSLATE_NOOP("Message", "Only a part of this value is shown, by %1. It can be changed in the text."),
    QT_TRANSLATE_NOOP("Message", "This value holds the sign of a mark as a character. It can be changed in the text."),
    QT_TRANSLATE_NOOP("Message", "A value can hold neither line breaks nor marks that end it."),
    QT_TRANSLATE_NOOP("Message", "This record is too large for a grid."),
    // lists of results
    QT_TRANSLATE_NOOP("Message", "Search Results"),
    QT_TRANSLATE_NOOP("Message", "Replaced in Account"),
    QT_TRANSLATE_NOOP("Message", "Definitions of %1"),
    QT_TRANSLATE_NOOP("Message", "References to %1"),
    QT_TRANSLATE_NOOP("Message", "What differs: - in the window, + stored"),
    QT_TRANSLATE_NOOP("Message", "No line differs."),
    QT_TRANSLATE_NOOP("Message", "(%1 lines are left out here)"),
    QT_TRANSLATE_NOOP("Message", "The list ends here: hits in more than %1 lines are counted only."),
    QT_TRANSLATE_NOOP("Message", "Stopped."),
    QT_TRANSLATE_NOOP("Message", "Hits: %1. Items with hits: %2 of %3. Files: %4. Time: %5."),
    QT_TRANSLATE_NOOP("Message", "Skipped because they are no texts: %1."),
    QT_TRANSLATE_NOOP("Message", "Not readable: %1."),
    QT_TRANSLATE_NOOP("Message", "Replaced: %1. Items changed: %2. Items not changed: %3."),
    QT_TRANSLATE_NOOP("Message", "Stopped before these items: %1."),
    QT_TRANSLATE_NOOP("Message", "Not changed: the text is not in it any more."),
    QT_TRANSLATE_NOOP("Message", "Not changed: it is open as read-only."),
    QT_TRANSLATE_NOOP("Message", "Not changed: it is not there any more."),
    QT_TRANSLATE_NOOP("Message", "Not changed: it is read-only."),
    QT_TRANSLATE_NOOP("Message", "Not changed: %9"),
    QT_TRANSLATE_NOOP("Message", "%1 replaced in its window, not saved."),
    QT_TRANSLATE_NOOP("Message", "%1 replaced."),
    // questions before many items are changed
    QT_TRANSLATE_NOOP("Message",
                      "Replace %1 occurrences in %2 items of account %3?\n\nItems that are open are changed in their "
                      "windows and not saved. All others are saved at once, which cannot be undone."),
    QT_TRANSLATE_NOOP("Message",
                      "One item that is not open will be opened, changed and left unsaved.\nDo you want to go on?"),
    QT_TRANSLATE_NOOP("Message",
                      "%1 items that are not open will be opened, changed and left unsaved.\nDo you want to go on?"),
    // the status bar
    QT_TRANSLATE_NOOP("Message", "Reading document from host"),
    QT_TRANSLATE_NOOP("Message", "Saving document to host"),
    QT_TRANSLATE_NOOP("Message", "Compiling program on host system"),
    QT_TRANSLATE_NOOP("Message", "Running the command for a clean compile"),
    QT_TRANSLATE_NOOP("Message", "Not opened again: %1"),
    QT_TRANSLATE_NOOP("Message", "Unknown on the command line:%1"),
    // programs and their names
    QT_TRANSLATE_NOOP("Message", "No problems are known."),
    QT_TRANSLATE_NOOP("Message", "There is nothing here that can be mended so."),
    QT_TRANSLATE_NOOP("Message", "This document is not read as a program."),
    QT_TRANSLATE_NOOP("Message", "Nothing is known of where this is defined."),
    QT_TRANSLATE_NOOP("Message", "There is no name here whose places are known."),
    QT_TRANSLATE_NOOP("Message", "%1 place."),
    QT_TRANSLATE_NOOP("Message", "%1 places."),
    QT_TRANSLATE_NOOP("Message", "%1 place renamed."),
    QT_TRANSLATE_NOOP("Message", "%1 places renamed."),
    QT_TRANSLATE_NOOP(
        "Message",
        "%1 place could not be changed: the items are read-only, were not opened, or have other text there now."),
    QT_TRANSLATE_NOOP(
        "Message",
        "%1 places could not be changed: the items are read-only, were not opened, or have other text there now."),
    QT_TRANSLATE_NOOP("Message", "There is no name here."),
    QT_TRANSLATE_NOOP("Message", "What an item is called is not changed from within a program."),
    QT_TRANSLATE_NOOP("Message", "It is not known what %1 is."),
    QT_TRANSLATE_NOOP("Message", "Several items are called %1."),
    QT_TRANSLATE_NOOP("Message", "Not all programs of the account have been read yet."),
    QT_TRANSLATE_NOOP("Message", "An included item was not found, and %1 may be of it."),
    QT_TRANSLATE_NOOP("Message", "%1 is a word of the language."),
    QT_TRANSLATE_NOOP("Message", "%1 is no name."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be read."),
    QT_TRANSLATE_NOOP("Message", "%1 has a name %2 already."),
    QT_TRANSLATE_NOOP("Message", "Line %1 of %2 is not understood."),
    QT_TRANSLATE_NOOP("Message", "%1 has been changed meanwhile."),
    QT_TRANSLATE_NOOP("Message", "There is a program %1 already."),
    QT_TRANSLATE_NOOP("Message", "A label without a colon is a number."),
};

} // namespace

constinit const std::span<const char* const> kMessageTexts{kTexts};

} // namespace nib
