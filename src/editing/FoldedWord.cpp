#include "editing/FoldedWord.h"

#include "text/Units.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

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

} // namespace nib
