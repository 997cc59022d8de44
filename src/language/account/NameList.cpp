#include "language/account/NameList.h"

#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

constexpr int32_t kLetter = 16;    ///< each that fits
constexpr int32_t kWordStart = 24; ///< behind a dot, a blank, at the beginning
constexpr int32_t kRun = 12;       ///< next to the one before
constexpr int32_t kFirst = 20;     ///< the first letters of both
constexpr int32_t kWhole = 200;
constexpr int32_t kItemBonus = 12; ///< items before names in them

constexpr char16_t Capital(char16_t c)
{
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c;
}

bool IsWordStart(TextView name, size_t at)
{
    if (at == 0) return true;
    const char16_t before = name[at - 1];
    if (TextView(u".-_$ /").find(before) != TextView::npos) return true;
    return before >= u'a' && before <= u'z' && name[at] >= u'A' && name[at] <= u'Z';
}

} // namespace

int32_t FitOf(TextView query, TextView name)
{
    // Greedy from the left, but a letter that begins a word is worth waiting for while the rest still fits.
    int32_t score = 0;
    size_t at = 0;
    bool run = false;
    for (size_t i = 0; i < query.size(); ++i) {
        size_t found = TextView::npos;
        for (size_t k = at; k < name.size(); ++k) {
            if (Capital(name[k]) != query[i]) continue;
            if (found == TextView::npos) found = k;
            if (run && k == at) break;
            if (IsWordStart(name, k)) {
                // Taking the later place must leave room for what follows.
                size_t rest = k + 1;
                size_t left = i + 1;
                while (left < query.size() && rest < name.size()) left += Capital(name[rest++]) == query[left] ? 1 : 0;
                if (left == query.size()) found = k;
                break;
            }
        }
        if (found == TextView::npos) return 0;
        score += kLetter + (IsWordStart(name, found) ? kWordStart : 0) + (i > 0 && found == at ? kRun : 0);
        if (found == i) score += i == 0 ? kFirst : 2;
        run = true;
        at = found + 1;
    }
    if (query.size() == name.size()) score += kWhole;
    return std::max(1, score - static_cast<int32_t>(std::min<size_t>(name.size() - query.size(), 10)));
}

void NameList::Set(const ItemName& item, const std::vector<OutlineEntry>& outline)
{
    Names& names = items_[item];
    names = {};
    for (const OutlineEntry& entry : outline) {
        const bool isRoutine = entry.kind == SymbolKind::Subroutine || entry.kind == SymbolKind::Function;
        names.rows.push_back({static_cast<uint32_t>(names.text.size()), static_cast<uint32_t>(entry.name.size()),
                              entry.kind, isRoutine && entry.level == 0, entry.at});
        names.text += entry.name;
    }
    names.text.shrink_to_fit();
    names.rows.shrink_to_fit();
}

std::vector<NameList::Hit> NameList::Find(TextView query, size_t most) const
{
    const bool within = query.starts_with(u'@');
    Text letters;
    for (char16_t c : ToUpper(query.substr(within ? 1 : 0)))
        if (c != u' ') letters.push_back(c);

    struct Candidate {
        int32_t score;
        const ItemName* item;
        const Names* names;
        const Row* row; ///< null: the item
    };
    std::vector<Candidate> found;
    for (const auto& [item, names] : items_) {
        const int32_t fit = within ? 0 : letters.empty() ? 1 : FitOf(letters, item.item);
        if (fit > 0) found.push_back({fit + kItemBonus, &item, &names, nullptr});
        for (const Row& row : names.rows) {
            const TextView name = TextView(names.text).substr(row.start, row.length);
            const int32_t score = letters.empty() ? (within ? 1 : 0) : FitOf(letters, name);
            // A subroutine that is called like its item is that.
            if (score > 0 && row.kind != SymbolKind::Program && name != item.item)
                found.push_back({score, &item, &names, &row});
        }
    }
    const auto better = [](const Candidate& a, const Candidate& b) {
        if (a.score != b.score) return a.score > b.score;
        if (*a.item != *b.item) return *a.item < *b.item;
        return a.row < b.row;
    };
    const size_t count = std::min(most, found.size());
    std::partial_sort(found.begin(), found.begin() + static_cast<ptrdiff_t>(count), found.end(), better);
    std::vector<Hit> hits;
    for (size_t i = 0; i < count; ++i) {
        const auto& [score, item, names, row] = found[i];
        if (row)
            hits.push_back({*item, names->text.substr(row->start, row->length), row->kind, row->at, score});
        else
            hits.push_back({*item, item->item, SymbolKind::Program, {}, score});
    }
    return hits;
}

} // namespace nib
