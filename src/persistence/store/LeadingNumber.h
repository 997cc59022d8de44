#pragma once
#include "base/Text.h"

namespace nib {

/// The number that the text begins with, 0 when there is none. Decimal numbers may have a fraction and an exponent;
/// "&H80000005&" and "&O17" are numbers too. Infinite when it is beyond all bounds.
double LeadingNumber(TextView text);
/// The same as a whole number, halves going to the even one; cut to what no setting can hold.
int64_t LeadingWhole(TextView text);
/// The same, kept within 32 bits.
int32_t LeadingInt(TextView text);

} // namespace nib
