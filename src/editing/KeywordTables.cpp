#include "editing/KeywordTables.h"

#include "base/Text.h"
#include "diagnostics/Guarded.h"
#include "text/Units.h"

#include <unicode/uset.h>

#include <algorithm>
#include <limits>

namespace nib {

namespace {

constexpr size_t kUnits = 0x10000;
constexpr TextView kDefaultFirst = u"@%_";
constexpr TextView kDefaultNext = u".%_";

} // namespace

KeywordTables::KeywordTables() : classes_(kUnits), hints_(size_t{1} << kHintBits), candidates_(size_t{1} << kHintBits)
{
}

void KeywordTables::Rebuild(const KeywordList& list, TextView commentPrefixes) noexcept
{
    Clear(commentPrefixes);
    for (const KeywordList::Entry& entry : list) IgnoringErrors([&] { AddWord(entry); });
    SortComments();
    // The ends and the length of a word in another case may differ from those of the keyword: no hint can be given.
    if (wide_) std::fill(hints_.begin(), hints_.end(), uint8_t{kWhole | kSeveral | kMostWords << kWordsShift});
}

void KeywordTables::Clear(TextView commentPrefixes)
{
    using namespace unit_class;
    std::fill(classes_.begin(), classes_.end(), uint8_t{0});
    std::fill(hints_.begin(), hints_.end(), uint8_t{0});
    auto add = [this](TextView units, uint8_t bits) {
        for (char16_t c : units) classes_[c] |= bits;
    };
    add(u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", kLetter | kLabel | kFirst | kNext);
    add(u"0123456789", kDigit | kLabel | kNext);
    add(u"$._", kLabel);
    add(kDefaultFirst, kFirst | kFirstExact);
    add(kDefaultNext, kNext);
    add(u" \"'\\(),;", kSyntax);
    add(ValueMark, kSyntax);
    add(SubValueMark, kSyntax);
    add(commentPrefixes, kPrefix);
    firstChars_ = kDefaultFirst;
    nextChars_ = kDefaultNext;
    comments_.clear();
    compoundSize_ = 0;
    haveBlanks_ = false;
    wide_ = false;
}

void KeywordTables::AddWord(const KeywordList::Entry& entry)
{
    using namespace unit_class;
    if (entry.Word.empty()) return;
    AddHints(entry);
    char16_t first = entry.Word.front();
    if (!(Of(first) & (kLetter | kFirstExact))) AllowFirst(first);
    if (Of(first) & kPrefix)
        comments_.push_back(&entry);
    else
        AddFollowing(TextView(entry.Word).substr(1));
}

void KeywordTables::AllowFirst(char16_t c)
{
    using namespace unit_class;
    firstChars_ += c;
    classes_[c] |= kFirst | kFirstExact;
    if (c < 0x80) return;
    wide_ = true;
    USet* forms = uset_open(c, c);
    uset_closeOver(forms, USET_CASE_INSENSITIVE);
    for (int32_t i = 0; i < uset_size(forms); ++i) {
        UChar32 form = uset_charAt(forms, i);
        if (form >= 0 && form < static_cast<UChar32>(kUnits)) classes_[static_cast<size_t>(form)] |= kFirst;
    }
    uset_close(forms);
}

void KeywordTables::AddFollowing(TextView word)
{
    int32_t blanks = 0;
    for (char16_t c : word) {
        if (c == u' ') {
            ++blanks;
        } else if (!(Of(c) & unit_class::kNext)) {
            nextChars_ += c;
            classes_[c] |= unit_class::kNext;
            wide_ = wide_ || c >= 0x80;
        }
    }
    if (blanks == 0) return;
    haveBlanks_ = true;
    constexpr int32_t kMost = std::numeric_limits<int16_t>::max();
    compoundSize_ = std::max(compoundSize_, static_cast<int16_t>(std::min(blanks + 1, kMost)));
}

void KeywordTables::AddHints(const KeywordList::Entry& entry)
{
    TextView key = entry.key;
    size_t whole = HintIndex(key.front(), key.back(), key.size());
    hints_[whole] |= hints_[whole] & kWhole ? kSeveral : kWhole;
    candidates_[whole] = &entry;
    size_t blank = key.find(u' ', 1);
    if (blank == TextView::npos) return;
    auto words = std::min<int32_t>(static_cast<int32_t>(std::count(key.begin(), key.end(), u' ')) + 1, kMostWords);
    uint8_t& hint = hints_[HintIndex(key.front(), key[blank - 1], blank)];
    int32_t most = std::max(words, int32_t{hint >> kWordsShift});
    hint = static_cast<uint8_t>((hint & (kWhole | kSeveral)) | most << kWordsShift);
}

void KeywordTables::SortComments()
{
    std::stable_sort(comments_.begin(), comments_.end(),
                     [](const clsKeyword* a, const clsKeyword* b) { return a->Word.size() > b->Word.size(); });
}

} // namespace nib
