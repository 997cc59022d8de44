#pragma once
#include "base/Text.h"

namespace nib {

/// A word with its differences of case taken away, and a hash of that. ASCII words of usual length are folded in place,
/// without an allocation.
class FoldedWord {
public:
    explicit FoldedWord(TextView word);
    FoldedWord(const FoldedWord&) = delete;
    FoldedWord& operator=(const FoldedWord&) = delete;

    TextView View() const { return view_; }
    uint32_t Hash() const { return hash_; }

private:
    void FoldWide(TextView word);

    static constexpr size_t kLocal = 128;
    char16_t local_[kLocal];
    Text spill_;
    TextView view_;
    uint32_t hash_ = 0;
};

/// `word` is ASCII, `key` is folded.
bool EqualsFolded(TextView word, TextView key);

} // namespace nib
