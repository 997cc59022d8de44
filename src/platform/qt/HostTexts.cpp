#include "platform/qt/ShownTexts.h"

#include <QtGlobal>

namespace nib {

namespace {

// One text of several pieces is meant.
// NOLINTBEGIN(bugprone-suspicious-missing-comma)
constexpr const char* kTexts[] = {
    // what stands around another message
    QT_TRANSLATE_NOOP("Message", "Settings cannot be stored: %7"),
    QT_TRANSLATE_NOOP("Message", "The history cannot be kept: %7"),
    QT_TRANSLATE_NOOP("Message", "The history cannot be packed: %7"),
    QT_TRANSLATE_NOOP("Message", "No recovery copies can be kept: %7"),
    QT_TRANSLATE_NOOP("Message", "The Application is unable to start due to the following error:\n%7"),
    QT_TRANSLATE_NOOP("Message", "Error exporting keyword list: %7"),
    QT_TRANSLATE_NOOP("Message", "Error importing keyword list: %7"),
    QT_TRANSLATE_NOOP("Message", "%7\nOnly the default connection can be used."),
    QT_TRANSLATE_NOOP("Message", "%7 Whether %1 is stored is not known. It stays open and changed; saving it again "
                                 "connects again and finds out."),
    QT_TRANSLATE_NOOP("Message", "The lock of %1 was lost. %7"),
    QT_TRANSLATE_NOOP("Message", "%7 has to wait: another request to a host is pending."),
    QT_TRANSLATE_NOOP("Message", "The folder of %1 cannot be made: %7"),
    // questions of trust, and what is asked once
    QT_TRANSLATE_NOOP("Message", "Other users can change the verbs of the account %1.\n\nRun `%2`?"),
    QT_TRANSLATE_NOOP("Message", "The password of %1 and all items would go to %2 as plain text, which others on the "
                                 "way can read. A tunnel keeps them to yourselves.\n\nConnect all the same?"),
    QT_TRANSLATE_NOOP("Message", "The account %1 belongs to a MultiValue server, whose locks do not reach here: an "
                                 "item that is open here can be changed by others on the server at the same time, and "
                                 "one of the two changes is lost.\n\nA connection with kind=network in hosts.conf "
                                 "opens the same items under the server's own locks."),
    QT_TRANSLATE_NOOP("Message", "This version of Nib includes a new monospaced font called DejaVu Sans Mono. Your "
                                 "current editor font is MVW Lucida Console. Would you like to change your editor "
                                 "font to the new font (recommended)?\n\n(this prompt will not be shown again, but "
                                 "you can always change the font by selecting Preferences from the View menu)"),
    QT_TRANSLATE_NOOP("Message",
                      "This version of Nib knows the words of MultiValue BASIC: statements, functions and "
                      "numbers get colors of their own, names with a $ in them stay whole, and more blocks "
                      "are indented and collapsed. Would you like to use that?\n\n(this prompt will not be "
                      "shown again, but you can always choose the dialect of your programs in the settings)"),
    // lists of keywords
    QT_TRANSLATE_NOOP("Message", "Keyword '%1' contains an invalid character: %2. Import as '%3'?\n\nClick 'Yes' to "
                                 "import corrected keyword, 'No' to skip this keyword, or Cancel to cancel the import "
                                 "operation."),
    // what was dropped, or named on the command line
    QT_TRANSLATE_NOOP("Message", "A folder cannot be opened as a document. Drop the files in it instead.\n%6\n\nOnly "
                                 "files of this computer can be opened by dropping them.\n%7"),
    QT_TRANSLATE_NOOP("Message", "A folder cannot be opened as a document. Drop the files in it instead.\n%7"),
    QT_TRANSLATE_NOOP("Message", "Only files of this computer can be opened by dropping them.\n%7"),
    QT_TRANSLATE_NOOP("Message", "%1\nand %2 more"),
    QT_TRANSLATE_NOOP("Message", "Unable to open item %1 because \"%2\" is no type of connection. The types are mvdb "
                                 "and file."),
    QT_TRANSLATE_NOOP("Message", "No name was given."),
    QT_TRANSLATE_NOOP("Message", "Choose a connection or a folder first, or type a whole path."),
    QT_TRANSLATE_NOOP("Message", "%1 selected"),
    // of connections and of expressions
    QT_TRANSLATE_NOOP("Message", "The connection to %1 was lost (%7), and its locks with it. The next save connects "
                                 "again."),
    QT_TRANSLATE_NOOP("Message", "another program is writing to it."),
    QT_TRANSLATE_NOOP("Message", "The regular expression is faulty.\nCharacter %1: %7"),
    QT_TRANSLATE_NOOP("Message", "The regular expression is faulty.\n%7"),
    QT_TRANSLATE_NOOP("Message", "The replacement names a group that the expression does not have."),
    QT_TRANSLATE_NOOP("Message", "Reading..."),
    // recovery
    QT_TRANSLATE_NOOP("Message", "%1 as it was before a save that was cut short"),
    // files
    QT_TRANSLATE_NOOP("Message", "%1 is too large: files up to %2 MB can be edited."),
    QT_TRANSLATE_NOOP("Message", "%1 is too large."),
    QT_TRANSLATE_NOOP("Message", "%1 is not a plain file."),
    QT_TRANSLATE_NOOP("Message", "%1 is not a text: it holds NUL bytes."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be read: %7."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be read: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be listed: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be made: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be made."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be run: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: the character %2 in line %3 would be read as a mark in %4."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: the character %2 in line %3 cannot be held by a text."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: the character %2 in line %3 cannot be held by %4."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: no copy of it can be kept in %2: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: the copy %2 cannot be written: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: the server takes 99,999,995 bytes at most."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: line %2 holds a line feed, and a directory file would make two "
                                 "lines of it."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: %7."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be saved: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 is saved, but may not survive a power failure: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 was damaged while it was saved. Its old content is in %2: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 may not be saved. Its old content is in %2: %7"),
    // locks
    QT_TRANSLATE_NOOP("Message", "%1 is locked by another user or process.\nIt is held by %7."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be locked: the server's table of locks is full."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be locked: %7"),
    QT_TRANSLATE_NOOP("Message", "%1 is open in another window."),
    QT_TRANSLATE_NOOP("Message", "%1 is locked.\nIt is held by %7."),
    QT_TRANSLATE_NOOP("Message", "this program, in another window"),
    QT_TRANSLATE_NOOP("Message", "a lost connection of this very program, until the server clears it away"),
    QT_TRANSLATE_NOOP("Message", "another process"),
    // accounts in folders
    QT_TRANSLATE_NOOP("Message", "No account is named on %1."),
    QT_TRANSLATE_NOOP("Message", "No account of %1 is named."),
    QT_TRANSLATE_NOOP("Message", "File %1 of account %2 is a hashed file, which only its server can read and write: "
                                 "use a connection with kind=network in hosts.conf."),
    QT_TRANSLATE_NOOP("Message", "The folder %1 can be read. It holds one account, and %2 is none of them."),
    QT_TRANSLATE_NOOP("Message", "The folder %1 can be read. It holds %2 accounts, and %3 is none of them."),
    QT_TRANSLATE_NOOP("Message", "The folder %1 can be read. It holds one account."),
    QT_TRANSLATE_NOOP("Message", "The folder %1 can be read. It holds %2 accounts."),
    QT_TRANSLATE_NOOP("Message", "There is no command to run."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be run while another command runs."),
    QT_TRANSLATE_NOOP("Message", "The verb %1 of account %2 names no program."),
    QT_TRANSLATE_NOOP("Message", "%1 was stopped: it did not end within %2 seconds."),
    QT_TRANSLATE_NOOP("Message", "%1 was not run."),
    QT_TRANSLATE_NOOP("Message", "%1 is not in the VOC of account %2."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be compiled: with blanks and both kinds of quotes its name is no single "
                                 "word of a command."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be compiled: the host would take its name for an option."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot be compiled: in the compile command its name is a part of a word, which "
                                 "holds no blanks."),
    QT_TRANSLATE_NOOP("Message", "(the rest of the output was cut off)"),
    QT_TRANSLATE_NOOP("Message", "(The command asked for input, and was ended.)"),
    QT_TRANSLATE_NOOP("Message", "The name \"%1...\" is too long: %2 of %3 bytes."),
    QT_TRANSLATE_NOOP("Message", "\"%1\" cannot be the id of an item of this file: its server takes only the "
                                 "characters of ASCII, and none of them that control a terminal."),
    QT_TRANSLATE_NOOP("Message", "\"%1\" is not an item."),
    // connections
    QT_TRANSLATE_NOOP("Message", "The default connection keeps its name."),
    QT_TRANSLATE_NOOP("Message", "The default connection cannot be removed."),
    QT_TRANSLATE_NOOP("Message", "A connection needs a name."),
    QT_TRANSLATE_NOOP("Message", "The name of a connection cannot hold the character \"]\"."),
    QT_TRANSLATE_NOOP("Message", "There is a connection named \"%1\" already."),
    QT_TRANSLATE_NOOP("Message", "%1 was changed by another program. It is not overwritten: cancel, and begin anew "
                                 "with its present state."),
    QT_TRANSLATE_NOOP("Message", "%1 is no UTF-8 text. It has to be put right before it can be changed here."),
    QT_TRANSLATE_NOOP("Message", "The host connection \"%1\" is not set up in hosts.conf."),
    QT_TRANSLATE_NOOP("Message", "The host connection \"%1\" is of the unknown kind \"%2\"."),
    QT_TRANSLATE_NOOP("Message", "The host connection \"%1\" names no address."),
    QT_TRANSLATE_NOOP("Message", "\"%1\" is no port: a number from 1 to 65535."),
    QT_TRANSLATE_NOOP("Message", "ids=%1 in hosts.conf is neither ids=plain nor ids=escaped."),
    QT_TRANSLATE_NOOP("Message", "The character set %1 is not known."),
    QT_TRANSLATE_NOOP("Message", "The character set %1 is not based on ASCII."),
    QT_TRANSLATE_NOOP("Message", "A name cannot hold line breaks and characters that are no text."),
    QT_TRANSLATE_NOOP("Message", "%1 cannot hold line breaks and characters that are no text."),
    // servers
    QT_TRANSLATE_NOOP("Message", "The server %1 cannot be reached: %7."),
    QT_TRANSLATE_NOOP("Message", "The connection to %1 was lost."),
    QT_TRANSLATE_NOOP("Message", "Not logged in to %1: it refused the user or the password."),
    QT_TRANSLATE_NOOP("Message", "Not logged in to %1."),
    QT_TRANSLATE_NOOP("Message", "Account %1 cannot be entered: %7."),
    QT_TRANSLATE_NOOP("Message", "Account %1 cannot be entered."),
    QT_TRANSLATE_NOOP("Message", "File %1 of account %2 cannot be opened: %7."),
    QT_TRANSLATE_NOOP("Message", "The server %1 lets user %2 into account %3, but to read alone: %7."),
    QT_TRANSLATE_NOOP("Message", "The server %1 lets user %2 into account %3."),
    QT_TRANSLATE_NOOP("Message", "%1 was changed on the server since it was opened. Save it again to replace it."),
    QT_TRANSLATE_NOOP("Message", "%1 was deleted on the server since it was opened. Save it again to make it anew."),
    QT_TRANSLATE_NOOP("Message", "The request was cancelled."),
    QT_TRANSLATE_NOOP("Message", "The connection was reset."),
    // what a server is waited for
    QT_TRANSLATE_NOOP("Message", "Reading %1 of the VOC"),
    QT_TRANSLATE_NOOP("Message", "Reading %1"),
    QT_TRANSLATE_NOOP("Message", "Locking %1"),
    QT_TRANSLATE_NOOP("Message", "Saving %1"),
    QT_TRANSLATE_NOOP("Message", "Looking for %1"),
    QT_TRANSLATE_NOOP("Message", "Listing %1"),
    QT_TRANSLATE_NOOP("Message", "Entering %1"),
    QT_TRANSLATE_NOOP("Message", "Asking who holds %1"),
    QT_TRANSLATE_NOOP("Message", "Testing the connection"),
    // why a server cannot, within a sentence
    QT_TRANSLATE_NOOP("Message", "it has not answered for %1 seconds"),
    QT_TRANSLATE_NOOP("Message", "the connection was lost"),
    QT_TRANSLATE_NOOP("Message", "no MultiValue server answers there"),
    QT_TRANSLATE_NOOP("Message", "it has closed the connection at the login: it may have no free session"),
    QT_TRANSLATE_NOOP("Message", "it sent what is no reply of a MultiValue server"),
    QT_TRANSLATE_NOOP("Message", "the server has ended it"),
    QT_TRANSLATE_NOOP("Message", "the other side has closed the connection"),
    QT_TRANSLATE_NOOP("Message", "the tunnel %1 has ended"),
    QT_TRANSLATE_NOOP("Message", "the tunnel %1 cannot be started: %7"),
    QT_TRANSLATE_NOOP("Message", "no command is named for the tunnel"),
    QT_TRANSLATE_NOOP("Message", "there is no machine %1 (%2)"),
    QT_TRANSLATE_NOOP("Message", "%1 port %2 does not answer"),
    QT_TRANSLATE_NOOP("Message", "%1 port %2 refuses connections: no server listens there"),
    QT_TRANSLATE_NOOP("Message", "%1 port %2 cannot be reached: %7"),
    QT_TRANSLATE_NOOP("Message", "a name has 1 to 32 characters"),
    QT_TRANSLATE_NOOP("Message", "the item id is not allowed there"),
    QT_TRANSLATE_NOOP("Message", "the name of the file is not allowed"),
    QT_TRANSLATE_NOOP("Message", "the file itself is missing, there is an entry for it in the VOC alone"),
    QT_TRANSLATE_NOOP("Message", "the VOC has no such name"),
    QT_TRANSLATE_NOOP("Message", "the name stands for something else in the VOC"),
    QT_TRANSLATE_NOOP("Message", "there is no such item"),
    QT_TRANSLATE_NOOP("Message", "the server cannot read or write the file"),
    QT_TRANSLATE_NOOP("Message", "the user may not write to the file: the user's primary group has to be the server's "
                                 "group"),
    QT_TRANSLATE_NOOP("Message", "a trigger of the file refused it"),
    QT_TRANSLATE_NOOP("Message", "the server wants a lock for it"),
    QT_TRANSLATE_NOOP("Message", "the user may not write there: the user's primary group has to be the server's group"),
    QT_TRANSLATE_NOOP("Message", "the file is encrypted"),
    QT_TRANSLATE_NOOP("Message", "the server answers with status %1"),
};
// NOLINTEND(bugprone-suspicious-missing-comma)

} // namespace

constinit const std::span<const char* const> kHostTexts{kTexts};

} // namespace nib
