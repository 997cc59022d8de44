#include "language/account/AccountRules.h"

#include <algorithm>

namespace nib {

bool AccountRules::Ignores(TextView code) const
{
    return std::any_of(ignored.begin(), ignored.end(), [&](const Text& one) { return EqualsNoCase(one, code); });
}

std::vector<Text> NamesIn(TextView list)
{
    std::vector<Text> names;
    for (const Text& part : Split(list, u','))
        if (const TextView name = Trim(part); !name.empty()) names.emplace_back(name);
    return names;
}

void ReadRules(TextView record, AccountRules& rules)
{
    const struct {
        TextView key;
        std::vector<Text>& names;
    } kRows[] = {{u"include=", rules.includeFiles}, {u"ignore=", rules.ignored}};
    for (const Text& whole : Split(record, u'\n')) {
        const TextView line = Trim(TextView(whole).substr(0, whole.find(u'\r')));
        for (const auto& row : kRows) {
            if (!StartsWithNoCase(line, row.key)) continue;
            for (Text& name : NamesIn(line.substr(row.key.size()))) row.names.push_back(std::move(name));
        }
    }
}

} // namespace nib
