#include "hosts/picker/TypedNames.h"

#include <algorithm>

namespace nib {

namespace {

constexpr char16_t kQuote = u'"';

/// Cuts the first name off a list that does not begin with a blank.
TextView TakeName(TextView& list)
{
    const bool quoted = list.front() == kQuote;
    if (quoted) list.remove_prefix(1);
    const size_t end = std::min(list.find(quoted ? kQuote : u' '), list.size());
    const TextView name = list.substr(0, end);
    list.remove_prefix(std::min(end + 1, list.size()));
    return name;
}

} // namespace

std::vector<Text> SplitTypedNames(TextView typed, bool several)
{
    TextView rest = Trim(typed);
    std::vector<Text> names;
    const bool wrapped = rest.size() > 2 && rest.front() == kQuote && rest.find(kQuote, 1) == rest.size() - 1;
    if (wrapped) {
        names.emplace_back(rest.substr(1, rest.size() - 2));
    } else if (!several || !rest.starts_with(kQuote)) {
        if (!rest.empty()) names.emplace_back(rest);
    } else {
        for (; !rest.empty(); rest = Trim(rest)) {
            if (const TextView name = TakeName(rest); !name.empty()) names.emplace_back(name);
        }
    }
    return names;
}

Text JoinTypedNames(const std::vector<Text>& names)
{
    if (names.size() == 1) return names.front();
    Text joined;
    for (const Text& name : names) {
        if (!joined.empty()) joined += u' ';
        joined += kQuote + name + kQuote;
    }
    return joined;
}

} // namespace nib
