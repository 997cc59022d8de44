#include "editing/clsKeywords.h"

#include "base/Text.h"
#include "diagnostics/Guarded.h"
#include "editing/BlockStyles.h"
#include "text/Units.h"

#include <unicode/uset.h>

#include <algorithm>
#include <limits>

namespace nib {

namespace {

constexpr size_t kUnits = 0x10000;
constexpr TextView kDefaultFirst = u"@%_";
constexpr TextView kDefaultNext = u".%_";

constexpr TextView kLineEnd = u"\r\n";
constexpr TextView kFixedPrefixes = u"*!";
constexpr TextView kSuffixes = u"+-=[]";

struct ReservedWord {
    TextView word;
    int32_t block;
};
constexpr ReservedWord kReservedWords[] = {
    {u"IF", 0},
    {u"THEN", block::kThen},
    {u"ELSE", block::kElse},
    {u"LOCKED", block::kLocked},
    {u"BEGIN", block::kBegin},
    {u"END", block::kEnd},
    {u"CASE", block::kCase},
    {u"FOR", block::kFor},
    {u"NEXT", block::kNext},
    {u"DO", 0},
    {u"LOOP", block::kLoop},
    {u"UNTIL", block::kUntilWhile},
    {u"WHILE", block::kUntilWhile},
    {u"REPEAT", block::kRepeat},
    {u"GO", 0},
    {u"GOTO", 0},
    {u"GOSUB", 0},
};
constexpr TextView kLanguageWords = u"IF THEN ELSE END LOCKED BEGIN CASE GO GOTO GOSUB TO SUB SUBROUTINE CALL LOOP "
                                    u"UNTIL WHILE DO REPEAT FOR NEXT STEP INCLUDE";

struct BadCharacter {
    char16_t unit;
    TextView name;
};
constexpr BadCharacter kBadCharacters[] = {
    {u'(', u"parentheses"}, {u')', u"parentheses"}, {u',', u"comma"}, {u';', u"semicolon"}};

/// The word in front of its suffix.
TextView WithoutSuffix(TextView field)
{
    if (!field.empty() && kSuffixes.find(field.back()) != TextView::npos) field.remove_suffix(1);
    return field;
}

void CheckList(int32_t listClass, TextView delim)
{
    if (delim.empty() || (listClass != keyword_class::kLanguage && listClass != keyword_class::kUser))
        throw Error(error_number::kSubscript, u"Subscript out of range");
}

/// Takes a word out of a class; false when no class is left.
bool LeaveClass(clsKeyword& keyword, int32_t Class)
{
    int32_t left = keyword.Class & ~Class;
    if (left == 0) return false;
    keyword.Class = left;
    if (left == keyword_class::kReserved) keyword.Block &= ~(block::kUserBegin | block::kUserEnd | block::kUserMiddle);
    return true;
}

} // namespace

KeywordTables::KeywordTables() : classes_(kUnits), hints_(size_t{1} << kHintBits), candidates_(size_t{1} << kHintBits)
{
}

void KeywordTables::Rebuild(const KeywordList& list, TextView commentPrefixes, const LexRules* rules) noexcept
{
    Clear(commentPrefixes);
    for (const KeywordList::Entry& entry : list) IgnoringErrors([&] { AddWord(entry); });
    if (rules) {
        for (const KeywordList::Entry& entry : rules->blockWords)
            if (!list.Find(entry.Word)) IgnoringErrors([&] { AddWord(entry); });
        AddRules(*rules);
    }
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

void KeywordTables::AddRules(const LexRules& rules)
{
    using namespace unit_class;
    const auto add = [this](TextView units, uint8_t bits) {
        for (char16_t c : units) classes_[c] |= bits;
    };
    add(rules.inNames, kNext | kLabel);
    add(rules.comments, kPrefix);
    add(rules.beginNames, kFirst);
    for (char16_t c : rules.beginNames) classes_[c] &= static_cast<uint8_t>(~kFirstExact);
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

clsKeywords::clsKeywords() : prefixes_(kFixedPrefixes)
{
    for (const ReservedWord& row : kReservedWords) AddKeyword(row.word, keyword_class::kReserved, row.block);
    SetKeywordList(keyword_class::kLanguage, u" ", kLanguageWords);
    SetKeywordList(keyword_class::kUser, u" ", u"");
}

const clsKeyword* clsKeywords::Item(TextView Key) const
{
    return Spelled(list_.Find(Key), Key);
}

const clsKeyword* clsKeywords::Item(TextView Key, uint8_t hint) const
{
    if (!(hint & KeywordTables::kWhole)) return nullptr;
    if (hint & KeywordTables::kSeveral) {
        const clsKeyword* found = Item(Key);
        return found || !rules_ ? found : Spelled(rules_->blockWords.Find(Key), Key);
    }
    const KeywordList::Entry& entry = Tables().Candidate(Key);
    if (caseSensitive_) return entry.Word == Key ? &entry : nullptr;
    return EqualsFolded(Key, entry.key) ? &entry : nullptr;
}

clsKeyword* clsKeywords::Add(clsKeyword NewItem)
{
    clsKeyword* added = list_.Append(std::move(NewItem));
    if (added) dirty_ = true;
    return added;
}

void clsKeywords::Remove(TextView Key)
{
    if (list_.Remove(Key)) dirty_ = true;
}

clsKeyword* clsKeywords::AddKeyword(TextView Word, int32_t Class, int32_t Block)
{
    clsKeyword* held = Item(Word);
    if (!held) return Add({Text(Word), Block, Class});
    held->Class |= Class;
    if (!(held->Class & keyword_class::kReserved)) held->Block = Block;
    return held;
}

void clsKeywords::RemoveKeyword(TextView Word, int32_t Class)
{
    clsKeyword* held = Item(Word);
    if (held && !LeaveClass(*held, Class)) Remove(Word);
}

void clsKeywords::ClearClass(int32_t Class)
{
    if (list_.RemoveUnless([Class](clsKeyword& keyword) { return LeaveClass(keyword, Class); })) dirty_ = true;
}

void clsKeywords::SetKeywordList(int32_t Class, TextView delim, TextView KeywordList)
{
    CheckList(Class, delim);
    ClearClass(Class);
    while (!KeywordList.empty()) {
        size_t end = KeywordList.find(delim);
        // One field that fails never loses the others.
        IgnoringErrors([&] { ReadField(Class, Trim(KeywordList.substr(0, end))); });
        if (end == TextView::npos) break;
        KeywordList.remove_prefix(end + delim.size());
    }
}

void clsKeywords::ReadField(int32_t Class, TextView field)
{
    if (field.empty()) return;
    if (field.front() == u';') {
        Text remark = ToLower(field);
        if (remark.find(u"case sensitive") != Text::npos)
            SetCaseSensitive(true);
        else if (remark.find(u"case insensitive") != Text::npos)
            SetCaseSensitive(false);
        return;
    }
    Text clean;
    Text badChar;
    if (!ValidateKeyword(field, clean, badChar)) return;
    AddKeyword(WithoutSuffix(field), Class, BlockOfSuffix(field.back()));
}

Text clsKeywords::GetKeywordList(int32_t Class, TextView delim) const
{
    CheckList(Class, delim);
    Text words;
    bool first = true;
    for (const clsKeyword& keyword : list_) {
        if (!(keyword.Class & Class)) continue;
        if (!std::exchange(first, false)) words += delim;
        words.append(keyword.Word).append(keyword.Suffix());
    }
    return words;
}

clsKeywords clsKeywords::Clone() const
{
    clsKeywords copy;
    copy.SetCaseSensitive(caseSensitive_);
    copy.SetCommentPrefixes(CommentPrefixes());
    copy.SetRules(rules_);
    for (int32_t listClass : {keyword_class::kLanguage, keyword_class::kUser})
        copy.SetKeywordList(listClass, kLineEnd, GetKeywordList(listClass, kLineEnd));
    return copy;
}

bool clsKeywords::ValidateKeyword(TextView Keyword, Text& Clean, Text& BadChar) const
{
    Clean.clear();
    BadChar.clear();
    TextView word = WithoutSuffix(Keyword);
    if (word.empty()) return false;
    if (IsCommentPrefix(word.front())) return true;
    bool met[std::size(kBadCharacters)] = {};
    bool valid = true;
    for (char16_t c : word) {
        auto bad = std::find_if(std::begin(kBadCharacters), std::end(kBadCharacters),
                                [c](const BadCharacter& row) { return row.unit == c; });
        if (bad == std::end(kBadCharacters)) {
            Clean += c;
        } else if (!std::exchange(met[bad - std::begin(kBadCharacters)], true)) {
            valid = false;
            BadChar = bad->name;
        }
    }
    return valid;
}

Text clsKeywords::CommentPrefixes() const
{
    Text list;
    for (char16_t c : prefixes_) {
        if (!list.empty()) list += u',';
        list += c;
    }
    return list;
}

void clsKeywords::SetCommentPrefixes(TextView prefixes)
{
    prefixes_ = kFixedPrefixes;
    for (const Text& field : Split(prefixes, u',')) {
        TextView prefix = Trim(field);
        if (prefix.size() != 1 || kFixedPrefixes.find(prefix[0]) != TextView::npos) continue;
        if (!units::IsLetter(prefix[0]) && !units::IsDigit(prefix[0])) prefixes_ += prefix;
    }
    dirty_ = true;
}

void clsKeywords::Rebuild() const
{
    tables_.Rebuild(list_, prefixes_, rules_);
    dirty_ = false;
}

} // namespace nib
