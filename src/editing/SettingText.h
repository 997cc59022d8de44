#pragma once
// Settings are stored as texts; these are the rules for what the texts mean.

#include "base/Text.h"

#include <optional>

namespace nib {

/// The number that the text begins with, 0 when there is none. Decimal numbers may have a fraction and an exponent;
/// "&H80000005&" and "&O17" are numbers too. Infinite when it is beyond all bounds.
double LeadingNumber(TextView text);
/// The same as a whole number, halves going to the even one; cut to what no setting can hold.
int64_t LeadingWhole(TextView text);

/// "True" and "False" in any case, or a number; nothing when it is another word.
std::optional<bool> WordToBoolean(TextView text);
TextView BooleanWord(bool state);

} // namespace nib
