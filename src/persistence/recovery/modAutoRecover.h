#pragma once
// Copies of changed documents in a folder of the user's own. A clean end deletes this session's; what a session that no
// longer runs has left is offered at the next start.

#include "base/DynamicArray.h"
#include "documents/DocumentServices.h"
#include "platform/Desktop.h"
#include "platform/posix/FileSaver.h"

#include <functional>

namespace nib {

/// What is referred to outlives the object that gets it.
struct AutoRecoverPorts {
    DocumentServices& documents;
    FileSaver saver; ///< makes new files for the user alone
    SessionToken& token;
    Text localData; ///< the user's data folder on this machine
    /// Offers the files of these names.
    std::function<void(TextView folder, const DynamicArray& names)> showDialog;
};

/// Nothing here ever reports a failure to the user: work goes on without the copy.
class modAutoRecover {
public:
    explicit modAutoRecover(AutoRecoverPorts ports) : ports_(std::move(ports)) {}

    /// False when there is no folder, or none can be made, or the session has no number.
    bool FindAutoRecoverFolder(bool create);
    /// True when at least one copy was written.
    bool AutoSaveDocuments();
    void CheckAutoRecover();
    /// Those of this session, or all.
    void DeleteAutoSaveFiles(bool all);
    /// Makes the file one of this session's, so that it goes with them.
    void AdoptAutoSaveFile(TextView name);
    void EndAutoSaveSession();
    /// Copies what has changed before control goes to where it may not come back from; until the release the copies
    /// outlast even a clean end. Answers the guard's number, 0 when there was nothing to guard.
    int32_t HoldAutoSaveGuard();
    /// Only the last guard given out can be released.
    void ReleaseAutoSaveGuard(int32_t generation);

    /// Empty until it is found.
    const Text& AutoRecoverFolder() const { return AutoRecoverFolder_; }
    const AutoRecoverPorts& Ports() const { return ports_; }

private:
    bool EnsureSession(const Text& folder);
    Text PathOf(TextView name) const { return AutoRecoverFolder_ + u"/" + Text(name); }
    bool SaveDocument(mvDocument& document);
    Text NameFor(const mvDocument& document);
    bool IsTaken(const mvDocument& document, TextView name);
    bool IsOrphan(TextView name);
    bool AutoRecover() const { return ports_.documents.settings.AutoRecover; }

    AutoRecoverPorts ports_;
    Text AutoRecoverFolder_;
    uint32_t session_ = 0;
    int32_t guardGeneration_ = 0;
    bool guardHeld_ = false;
};

} // namespace nib
