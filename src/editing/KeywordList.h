#pragma once
// Words in the order of their insertion, keyed without regard to case. Adding, finding and removing cost the same in
// ten words and in a million, and a word keeps its address until it is removed.

#include "editing/FoldedWord.h"
#include "editing/clsKeyword.h"

#include <list>
#include <utility>
#include <vector>

namespace nib {

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
