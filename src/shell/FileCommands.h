#pragma once
// The commands on documents as a whole, with their questions to the user.

#include "documents/mvDocument.h"
#include "shell/ClosedDocuments.h"

namespace nib {

class Program;

/// The answer to the one question about unsaved work.
enum class Saved { Stop = 0, Yes = 1, Discard = 2 };

class FileCommands {
public:
    explicit FileCommands(Program& program) : program_(program) {}

    void FileNew();
    void FileOpen();
    /// The same, beginning at a place: a connection, an account, a file or a folder.
    void FileOpenFrom(TextView place);
    void FileOpenRecent(int32_t index);
    bool FileSave(mvDocument& document);
    bool FileSaveAs(mvDocument& document);
    /// The same beside its item, under another name unless the user chooses that.
    bool FileSaveCopy(mvDocument& document);
    void FileSaveAll();
    /// Asks about changes. A new document that is to be saved gets its name first, which the document's own question
    /// leaves to its caller.
    bool FileClose(mvDocument& document);
    /// Ends at the first document that stays open; those closed before stay closed.
    bool FileCloseAll();
    void FileExit();
    /// FileCloseAll before the program ends.
    bool CloseAllToEnd();
    /// `message` empty: "Save changes to ... ?". `buttons` is a button set of the message box.
    Saved IsDocumentSaved(mvDocument& document, Text message, int32_t buttons);
    bool CanReopenClosed() const { return closed_.Any(); }
    void ReopenClosed();
    /// To the recent files; a local file that is among them under another path loses that.
    void AddRecent(const mvItem& item);
    /// The present place; before anything was opened in this session, with the account of the last item that an
    /// earlier one left.
    Location PlaceOfOldEntries() const;

private:
    bool SaveDocumentAsDialog(mvDocument& document, const std::shared_ptr<mvItem>& start);
    bool OpenRecentDocument(int32_t index);
    void OpenDocumentsDialog(const std::shared_ptr<mvItem>& start);
    std::shared_ptr<mvItem> StartOfPicker();
    /// For pickers of this session and the next.
    void RememberPlace(const mvItem& item);

    Program& program_;
    ClosedDocuments closed_;
};

/// The path of an item, with the account that it was found in.
Text RecentEntryOf(const mvItem& item);
/// Entries of older stores name neither host nor account: they are looked for at `host`.
Text RecentEntryToPath(const Location& host, TextView entry);
/// For the menu; what cannot be read as a path stands for itself.
Text RecentEntryCaption(TextView entry);

/// States of a document's window.
namespace window_state {
inline constexpr int32_t kNormal = 0;
inline constexpr int32_t kMinimized = 1;
inline constexpr int32_t kMaximized = 2;
} // namespace window_state

/// As the window's own close button does, with its question.
void CloseWindow(mvDocument& document);
/// The window leaves `state` when it is in it, else takes it on.
void ToggleWindowState(clsDocView& view, int32_t state);

/// What to tell the user of dropped things that no document can show; empty when there are none.
Text DropComplaint(const std::vector<Text>& folders, const std::vector<Text>& elsewhere);

} // namespace nib
