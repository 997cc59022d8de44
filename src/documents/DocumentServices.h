#pragma once
// What a document wants of the rooms above it, as small ports, and the process-wide values that all documents share.

#include "base/Text.h"
#include "diagnostics/DebugLog.h"
#include "editing/MvEdit.h"
#include "hosts/mvConnect.h"
#include "platform/MessageBoxes.h"
#include "text/SourceView.h"

#include <functional>
#include <memory>
#include <optional>

namespace nib {

class Dialects;
class LexClass;
class mvDocument;
class mvDocuments;

struct Location {
    Text Provider = u"mvdb";
    Text ServerName = u"*";
    Text Database;
    Text Folder;
};

/// The process-wide current place: what the pickers start from and what opened and saved items leave behind.
struct CurrentPlace {
    Location now;
    Location host; ///< the last one that was no local file: where items without a host or account of their own are

    void GoTo(Location place)
    {
        if (place.Provider != kFileProvider) host = place;
        now = std::move(place);
    }
};

/// The window of a document, independent of any form. Its end is the end of what is on the screen.
class clsDocView {
public:
    virtual ~clsDocView() = default;
    virtual void Activate() = 0;
    /// Makes it visible.
    virtual void Show() = 0;
    /// As the window's own close button does, with the question that belongs to it.
    virtual void QueryUnload() = 0;
    virtual SourceView& txtText() = 0;
    /// Of the view's text; null when it has none. Owned by the window.
    virtual LexClass* Lexer() { return nullptr; }
    virtual void SetTitle(TextView title) = 0;
    /// The text has changed since it was loaded or saved, and a copy is due.
    virtual bool AutoSaveFlag() const = 0;
    /// 0 normal, 1 minimised, 2 maximised.
    virtual void SetWindowState(int32_t state) = 0;
    virtual int32_t WindowState() const = 0;
    virtual bool IsActive() const = 0;
    /// Where it stands among the others when it is normal, as it can be handed back in another run; empty when it is
    /// not normal.
    virtual Text Placement() const { return {}; }
    /// Two views of the text; `txtText` answers the one at work.
    virtual bool IsSplit() const { return false; }
    virtual void SetSplit(bool /*split*/) {}
    /// The other view gets to work.
    virtual void ChangePane() {}
    virtual void SetPlacement(TextView /*placement*/) {}
    /// The text as a record in tables. Throws Error where it is too large for that.
    virtual bool IsGrid() const { return false; }
    virtual void SetGrid(bool /*grid*/) {}
    /// What is being typed into a cell gets into the text. Answers why it could not, once the cell is in front to be
    /// mended; empty when nothing is left.
    virtual Text TakeInput() { return {}; }
    /// An item was opened into it, or one that is to be made.
    virtual void Opened() {}
};

/// Makes the window of a document; which kind is its own choice.
using ViewFactory = std::function<std::unique_ptr<clsDocView>(mvDocument& document)>;

/// The main window as documents, search and clients know it. Every call is harmless before it is loaded and once it has
/// gone.
class Frame {
public:
    virtual ~Frame() = default;
    /// Panels are numbered from 1.
    virtual void SetStatusText(int32_t panel, TextView text) = 0;
    virtual void ShowStatusPanel(int32_t panel, bool visible) = 0;
    virtual void SetWaitCursor(bool wait) = 0;
    virtual void ToForeground() = 0;
    /// Lets waiting messages of the desktop through.
    virtual void ProcessMessages() = 0;
    /// Does `work`, which touches nothing of the program's, on another thread while the window is alive. Throws what it
    /// throws.
    virtual void Await(const std::function<void()>& work) { work(); }
    /// The DocumentID of the active child window; 0 when there is none.
    virtual int32_t ActiveDocument() const = 0;
    /// Hiding leaves everything in it as it is.
    virtual bool Visible() const { return true; }
    virtual void SetVisible(bool) {}
    /// A box or dialog waits for the user, or the window for work.
    virtual bool IsModal() const { return false; }
    /// Unloads in a moment, once the call that asks for it is over.
    virtual void ArmShutdownTimer() {}
    /// Takes that back as long as the moment has not passed.
    virtual void DisarmShutdownTimer() {}
};

/// A save that has ended well.
struct SavedText {
    const mvItem& item;
    const std::optional<LinewiseText>& before; ///< what it has replaced; none where there was nothing
    int64_t beforeTime;                        ///< seconds since the epoch: when that was read or saved
    const LinewiseText& text;                  ///< both are good for as long as they are kept, on any thread
    int64_t time;
};

/// The program around a document.
class DocumentShell {
public:
    virtual ~DocumentShell() = default;
    /// The one message box call: brings the program forward, answers the button pressed.
    virtual int32_t ShowMessage(TextView text, int32_t flags, TextView title = u"Nib") = 0;
    /// Tells the user of a failure.
    void ReportError(TextView description)
    {
        ShowMessage(u"The following error has occurred:\n" + Text(description), 0);
    }
    /// Title, text or item of a document changed, or it is closed: what shows that is drawn again, once this turn is
    /// over.
    virtual void DocumentChanged(mvDocument& document) = 0;
    /// Versions of the item are kept: it is worth asking what a save replaces.
    virtual bool KeepsVersions(const mvItem& /*item*/) const { return false; }
    virtual void DocumentSaved(const SavedText& /*saved*/) {}
    /// Taken round each call that waits for the host: what has changed is copied first, and while held no auto-save
    /// pass runs. Nests.
    virtual void HoldAutoSave(bool hold) = 0;
    /// Remembers the caret's present position in the navigation history.
    virtual void RecordPosition(mvDocument& document) = 0;
};

/// The window that a list of lines is shown in: what was found, or what the host printed.
class ResultsWindow {
public:
    virtual ~ResultsWindow() = default;
    /// A text that is not empty replaces the contents; an empty one only shows the window.
    virtual void ShowResults(TextView text) = 0;
    /// The same with what nobody has to look at: a window that is not open stays so.
    virtual void KeepResults(TextView text) { ShowResults(text); }
    /// Adds lines of a command that still runs; the first begin the list. It comes into sight when the user has to wait
    /// for more of them.
    virtual void AddOutput(TextView /*lines*/, bool /*first*/) {}
    /// Begins a list under a title, and shows the window.
    virtual void ResetResults(TextView title) = 0;
    /// Appends one line, highlighted from a column on or, where nothing is, emphasised as the header of a document.
    virtual void AddResultLine(TextView text, int32_t highlightStart, int32_t highlightLength, bool emphasis) = 0;
    /// Appends what the program itself says of the list, in whole sentences.
    virtual void AddNote(const std::vector<Text>& sentences)
    {
        Text line;
        for (const Text& sentence : sentences) (line += line.empty() ? u"" : u" ") += sentence;
        AddResultLine(line, 0, 0, false);
    }
    /// Appends the header of an item by its path, open or not.
    virtual void AddItemHeader(TextView text, TextView /*path*/) { AddResultLine(text, 0, 0, true); }
    /// Appends a line that leads to one of the item above, 1-based.
    virtual void AddItemLine(TextView text, int32_t highlightStart, int32_t highlightLength, int32_t /*line*/)
    {
        AddResultLine(text, highlightStart, highlightLength, false);
    }
    /// Another one once the contents have been replaced: what was being listed is gone.
    virtual int32_t ListNumber() const { return 0; }
    /// To the next error that a compiler has printed, as long as the user has not closed the list; false when there is
    /// none further on.
    virtual bool GoToError(bool /*backward*/) { return false; }
};

/// Shared by all documents; outlives them.
struct DocumentServices {
    DocumentShell& shell;
    Frame& frame;
    MessageBoxes& boxes;
    const ViewFactory& createView;
    mvConnection& connection;
    MvEdit& settings;
    CurrentPlace& place;
    mvDocuments& openDocuments;
    const DebugLog& log;
    int32_t lastDocumentId = 0;
    int32_t lastNewNumber = 0;
    int32_t lastLineId = 0;
    /// Documents bound to a window, as the main window counts them.
    int32_t openCount = 0;
    /// Null until there is such a window.
    ResultsWindow* results = nullptr;
    Dialects* dialects = nullptr; ///< null: there are none; outlives the settings
    ItemPlace compiled{};         ///< the item that the host compiled last, and printed of what the results show
    /// Called with what its compiler has printed; may be empty.
    std::function<void(TextView output)> onCompiled{};
    /// Where a line of a document, 1-based as its compiler told it, is now that the text was edited; may be empty.
    std::function<int32_t(const mvDocument& document, int32_t line)> compiledLine{};
};

// States of the program that a document must never leave behind, whatever way it goes.

template <typename Owner, void (Owner::*Switch)(bool)>
class SwitchedOn {
public:
    explicit SwitchedOn(Owner& owner) : owner_(owner) { (owner_.*Switch)(true); }
    ~SwitchedOn() { (owner_.*Switch)(false); }
    SwitchedOn(const SwitchedOn&) = delete;
    SwitchedOn& operator=(const SwitchedOn&) = delete;

private:
    Owner& owner_;
};

using WaitCursor = SwitchedOn<Frame, &Frame::SetWaitCursor>;
/// No auto-save pass runs meanwhile.
using AutoSaveHold = SwitchedOn<DocumentShell, &DocumentShell::HoldAutoSave>;

/// A text in status panel 1 for the length of a host call.
class StatusNote {
public:
    StatusNote(Frame& frame, TextView text) : frame_(frame) { frame_.SetStatusText(1, text); }
    ~StatusNote() { frame_.SetStatusText(1, u""); }
    StatusNote(const StatusNote&) = delete;
    StatusNote& operator=(const StatusNote&) = delete;

private:
    Frame& frame_;
};

} // namespace nib
