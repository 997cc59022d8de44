#pragma once
// Copies of changed documents in a folder of the user's own. A clean end deletes this session's; what a session that no
// longer runs has left is offered at the next start.

#include "base/DynamicArray.h"
#include "base/Text.h"
#include "documents/DocumentServices.h"
#include "platform/Desktop.h"
#include "platform/posix/FileSaver.h"

#include <functional>
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

// What a recovery copy holds: the item id, a line end, and the text of the document.

/// False when it could not be written; an earlier copy is then still whole.
bool WriteAutoSaveCopy(const FileSaver& saver, TextView path, TextView itemId, TextView text);
/// The whole of the file, exactly as it was written; nothing when it cannot be read.
std::optional<Text> ReadAutoSaveCopy(TextView path);

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
