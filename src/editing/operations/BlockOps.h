#pragma once
// What the program does with the selected lines or with a range, each as one step of undo.

#include "text/SourceView.h"

#include <optional>
#include <vector>

namespace nib {

struct MvEdit;

/// Runs of blanks on loan; each is good until the next is asked for.
class Blanks {
public:
    TextView operator()(int32_t count)
    {
        auto length = static_cast<size_t>(count);
        if (text_.size() < length) text_.resize(length, u' ');
        return TextView(text_).substr(0, length);
    }

private:
    Text text_;
};

/// What a block operation works on: the selection, put in order, or the caret's place.
struct BlockRectangle {
    Position start;
    Position end;
    Position caret;
    bool selected = false;
    bool swapped = false; ///< the user selected from the end to the start

    int32_t FirstLine() const { return start.line; }
    /// A selection that stops at the start of a line does not touch that line.
    int32_t LastLine() const { return end.col < 1 ? end.line - 1 : end.line; }

    /// Moves the places on this line that lie to the right of `column`, though never left of the line's start.
    void Shift(int32_t line, int32_t column, int32_t by);
};

/// Without a selection, a caret at the start of a line stands for the whole line.
BlockRectangle TakeBlock(const SourceView& view);
/// Tells of the change and puts the selection back, in the direction that the user gave it.
void FinishBlock(SourceDocument& document, SourceView& view, const BlockRectangle& block);

/// Moves the lines of the selection by one tab stop, to the right or to the left.
class OpIndentBlock final : public ISourceOp {
public:
    OpIndentBlock(bool indent, SourceView& view) : indent_(indent), view_(view) {}
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    struct ShortLine {
        int32_t line;
        int32_t blanks;
    };

    bool indent_;
    SourceView& view_;
    std::optional<BlockRectangle> block_; ///< as it was before
    int32_t amount_ = 0;
    std::vector<ShortLine> shortLines_; ///< those that lost fewer blanks than the amount
};

/// Puts a comment marker on the lines of the selection, or takes it off.
class OpCommentBlock final : public ISourceOp {
public:
    OpCommentBlock(bool comment, SourceView& view, const MvEdit& settings);
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    /// What a line won, or lost: a marker and blanks behind it, and nothing else. A negative count: a "!" marker went.
    struct LineChange {
        int32_t column = 0;
        int32_t count = 0;
    };

    LineChange Plan(TextView line) const;
    void Apply(LineEdits& edits, int32_t line, LineChange change, BlockRectangle& block) const;

    bool comment_;
    SourceView& view_;
    int32_t indentStar_;
    int32_t indentBang_;
    Text marker_;                         ///< as a comment puts it in, with its margin
    std::optional<BlockRectangle> block_; ///< as it was before
    std::vector<LineChange> changes_;     ///< one a line of the block
};

/// The text in its next letter case, quoted parts left alone: from mixed to upper, lower, capitals and back to upper.
/// Nothing when that changes nothing.
std::optional<Text> WithToggledCase(TextView text);

/// Turns the letter case of the selected text.
class OpToggleCase final : public ISourceOp {
public:
    explicit OpToggleCase(SourceView& view) : view_(view) {}
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    SourceView& view_;
    bool taken_ = false;
    BlockRectangle block_; ///< as it was before
    Position newEnd_;      ///< some letters have another length in another case
    Text oldText_;         ///< empty when nothing was changed
};

/// Replaces one range by a text, as one step of undo.
class OpReplace final : public ISourceOp {
public:
    OpReplace(Position start, Position end, Text replaceWith)
        : start_(start), end_(end), replaceWith_(std::move(replaceWith))
    {
    }
    void DoOp(SourceDocument& document) override;
    void UndoOp(SourceDocument& document) override;

private:
    Position start_;
    Position end_;
    Text replaceWith_;
    Position newEnd_;
    Text oldText_;
};

} // namespace nib
