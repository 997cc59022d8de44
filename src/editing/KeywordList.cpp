#include "editing/KeywordList.h"

#include <cstring>

namespace nib {

namespace {

bool Same(TextView a, TextView b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

} // namespace

size_t KeywordList::FindSlot(uint32_t hash, TextView key) const
{
    size_t mask = slots_.size() - 1;
    size_t i = hash & mask;
    while (slots_[i].used && !(slots_[i].hash == hash && Same(slots_[i].entry->key, key))) i = (i + 1) & mask;
    return i;
}

const clsKeyword* KeywordList::Find(TextView word) const
{
    if (slots_.empty()) return nullptr;
    FoldedWord folded(word);
    const Slot& slot = slots_[FindSlot(folded.Hash(), folded.View())];
    return slot.used ? &*slot.entry : nullptr;
}

clsKeyword* KeywordList::Append(clsKeyword keyword)
{
    if ((entries_.size() + 1) * 2 > slots_.size()) Grow();
    FoldedWord word(keyword.Word);
    Slot& slot = slots_[FindSlot(word.Hash(), word.View())];
    if (slot.used) return nullptr;
    Text key(word.View());
    entries_.push_back({std::move(keyword), std::move(key), word.Hash()});
    slot = {word.Hash(), true, std::prev(entries_.end())};
    return &entries_.back();
}

bool KeywordList::Remove(TextView word)
{
    if (slots_.empty()) return false;
    FoldedWord folded(word);
    size_t slot = FindSlot(folded.Hash(), folded.View());
    if (!slots_[slot].used) return false;
    Erase(slot);
    return true;
}

void KeywordList::Grow()
{
    constexpr size_t kSmallest = 64;
    slots_.assign(slots_.empty() ? kSmallest : slots_.size() * 2, {});
    size_t mask = slots_.size() - 1;
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
        size_t i = entry->hash & mask;
        while (slots_[i].used) i = (i + 1) & mask;
        slots_[i] = {entry->hash, true, entry};
    }
}

void KeywordList::Erase(size_t slot)
{
    entries_.erase(slots_[slot].entry);
    // What was pushed past this slot moves up, so that no probe ends too early.
    size_t mask = slots_.size() - 1;
    for (size_t i = (slot + 1) & mask; slots_[i].used; i = (i + 1) & mask) {
        size_t home = slots_[i].hash & mask;
        if (((i - home) & mask) < ((i - slot) & mask)) continue;
        slots_[slot] = slots_[i];
        slot = i;
    }
    slots_[slot] = {};
}

} // namespace nib
