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
        "Message", "%1 is locked by another user or process. Open in \"read only\" mode instead?\nIt is held by %2."),
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
    QT_TRANSLATE_NOOP("Message", "Item '%1' is currently locked and cannot be updated!\nIt is held by %2."),
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
};

} // namespace

constinit const std::span<const char* const> kMessageTexts{kTexts};

} // namespace nib
