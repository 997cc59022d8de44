#pragma once
// Where the caret has been, across documents: what the commands Back and Forward walk through.

#include "platform/Clock.h"

#include <array>
#include <optional>

namespace nib {

class mvDocument;
struct DocumentServices;

/// One ring of positions for the process. A position is a document, a line that is found again after edits, and a
/// column; positions of closed documents and deleted lines are passed over when they are met.
class NavigationHistory {
public:
    static constexpr int32_t kCapacity = 100;

    /// Both outlive it.
    NavigationHistory(DocumentServices& services, const Clock& clock);

    /// Remembers the caret of `document`, which may be null. Throttled calls record at most once a second.
    bool RecordPosition(mvDocument* document, bool throttled);
    /// `document` is the active one; false when there was nowhere to go.
    bool NavigateBack(mvDocument* document);
    bool NavigateForward(mvDocument* document);
    bool CanNavigateBack() const { return backCount_ >= 1; }
    bool CanNavigateForward() const { return forwardCount_ >= 1; }

private:
    struct Record {
        int32_t documentId = 0;
        int32_t lineMarker = -1;
        int32_t column = 0;
    };

    std::optional<Record> Capture(mvDocument& document) const;
    bool Visit(const Record& record);
    void Store(const Record& record);
    bool StepBack();
    bool StepForward();
    bool MayRecordNow();

    DocumentServices& services_;
    const Clock& clock_;
    std::array<Record, kCapacity> ring_{};
    int32_t head_ = 0; ///< the slot to write next
    int32_t backCount_ = 0;
    int32_t forwardSlot_ = 0; ///< the slot of the last step
    int32_t forwardCount_ = 0;
    bool replaying_ = false;
    int64_t lastRecordMs_ = 0; ///< 0: the next throttled call records
};

} // namespace nib
