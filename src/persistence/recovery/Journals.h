#pragma once
#include "documents/DocumentServices.h"
#include "persistence/recovery/DocumentJournal.h"
#include "platform/Desktop.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace nib {

/// A journal for each changed document: what was typed is on disk within a second of the last key, and every two
/// seconds while somebody types, whatever else the program waits for. It goes when the document is saved or closed.
class Journals {
public:
    /// The timers outlive it. `folder` is made when it is first needed; names begin with `session` and a point.
    /// `fault` is told what the system says when a journal cannot be written, and an empty text once all can again.
    Journals(Timers& timers, std::string folder, std::string session, std::function<void(TextView)> fault);
    Journals(const Journals&) = delete;
    Journals& operator=(const Journals&) = delete;
    ~Journals();

    /// To be called after each notice that a document was changed, saved, bound to another item or closed.
    void DocumentChanged(mvDocument& document);
    /// The document has a new recovery copy.
    void CopyMade(mvDocument& document);
    /// The file goes when the document's own journal is complete.
    void Supersede(mvDocument& document, std::string name);
    /// All that was typed is on disk when it answers, as far as that can be.
    void Flush();
    /// A clean end: nothing of this session is left.
    void RemoveAll();

private:
    struct Entry {
        std::weak_ptr<mvDocument> document;
        std::unique_ptr<DocumentJournal> journal;
    };

    void Start(mvDocument& document);
    bool AnyStale() const;
    void Drop(int32_t documentId, bool removeFile);
    void Wake();
    void CopyAll(std::chrono::microseconds timeEach);
    void CopyNext();
    void LookAfter();

    Timers& timers_;
    std::string folder_;
    std::string session_;
    std::function<void(TextView)> fault_;
    std::optional<JournalWriter> writer_; ///< from the first change on
    std::map<int32_t, Entry> entries_;    ///< by DocumentID
    std::unique_ptr<Timers::Timer> copying_;
    std::unique_ptr<Timers::Timer> lookingAfter_;
    Text knownFault_;
};

} // namespace nib
