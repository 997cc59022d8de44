#pragma once
// The one object that stands for an open text: its storage and lock, its window, and every prompt of opening, saving
// and closing it. Automation clients receive the same object.

#include "documents/DocumentServices.h"
#include "documents/StoredLines.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace nib {

enum class TextCoding : uint8_t;

struct Label {
    Text name; ///< empty when the line holds none
    int32_t line = 0;
    int32_t column = 0;

    friend bool operator==(const Label&, const Label&) = default;
};

/// The statement label at the front of a line that the lexer marked as a label line.
Label ScanLabel(TextView text, int32_t line);

/// The form of a text in storage: unchanged when it holds as many CR as LF, else every line end becomes CR LF.
Text NormalizeLineEnds(Text text);

/// Ends of a selection in text order; `swapped` when the user made it backward.
struct OrderedSelection {
    Position start;
    Position end;
    bool swapped = false;
};

class mvDocument : public std::enable_shared_from_this<mvDocument> {
public:
    /// Use NewDocumentObject: a document belongs to the collection from its first moment.
    explicit mvDocument(DocumentServices& services);
    ~mvDocument();
    mvDocument(const mvDocument&) = delete;
    mvDocument& operator=(const mvDocument&) = delete;

    // Public operations
    bool FileNew();
    bool FileOpen(TextView path, bool readOnly);
    bool FileSave();
    bool FileSaveAs(TextView path);
    /// False when the user kept it open. The object may be destroyed when its last holder lets go after this.
    bool FileClose(bool prompt);
    bool ReadOnly() const;
    bool NewItem() const;
    bool IsDirty() const;
    Text Path() const;
    Text Filename() const;
    Text ItemID() const;
    bool LocalFile() const;
    bool Highlight() const { return highlight_; }
    void SetHighlight(bool highlight);
    /// Hands the present settings to the view and its lexer, if there is a view.
    void ApplySettings();
    Text GetText();
    void SetText(TextView text);
    Text SelText();
    void SetSelText(TextView text);
    void InsValue();
    void InsSubValue();
    void Activate();
    /// Has the host compile the saved item and shows what it printed; then the command for a clean compile, if the
    /// settings have one. A failure of the host is thrown.
    void Compile();
    /// Throws kLabelNotFound.
    void GotoLabel(TextView target);
    /// 1-based; anything below goes to the first line.
    void GotoLine(int32_t line);
    Text DisplayName() const;

    // For the rest of the program
    std::shared_ptr<mvItem> ItemObject() const { return item_; }
    bool FileNewItem(std::shared_ptr<mvItem> item);
    bool ItemOpen(std::shared_ptr<mvItem> item, bool readOnly);
    bool ItemSaveAs(std::shared_ptr<mvItem> item);
    /// Takes what is stored now, in one step of undo; caret, folds and bookmarks stay with the lines that do.
    bool Reload();
    /// The text as it was read or saved last; null where that is not known any more.
    std::shared_ptr<const TextSnapshot> TextAsStored() const
    {
        return view_ ? Source()->Document().StoredText() : nullptr;
    }
    /// `theirs`, which was read from `stored`, was brought together with the text: it becomes `merged`, in one step of
    /// undo, and what a save replaces is `theirs`. False, and nothing is changed, where another text is stored by now.
    bool TakeMerged(mvItem& stored, TextView theirs, TextView merged);
    /// It stays as it is, though `theirs` is stored by now: that is what a save replaces.
    void SetReplaced(Text theirs);
    /// `count` lines from `first` on, which were just put in, are stored with these TABs, and no others.
    void TakeTabs(int32_t first, int32_t count, std::vector<TabPlace> tabs);
    /// The whole text, as it was stored once, in one step of undo.
    void BringBack(TextView text);
    clsDocView& EnsureView();
    clsDocView* View() const { return view_.get(); }
    Text TitleText() const;
    /// The account and what its host is called, or the folder of a file; empty for a new document.
    Text PlaceText() const;
    /// By its name or as #RRGGBB, what documents of the same account or connection have in common; empty for none.
    Text Color() const;
    /// Hands the window its title.
    void UpdateTitle();
    /// "<DisplayName> [<DocumentID>]"
    Text ListName() const;
    bool CanUndo() const { return view_ && Source()->Document().CanUndo(); }
    bool CanRedo() const { return view_ && Source()->Document().CanRedo(); }
    bool CanUndoSweep() const { return view_ && Source()->Document().CanUndoSweep(); }
    void Undo();
    void UndoSweep();
    void Redo();
    void Cut() { EnsureView().txtText().Cut(); }
    void Copy() { EnsureView().txtText().Copy(); }
    void Paste() { EnsureView().txtText().Paste(); }
    void Delete() { EnsureView().txtText().Delete(); }
    void DeleteLine() { EnsureView().txtText().DeleteLine(); }
    void SelectAll() { EnsureView().txtText().SelectAll(); }
    void SetModified(bool modified);
    bool CanCompile() const;
    bool HasSelection() const;
    bool SelectionIsMultiLine() const;
    OrderedSelection GetOrderedSelection() const;
    Text GetSelectionText() const;
    void ReplaceSelection(TextView text);
    /// The whole text, in one step of undo that leaves lines alone which are the same.
    void ReplaceText(TextView text);
    /// Lays out the whole text by its blocks.
    void Format();
    void IndentBlock(bool indent);   ///< false: to the left
    void CommentBlock(bool comment); ///< false: takes the markers off
    void ToggleCase();
    /// At the head of its pages.
    Text PrintTitle() const;
    /// Stable number of a line through edits, given out at first asking; -1 for a negative line.
    int32_t LineIdFromLine(int32_t line);
    int32_t LineFromLineId(int32_t id) const;
    void RevealLine(int32_t line);
    void ShowLine(int32_t column, int32_t line, bool centre);
    int32_t DocumentID() const { return documentId_; }
    Text AutoRecoverFile() const { return autoRecoverFile_; }
    void SetAutoRecoverFile(TextView name) { autoRecoverFile_ = name; }
    bool AutoSaveFlag() const;
    bool IsBeingSaved() const { return savings_ > 0; }
    /// How often it was, for whoever shows what is stored.
    int32_t SaveCount() const { return saved_; }
    /// Statement labels in the order of the text.
    const std::vector<Label>& Labels();

    // How it is stored; part of it counts from the next save on, until when it is changed.
    /// Null where nothing is known of that, as of a document that was never saved.
    const StoredForm* Stored() const;
    /// The text as a save would write it now; only where there is a view.
    LinewiseText AsWritten() const { return stored_.Written(Source()->Document().Snapshot()); }
    bool MixedEnds() const { return stored_.AnyOddEnd(); }
    void SetEnds(LineEnd end);
    void SetCoding(TextCoding coding);
    /// Gives the lock up, or takes it and what has been stored since. A document with changes stays as it is.
    void SetReadOnly(bool readOnly);

    /// Raised by FileClose.
    std::function<void()> DocumentClose;

private:
    SourceView* Source() const { return view_ ? &view_->txtText() : nullptr; }
    void InsertMark(TextView mark);
    int32_t Show(TextView text, int32_t flags);
    bool Ask(TextView question);
    void Warn(TextView text);
    /// A failure of `body` is logged and shown, and counts as false.
    bool Attempt(TextView where, const std::function<bool()>& body);
    void ReportFailure(TextView where, const Error& error);
    void AdoptLocation(const mvItem& item);
    void TakeItem(std::shared_ptr<mvItem> item);
    void ReleaseItem();
    bool OpenItem(std::shared_ptr<mvItem> item, bool readOnly);
    bool OpenAfterFailure(TextView path, const Error& error, bool& readOnly, bool& lock);
    Text WhereMissing(const mvItem& item) const;
    bool OpenMissing(std::shared_ptr<mvItem> item);
    bool HoldsItemOf(TextView path) const;
    Text LockedQuestion(TextView path);
    /// Calls read() of an item.
    template <typename Read>
    auto Reading(Read&& read);
    std::vector<TabPlace> ShowRead(ReadText text);
    void RememberStored(const std::vector<TabPlace>& tabs);
    void WriteFrom(SourceView& source, mvItem& item);
    std::optional<LinewiseText> StoredBefore(mvItem& item);
    bool MayOverwrite(mvItem& item);
    /// The host's answer to a command about the item.
    Text Execute(mvItem& item, TextView note, TextView command, TextView options, const PrintedLines& printed);
    bool ConfirmClose();
    bool MakeWritable();
    void StoreOtherwise(const std::function<void(StoredForm&)>& change);

    DocumentServices& services_;
    int32_t documentId_;
    std::shared_ptr<mvItem> item_;
    StoredLines stored_;
    std::shared_ptr<const Text> replaces_; ///< stored by another, with its TABs; null: as read or saved last
    int64_t readAt_ = 0; ///< seconds since the epoch: when what is stored was read or saved last; 0: nothing is stored
    int32_t newNumber_ = 0;
    std::unique_ptr<clsDocView> view_;
    bool highlight_;
    std::optional<std::vector<Label>> labels_;
    bool labelsOfSavedText_ = false;
    Text autoRecoverFile_;
    bool counted_ = false;
    int32_t saved_ = 0;
    int32_t savings_ = 0; ///< under way: it neither closes nor changes its item
};

/// Creates a document and adds it to the open documents; null when that fails.
std::shared_ptr<mvDocument> NewDocumentObject(DocumentServices& services);

/// The open documents in the order of their creation; the key is the decimal DocumentID.
class mvDocuments {
public:
    int32_t Count() const { return static_cast<int32_t>(documents_.size()); }
    /// 1-based; null when out of range.
    std::shared_ptr<mvDocument> Item(int32_t index) const;
    std::shared_ptr<mvDocument> ById(int32_t documentId) const;
    /// The next after `documentId`, round to the first; null with fewer than two documents.
    std::shared_ptr<mvDocument> NextAfter(int32_t documentId) const;
    /// The one that is on the same item, however that was reached; null when none is.
    std::shared_ptr<mvDocument> On(const mvItem& item) const;
    void Add(std::shared_ptr<mvDocument> document);
    void Remove(int32_t documentId);
    /// A copy, so that documents may close while it is walked.
    std::vector<std::shared_ptr<mvDocument>> All() const { return documents_; }

    /// Told of each document once it is in.
    std::function<void(mvDocument&)> Added;

private:
    std::vector<std::shared_ptr<mvDocument>> documents_;
};

} // namespace nib
