#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// What an account says about how its programs are looked at.
struct AccountRules {
    std::vector<Text> includeFiles; ///< where included items are looked for
    std::vector<Text> ignored;      ///< codes of findings

    bool Ignores(TextView code) const;
};

/// Takes what the lines "include=" and "ignore=" of the record say on top; several names stand between commas.
void ReadRules(TextView record, AccountRules& rules);
/// "A, B" as a list.
std::vector<Text> NamesIn(TextView list);

} // namespace nib
