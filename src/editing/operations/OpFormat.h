#pragma once
#include "editing/operations/Blanks.h"
#include "editing/operations/FormatLine.h"
#include "text/SourceView.h"

#include <functional>
#include <vector>

namespace nib {

/// Lays out a whole document by its blocks. The lines are looked at once; what was found is kept, so that a redo gives
/// the same text whatever the settings are by then.
class OpFormat final : public ISourceOp {
public:
    using ShowWait = std::function<void(bool)>;

    OpFormat(SourceView& view, const MvEdit& settings, ShowWait showWait);
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    struct LineEdit {
        int32_t line;
        BlankEdit blanks;
    };

    void DoFormat(SourceDocument& document);
    void Apply(SourceDocument& document, const LineEdit& edit);
    void TakeBack(SourceDocument& document, const LineEdit& edit);
    template <typename Body>
    void Run(SourceDocument& document, Body&& body);

    SourceView& view_;
    FormatRules rules_;
    ShowWait showWait_;
    bool laidOut_ = false;
    std::vector<LineEdit> edits_; ///< of the lines that change, in their order
    Blanks blanks_;
};

} // namespace nib
