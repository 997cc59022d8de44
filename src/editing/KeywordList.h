#pragma once
// Keywords, and lists of them that are searched without regard to case.

#include "base/Text.h"

#include <list>
#include <utility>
#include <vector>

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

/// The lists that a word may stand in, bits of `clsKeyword::Class`.
namespace keyword_class {
inline constexpr int32_t kReserved = 1;
inline constexpr int32_t kLanguage = 2;
inline constexpr int32_t kUser = 4;
} // namespace keyword_class

/// One word of the language or of the user.
class clsKeyword {
public:
    Text Word;         ///< in the user's own case, without suffix; blanks join a compound
    int32_t Block = 0; ///< one bit of kBlockStyles, or 0
    int32_t Class = 0; ///< bits of keyword_class

    /// 0 none, 1 begins a block, 2 ends one, 3 its middle.
    int16_t BlockStyle() const;
    /// The character that stands behind the word in a keyword list, empty without a style.
    TextView Suffix() const;
    clsKeyword Clone() const { return *this; }
};

/// Words in the order of their insertion, keyed without regard to case. Adding, finding and removing cost the same in
/// ten words and in a million, and a word keeps its address until it is removed.
class KeywordList {
public:
    struct Entry : clsKeyword {
        Text key; ///< the folded word
        uint32_t hash = 0;
    };
    using Entries = std::list<Entry>;
    using const_iterator = Entries::const_iterator;

    size_t Count() const { return entries_.size(); }
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }

    const clsKeyword* Find(TextView word) const;
    clsKeyword* Find(TextView word) { return const_cast<clsKeyword*>(std::as_const(*this).Find(word)); }
    /// Null when the list holds the word already, in whatever case.
    clsKeyword* Append(clsKeyword keyword);
    bool Remove(TextView word);
    /// Removes the words for which `keep`, which may change them, answers false.
    template <typename Keep>
    bool RemoveUnless(Keep&& keep)
    {
        size_t before = entries_.size();
        for (auto at = entries_.begin(); at != entries_.end();) {
            auto entry = at++;
            if (!keep(static_cast<clsKeyword&>(*entry))) Erase(SlotOf(*entry));
        }
        return entries_.size() != before;
    }

private:
    struct Slot {
        uint32_t hash = 0;
        bool used = false;
        Entries::iterator entry;
    };

    /// The slot of a word, or the free one where it would go; there must be slots.
    size_t FindSlot(uint32_t hash, TextView key) const;
    size_t SlotOf(const Entry& entry) const { return FindSlot(entry.hash, entry.key); }
    void Grow();
    void Erase(size_t slot);

    Entries entries_;
    std::vector<Slot> slots_; ///< open addressing; the size is a power of two, at most half is used
};

} // namespace nib
