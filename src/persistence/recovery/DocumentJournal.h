#pragma once
#include "persistence/recovery/JournalFile.h"
#include "persistence/recovery/JournalWriter.h"
#include "text/SourceDocument.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace nib {

/// Follows the changes of one text and hands them to the writer. The text that the journal begins with is copied in
/// slices between events, so that nobody waits for it; what changes meanwhile in the part that is copied is kept until
/// the rest is there, and what changes in the rest is copied as it is by then.
class DocumentJournal final : public BufferListener {
public:
    /// Text and writer outlive it. It does not add itself to the text's listeners. `stale` is called when it must begin
    /// anew, from within a change of the text.
    DocumentJournal(SourceDocument& text, JournalWriter& writer, std::string name, std::function<void()> stale)
        : text_(text), writer_(writer), name_(std::move(name)), stale_(std::move(stale))
    {
    }

    const std::string& Name() const { return name_; }
    const JournalHead& Head() const { return head_; }
    /// Begins anew: with this head, and the text as it is now.
    void Begin(JournalHead head);
    /// The journal does not hold all that changed, and must begin anew.
    bool IsStale() const { return state_ == State::Stale; }
    void MakeStale()
    {
        state_ = State::Stale;
        stale_();
    }
    /// More of the text is to be copied.
    bool IsCopying() const { return state_ == State::Copying; }
    void CopySlice(std::chrono::microseconds time);
    void SetCopyName(TextView name);
    /// A file of the writer's that goes as soon as this journal is complete: it holds the same text.
    void Supersede(std::string name) { superseded_.push_back(std::move(name)); }

    void TextChanged(const TextChange& change) override;
    void TextReset() override { MakeStale(); }

private:
    enum class State { Stale, Copying, Following };

    void CopyLine(int32_t line);
    void EndPiece();
    void EndCopying();
    size_t MostChangeBytes() const;
    bool IsLarge(const TextChange& change) const;
    void Follow(std::string record);

    SourceDocument& text_;
    JournalWriter& writer_;
    std::string name_;
    std::function<void()> stale_;
    JournalHead head_;
    std::vector<std::string> superseded_;
    State state_ = State::Stale;
    int32_t copied_ = 0;  ///< lines, of the text as it is now
    std::string piece_;   ///< of the text being copied, 8 bits a unit
    std::string pending_; ///< records that stand behind the text
    size_t textBytes_ = 0;
    size_t changeBytes_ = 0;
};

} // namespace nib
