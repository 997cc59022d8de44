#include "language/WordTable.h"

#include <algorithm>

namespace nib {

namespace {

struct KeyRow {
    TextView word;
    BasicKey key;
};

constexpr KeyRow kKeys[] = {
    {u"IF", BasicKey::If},
    {u"THEN", BasicKey::Then},
    {u"ELSE", BasicKey::Else},
    {u"LOCKED", BasicKey::Locked},
    {u"ON", BasicKey::On},
    {u"ERROR", BasicKey::Error},
    {u"BEGIN", BasicKey::Begin},
    {u"CASE", BasicKey::Case},
    {u"END", BasicKey::End},
    {u"FOR", BasicKey::For},
    {u"NEXT", BasicKey::Next},
    {u"LOOP", BasicKey::Loop},
    {u"REPEAT", BasicKey::Repeat},
    {u"WHILE", BasicKey::While},
    {u"UNTIL", BasicKey::Until},
    {u"DO", BasicKey::Do},
    {u"RETURN", BasicKey::Return},
    {u"STOP", BasicKey::Return},
    {u"REM", BasicKey::Remark},
    {u"REMARK", BasicKey::Remark},
    {u"INCLUDE", BasicKey::Include},
    {u"SUBROUTINE", BasicKey::Routine},
    {u"SUB", BasicKey::Routine},
    {u"FUNCTION", BasicKey::Routine},
    {u"PROGRAM", BasicKey::Routine},
    {u"LOCAL", BasicKey::Nested},
    {u"PUBLIC", BasicKey::Nested},
    {u"PRIVATE", BasicKey::Nested},
    {u"CLASS", BasicKey::Nested},
    {u"TRANSACTION", BasicKey::Transaction},
    {u"WORK", BasicKey::Transaction},
    {u"AND", BasicKey::Operator},
    {u"OR", BasicKey::Operator},
    {u"NOT", BasicKey::Operator},
    {u"EQ", BasicKey::Operator},
    {u"NE", BasicKey::Operator},
    {u"LT", BasicKey::Operator},
    {u"GT", BasicKey::Operator},
    {u"LE", BasicKey::Operator},
    {u"GE", BasicKey::Operator},
    {u"CAT", BasicKey::Operator},
    {u"MATCH", BasicKey::Operator},
    {u"MATCHES", BasicKey::Operator},
    {u"TO", BasicKey::Operator},
    {u"PRINT", BasicKey::Print},
    {u"CRT", BasicKey::Print},
    {u"DISPLAY", BasicKey::Print},
};

/// What a dialect may have beside them.
constexpr KeyRow kBlockKeys[] = {{u"TRY", BasicKey::Try}, {u"CATCH", BasicKey::Catch}};

constexpr size_t kFirstSlots = 1024;

constexpr char16_t Capital(char16_t c)
{
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c;
}

uint64_t HashOf(TextView word)
{
    uint64_t hash = word.size();
    for (char16_t c : word) hash = (hash ^ Capital(c)) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 29);
}

} // namespace

bool IsWord(TextView word, TextView capitals)
{
    return std::ranges::equal(word, capitals, {}, Capital);
}

WordTable::WordTable(const Dialect* dialect) : dialect_(dialect), slots_(kFirstSlots)
{
    words_.reserve(kFirstSlots / 2);
    const auto facts = [this](TextView word) -> WordFacts& {
        return words_[static_cast<size_t>(NumberOf(word))].facts;
    };
    for (const KeyRow& row : kKeys) facts(row.word).key = row.key;
    for (const StatementForm& form : StatementForms()) facts(form.word).form = &form;
    for (const KeyRow& row : kBlockKeys)
        if (dialect_ && dialect_->FindBlock(row.word)) facts(row.word).key = row.key;
}

int32_t WordTable::Slot(TextView word, uint64_t hash) const
{
    const size_t mask = slots_.size() - 1;
    size_t slot = hash & mask;
    for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const Word& other = words_[static_cast<size_t>(slots_[slot] - 1)];
        if (other.hash == hash && IsWord(word, other.text)) break;
    }
    return static_cast<int32_t>(slot);
}

int32_t WordTable::Find(TextView word) const
{
    return slots_[static_cast<size_t>(Slot(word, HashOf(word)))] - 1;
}

int32_t WordTable::NumberOf(TextView word)
{
    const uint64_t hash = HashOf(word);
    int32_t& slot = slots_[static_cast<size_t>(Slot(word, hash))];
    if (slot != 0) return slot - 1;
    const int32_t number = Size();
    slot = number + 1;
    words_.push_back({Text(word), hash, {}});
    Word& added = words_.back();
    std::ranges::transform(added.text, added.text.begin(), Capital);
    if (dialect_) {
        added.facts.called = dialect_->Find(added.text, WordKind::Function);
        added.facts.function = added.facts.called != nullptr;
        added.facts.statement = dialect_->Find(added.text, WordKind::Statement) != nullptr;
        added.facts.clause = dialect_->Find(added.text, WordKind::Clause) != nullptr;
    }
    if (words_.size() * 2 > slots_.size()) Grow();
    return number;
}

void WordTable::Grow()
{
    slots_.assign(slots_.size() * 2, 0);
    for (size_t i = 0; i < words_.size(); ++i)
        slots_[static_cast<size_t>(Slot(words_[i].text, words_[i].hash))] = static_cast<int32_t>(i) + 1;
}

} // namespace nib
