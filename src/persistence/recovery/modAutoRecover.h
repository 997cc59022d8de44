#pragma once
// Copies of changed documents in a folder of the user's own. A clean end deletes this session's; what a session that no
// longer runs has left is offered at the next start.

#include "base/DynamicArray.h"
#include "base/Text.h"
#include "documents/DocumentServices.h"
#include "persistence/recovery/CopyWriter.h"
#include "persistence/recovery/Journals.h"
#include "platform/Desktop.h"
#include "platform/posix/FileSaver.h"
#include "text/SourceDocument.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace nib {

// Names of recovery copies: the session's number in 8 hexadecimal digits, a point and a running number.

/// Running numbers go from 1 to this.
inline constexpr int32_t kLastAutoSaveNumber = 32767;

Text SessionDigits(uint32_t session);
/// At least three digits of the running number.
Text AutoSaveName(uint32_t session, int32_t number);
/// What stands in front of the first point, or all of a name without one, read as a hexadecimal number as far as it is
/// one: 0 for a name that begins otherwise, nothing for a number that no session can have.
std::optional<uint32_t> SessionOfName(TextView name);

/// Names of files that an earlier session left and that are this session's now; empty for none.
struct AdoptedFiles {
    Text copy;
    std::string journal;
};

/// What is referred to outlives the object that gets it.
struct AutoRecoverPorts {
    DocumentServices& documents;
    FileSaver saver; ///< makes new files for the user alone
    SessionToken& token;
    Text localData; ///< the user's data folder on this machine
    Timers& timers;
    /// Offers the files of these names.
    std::function<void(TextView folder, const DynamicArray& names)> showDialog;
    /// Told why copies or journals cannot be written, and an empty text once they can: work goes on without them.
    std::function<void(TextView fault)> fault;
};

class modAutoRecover {
public:
    explicit modAutoRecover(AutoRecoverPorts ports) : ports_(std::move(ports)) {}
    modAutoRecover(const modAutoRecover&) = delete;
    modAutoRecover& operator=(const modAutoRecover&) = delete;
    ~modAutoRecover();

    /// False when there is no folder, or none can be made, or the session has no number.
    bool FindAutoRecoverFolder(bool create);
    /// Orders a copy of each changed document, unless it has one. True when there is any such document.
    bool AutoSaveDocuments();
    /// To be called after each notice of a document: its journal is kept or dropped, and what is saved or closed leaves
    /// no copy to be offered.
    void DocumentChanged(mvDocument& document);
    /// To be called when the settings may be other ones: without `AutoRecover` no journal is kept.
    void FollowSetting();
    /// All that was typed, and each copy, is on disk when it answers, as far as that can be.
    void Flush();
    void CheckAutoRecover();
    /// Those of this session, or all.
    void DeleteAutoSaveFiles(bool all);
    /// Makes the file one of this session's, so that it goes with them. Answers its new name, empty when it keeps its
    /// old one.
    Text AdoptAutoSaveFile(TextView name);
    /// Journals of sessions that have ended, by their names in JournalFolder().
    std::vector<std::string> OrphanJournals();
    /// As AdoptAutoSaveFile does.
    std::string AdoptJournal(const std::string& name);
    /// The document holds the text of these: it goes on with the copy, and the journal goes once it has one of its own.
    void HandOver(const AdoptedFiles& files, mvDocument& document);
    std::string JournalFolder() const;
    /// The number of this session as names of files begin with it; empty when it has none.
    Text SessionName() { return EnsureSession() ? SessionDigits(session_) : Text(); }
    /// A file of this name belongs to no session that runs.
    bool IsOrphan(TextView name);
    void EndAutoSaveSession();
    /// Copies what has changed, as control goes to where it may not come back from: they are written whatever becomes
    /// of that. Until the release the copies outlast even a clean end. Answers the guard's number, 0 when there was
    /// nothing to guard.
    int32_t HoldAutoSaveGuard();
    /// Only the last guard given out can be released.
    void ReleaseAutoSaveGuard(int32_t generation);

    /// Empty until it is found.
    const Text& AutoRecoverFolder() const { return AutoRecoverFolder_; }
    const AutoRecoverPorts& Ports() const { return ports_; }

private:
    /// Tells whether a text is still what its last copy holds.
    struct CopyWatch final : BufferListener {
        std::weak_ptr<mvDocument> document;
        Text path;
        Text itemId;
        int64_t order = 0;              ///< of the writer
        std::optional<FileStamp> stamp; ///< once it is written
        bool changed = false;
        void TextChanged(const TextChange&) override { changed = true; }
        void TextReset() override { changed = true; }
    };

    Text Folder() const;
    bool EnsureSession();
    Journals* JournalsOf();
    CopyWriter& Writer();
    /// Takes in what became of copies that were ordered.
    void Settle();
    void Tell(TextView copyFault);
    void RemoveCopy(mvDocument& document);
    void ClearLeftovers();
    void KillJournal(TextView name);
    Text PathOf(TextView name) const { return AutoRecoverFolder_ + u"/" + Text(name); }
    void SaveDocument(mvDocument& document);
    /// The copy on disk holds the document as it is.
    bool IsCopied(mvDocument& document);
    void ForgetCopy(mvDocument& document);
    Text NameFor(const mvDocument& document);
    bool IsTaken(const mvDocument& document, TextView name);
    bool AutoRecover() const { return ports_.documents.settings.AutoRecover; }

    AutoRecoverPorts ports_;
    Text AutoRecoverFolder_;
    uint32_t session_ = 0;
    int32_t lastNumber_ = 0;                               ///< of a copy of this session
    std::map<int32_t, std::unique_ptr<CopyWatch>> copies_; ///< by DocumentID
    std::optional<CopyWriter> writer_;                     ///< from the first copy on
    std::unique_ptr<Timers::Timer> settling_;
    std::optional<Journals> journals_;
    Text journalFault_;
    Text copyFault_;
    int32_t guardGeneration_ = 0;
    bool guardHeld_ = false;
};

} // namespace nib
