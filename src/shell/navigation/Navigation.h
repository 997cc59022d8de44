#pragma once
// Where the caret has been, across documents, and where it is to go: what Back, Forward and Goto walk through.

#include "base/Text.h"
#include "platform/Desktop.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

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

/// What the go-to dialog knows and does: jumps to a label or a line of the active document.
class GotoModel {
public:
    /// Takes the choice between label and line from the settings. The services outlive the model.
    explicit GotoModel(DocumentServices& services);

    /// A showing begins: stores the target and gathers the labels of the active document.
    void Begin(TextView target);
    /// OK: jumps. False when that failed, which the user has been told.
    bool Accept(TextView label, TextView lineNumber);

    const Text& Target() const { return target_; }
    const std::vector<Text>& Labels() const { return labels_; }
    /// Lines of the active document; 0 when there is none.
    int32_t LineCount() const;
    bool ByLine() const { return byLine_; }
    void ChooseLine(bool byLine) { byLine_ = byLine; }
    bool NoGotoDialog() const;
    void SetNoGotoDialog(bool on);

private:
    std::shared_ptr<mvDocument> ActiveDocument() const;
    void GetLabels();

    DocumentServices& services_;
    Text target_;
    std::vector<Text> labels_;
    bool byLine_;
    bool settingSeen_; ///< the setting that byLine_ was last taken from
};

} // namespace nib
