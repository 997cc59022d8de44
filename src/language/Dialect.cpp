#include "language/Dialect.h"

#include <algorithm>
#include <bit>

namespace nib {

namespace {

constexpr char16_t Capital(char16_t c)
{
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c;
}

uint32_t HashOf(TextView word)
{
    uint32_t hash = 2166136261U;
    for (char16_t c : word) hash = (hash ^ Capital(c)) * 16777619U;
    return hash ^ hash >> 15;
}

/// `capitals` is in capitals.
bool IsSame(TextView word, TextView capitals)
{
    return word.size() == capitals.size() && std::equal(word.begin(), word.end(), capitals.begin(),
                                                        [](char16_t a, char16_t b) { return Capital(a) == b; });
}

} // namespace

std::span<const DialectWord> Dialect::Find(TextView word) const
{
    if (slots_.empty()) return {};
    const size_t mask = slots_.size() - 1;
    for (size_t slot = HashOf(word) & mask; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const size_t first = slots_[slot] - 1U;
        if (!IsSame(word, words_[first].name)) continue;
        size_t end = first + 1;
        while (end < words_.size() && words_[end].name == words_[first].name) ++end;
        return std::span(words_).subspan(first, end - first);
    }
    return {};
}

const DialectWord* Dialect::Find(TextView word, WordKind kind) const
{
    for (const DialectWord& found : Find(word))
        if (found.kind == kind) return &found;
    return nullptr;
}

const DialectBlock* Dialect::FindBlock(TextView blockWords) const
{
    const auto at = std::find_if(blocks.begin(), blocks.end(),
                                 [&](const DialectBlock& block) { return IsSame(blockWords, block.words); });
    return at == blocks.end() ? nullptr : &*at;
}

void Dialect::SetWords(std::vector<DialectWord> words)
{
    const auto key = [](const DialectWord& word) { return std::pair(TextView(word.name), word.kind); };
    const auto before = [&](const DialectWord& a, const DialectWord& b) { return key(a) < key(b); };
    const auto same = [&](const DialectWord& a, const DialectWord& b) { return key(a) == key(b); };
    words.insert(words.end(), std::make_move_iterator(words_.begin()), std::make_move_iterator(words_.end()));
    std::stable_sort(words.begin(), words.end(), before);
    words.erase(std::unique(words.begin(), words.end(), same), words.end());
    words_ = std::move(words);

    slots_.assign(std::bit_ceil(words_.size() * 2 + 1), 0);
    for (size_t i = 0; i < words_.size(); ++i) {
        if (i > 0 && words_[i].name == words_[i - 1].name) continue;
        size_t slot = HashOf(words_[i].name) & (slots_.size() - 1);
        while (slots_[slot] != 0) slot = (slot + 1) & (slots_.size() - 1);
        slots_[slot] = static_cast<uint32_t>(i + 1);
    }
}

void Dialect::SetBlock(DialectBlock block)
{
    std::erase_if(blocks, [&](const DialectBlock& old) { return old.words == block.words; });
    blocks.push_back(std::move(block));
}

} // namespace nib
