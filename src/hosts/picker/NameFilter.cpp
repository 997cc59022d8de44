#include "hosts/picker/NameFilter.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kWildcards{u"*?"};

void AppendFolded(Text& out, TextView text)
{
    const size_t start = out.size();
    if (std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; })) {
        out.append(text);
        for (size_t i = start; i < out.size(); ++i) {
            if (out[i] >= u'A' && out[i] <= u'Z') out[i] = static_cast<char16_t>(out[i] + 32);
        }
        return;
    }
    // Folding makes a unit three units at most.
    out.resize(start + text.size() * 3);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = u_strFoldCase(out.data() + start, static_cast<int32_t>(text.size() * 3), text.data(),
                                         static_cast<int32_t>(text.size()), U_FOLD_CASE_DEFAULT, &status);
    out.resize(start + static_cast<size_t>(length));
}

bool MatchesWildcards(TextView name, TextView pattern)
{
    size_t at = 0;
    size_t p = 0;
    size_t star = TextView::npos;
    size_t resume = 0;
    while (at < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            resume = at;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[at])) {
            ++p;
            ++at;
        } else if (star != TextView::npos) {
            p = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == TextView::npos;
}

} // namespace

void NameFilter::Clear()
{
    names_.clear();
    ends_.assign(1, 0);
}

void NameFilter::Add(TextView name)
{
    AppendFolded(names_, name);
    ends_.push_back(names_.size());
}

NameFilter::Pattern NameFilter::Prepare(TextView pattern)
{
    Pattern prepared;
    AppendFolded(prepared.literal, pattern);
    const Text& literal = prepared.literal;
    if (literal.find_first_of(kWildcards) == Text::npos) return prepared;
    const bool tied = literal.starts_with(u'*') || literal.ends_with(u'*');
    prepared.wild = tied ? literal : u'*' + literal + u'*';
    return prepared;
}

bool NameFilter::Matches(int32_t number, const Pattern& pattern) const
{
    if (pattern.literal.empty()) return true;
    const auto i = static_cast<size_t>(number);
    const TextView name = TextView(names_).substr(ends_[i], ends_[i + 1] - ends_[i]);
    // Item ids may hold a "*" of their own, so the literal reading counts too.
    if (name.find(pattern.literal) != TextView::npos) return true;
    return !pattern.wild.empty() && MatchesWildcards(name, pattern.wild);
}

} // namespace nib
