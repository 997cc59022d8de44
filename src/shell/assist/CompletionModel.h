#pragma once
#include "language/service/LanguageService.h"
#include "text/SourceView.h"

#include <optional>

namespace nib {

/// When words are suggested for what is being typed, which one is chosen, and what becomes of the text. Knows no screen
/// and asks nobody: whoever holds it brings the answers.
class CompletionModel {
public:
    explicit CompletionModel(SourceView& view) : view_(view) {}

    /// Whether a list is to be asked for, the user having typed (`automatic`) or asked for it.
    bool Wants(bool automatic, bool allowed);
    /// An answer for the caret as it was when it was asked; true when there is a list to be shown.
    bool Take(Completions completions, Position askedAt);
    /// The word that would close the block above the caret's line.
    bool TakeCloser(const Text& closer, Position askedAt);
    void Close();

    bool IsOpen() const { return open_; }
    const std::vector<Completion>& Items() const { return completions_.best; }
    /// -1: none, so that Return goes into the text.
    int32_t Chosen() const { return chosen_; }
    void Choose(int32_t item);
    void Step(int32_t by);
    /// Whether the key of a list is taken by it: Return only where something is chosen.
    bool TakesReturn() const { return open_ && chosen_ >= 0; }
    /// Where the list hangs: the start of the word.
    Position Start() const { return completions_.replaces.start; }
    /// Puts the chosen one in, or the first where none is; an undo step of its own.
    void Accept();

private:
    Text WordBeforeCaret() const;
    bool InWords();
    void InsertCloser(const Text& closer);

    SourceView& view_;
    Completions completions_;
    int32_t chosen_ = -1;
    bool open_ = false;
    bool automatic_ = false;
};

} // namespace nib
