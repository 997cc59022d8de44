#pragma once
// The formatter. What a line does to the nesting is read from the flags that the lexer left on it; of its text only the
// blanks and the label at its front are looked at.

#include "editing/operations/BlockOps.h"

#include <functional>
#include <vector>

namespace nib {

struct FormatRules {
    explicit FormatRules(const MvEdit& settings);

    int32_t tabSize;
    int32_t margin;
    int32_t indentStar;
    int32_t indentBang;
    int32_t indentUserComment;
};

/// Blanks that go and come when a line is laid out.
struct BlankEdit {
    int32_t leading = 0;  ///< removed in front of the label
    int32_t label = 0;    ///< length of the label with its ":"
    int32_t delta = 0;    ///< added behind the label or at the front; negative: removed
    int32_t trailing = 0; ///< removed at the end

    bool IsEmpty() const { return leading == 0 && delta == 0 && trailing == 0; }
};

BlankEdit LayOutLine(TextView line, uint32_t lineFlags, int32_t level, const FormatRules& rules);

/// Lays out lines from the first on.
class FormatWalk {
public:
    explicit FormatWalk(const FormatRules& rules) : rules_(rules) {}
    BlankEdit Next(TextView line, uint32_t lineFlags);

private:
    const FormatRules& rules_;
    int32_t level_ = 0;
    int32_t shift_ = 0; ///< by which the first line of the statement has moved
};

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
    /// Of a line of this length.
    void Apply(LineEdits& edits, const LineEdit& edit, int32_t length);
    void TakeBack(LineEdits& edits, const LineEdit& edit, int32_t length);
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
