#include "editing/KeywordList.h"

#include "editing/BlockStyles.h"
#include "text/Units.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstring>

namespace nib {

namespace {

/// Folds ASCII units from `word` to `out`; false when there is any other.
bool FoldAsciiTo(char16_t* out, TextView word)
{
    size_t i = 0;
    for (; i + 4 <= word.size(); i += 4) {
        uint64_t four = units::Load4(word.data() + i);
        if (!units::IsAscii4(four)) return false;
        four = units::FoldAscii4(four);
        std::memcpy(out + i, &four, sizeof four);
    }
    for (; i < word.size(); ++i) {
        if (word[i] >= 0x80) return false;
        out[i] = units::FoldAscii(word[i]);
    }
    return true;
}

uint32_t HashOf(TextView word)
{
    constexpr uint64_t kMix = 0x9E3779B97F4A7C15ULL;
    uint64_t hash = word.size();
    size_t i = 0;
    auto add = [&](uint64_t four) {
        hash = (hash ^ four) * kMix;
        hash ^= hash >> 29;
    };
    for (; i + 4 <= word.size(); i += 4) add(units::Load4(word.data() + i));
    uint64_t rest = 0;
    for (; i < word.size(); ++i) rest = rest << 16 | word[i];
    add(rest);
    return static_cast<uint32_t>(hash >> 32 ^ hash);
}

bool Same(TextView a, TextView b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

} // namespace

bool EqualsFolded(TextView word, TextView key)
{
    if (word.size() != key.size()) return false;
    size_t i = 0;
    for (; i + 4 <= key.size(); i += 4)
        if (units::FoldAscii4(units::Load4(word.data() + i)) != units::Load4(key.data() + i)) return false;
    for (; i < key.size(); ++i)
        if (units::FoldAscii(word[i]) != key[i]) return false;
    return true;
}

FoldedWord::FoldedWord(TextView word)
{
    char16_t* out = local_;
    if (word.size() > kLocal) {
        spill_.resize(word.size());
        out = spill_.data();
    }
    if (FoldAsciiTo(out, word))
        view_ = {out, word.size()};
    else
        FoldWide(word);
    hash_ = HashOf(view_);
}

void FoldedWord::FoldWide(TextView word)
{
    Text upper = ToUpper(word);
    auto size = static_cast<int32_t>(upper.size());
    for (int attempt = 0; attempt < 2; ++attempt) {
        UErrorCode status = U_ZERO_ERROR;
        spill_.resize(static_cast<size_t>(size));
        size = u_strFoldCase(spill_.data(), size, upper.data(), static_cast<int32_t>(upper.size()), U_FOLD_CASE_DEFAULT,
                             &status);
        if (status != U_BUFFER_OVERFLOW_ERROR) break;
    }
    spill_.resize(static_cast<size_t>(size));
    view_ = spill_;
}

int16_t clsKeyword::BlockStyle() const
{
    const BlockStyleRow* row = FindBlockStyle(Block);
    return row ? row->style : block_style::kNone;
}

TextView clsKeyword::Suffix() const
{
    const BlockStyleRow* row = FindBlockStyle(Block);
    return row ? TextView(&row->suffix, 1) : TextView();
}

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
