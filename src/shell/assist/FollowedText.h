#pragma once
#include "language/Program.h"
#include "text/SourceDocument.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace nib {

/// Lines that take the place of others, ready to go to another thread: few as texts, many as a snapshot to cut them
/// from there.
struct ChangedLines {
    bool whole = false; ///< of the text; else in place of `removed` lines from `first` on
    int32_t first = 0;
    int32_t removed = 0;
    int32_t count = 0;
    std::vector<Text> texts;
    std::shared_ptr<const TextSnapshot> snapshot;

    std::vector<Text> Lines();
};

/// A line that a compiler found something wrong in.
struct CompileMark {
    int32_t line = 0;
    int32_t told = 0; ///< where it was when it was compiled
    Text message;
    Text compiled; ///< path of the item that was compiled, which may have included this one
};

/// An open text as the language service follows it: what has changed since it was last told, and its findings and
/// marks, which move with the text until others come.
class FollowedText final : public BufferListener {
public:
    /// `changed` is called from within the change. The text outlives the object.
    FollowedText(SourceDocument& text, std::function<void()> changed);
    ~FollowedText() override { text_.RemoveListener(this); }
    FollowedText(const FollowedText&) = delete;
    FollowedText& operator=(const FollowedText&) = delete;

    SourceDocument& Document() const { return text_; }
    /// Goes up with each change.
    int64_t Revision() const { return revision_; }
    /// What is to be told; nothing when all has been. The whole text the first time.
    std::optional<ChangedLines> Take();
    /// All of it the next time: it goes by another name from then on.
    void TellAll() { whole_ = true; }

    const std::vector<ProgramFinding>& Findings() const { return findings_; }
    void SetFindings(std::vector<ProgramFinding> findings) { findings_ = std::move(findings); }

    /// Ascending.
    const std::vector<CompileMark>& Marks() const { return marks_; }
    void SetMarks(std::vector<CompileMark> marks);

    void TextChanged(const TextChange& change) override;
    void TextReset() override;

private:
    struct Span {
        int32_t first;
        int32_t oldEnd; ///< of the lines as they were told
        int32_t newEnd; ///< of those that there are
    };

    void MoveMarks(const TextChange& change);

    SourceDocument& text_;
    const std::function<void()> changed_;
    std::optional<Span> span_;
    bool whole_ = true;
    int64_t revision_ = 0;
    std::vector<ProgramFinding> findings_;
    std::vector<CompileMark> marks_;
};

/// The findings to be shown of new ones: those in the line that somebody types in wait, unless they were shown there
/// before, since half a statement is not yet wrong.
struct SplitFindings {
    std::vector<ProgramFinding> shown;
    bool waits = false; ///< there are others
};
SplitFindings HoldBack(std::vector<ProgramFinding> found, const std::vector<ProgramFinding>& shown, int32_t typedLine);

} // namespace nib
