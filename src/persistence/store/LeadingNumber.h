#pragma once
#include "base/Text.h"

namespace nib {

/// The number that `text` begins with, after blanks: sign, digits, fraction and exponent. 0 when there is none.
double LeadingNumber(TextView text);
/// The same, rounded to an integer (a half to the even one) and kept within 32 bits.
int32_t LeadingInt(TextView text);

} // namespace nib
