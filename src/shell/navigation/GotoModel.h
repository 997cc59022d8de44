#pragma once
#include "base/Text.h"

#include <memory>
#include <vector>

namespace nib {

class mvDocument;
struct DocumentServices;

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
