#pragma once
// Names of recovery copies: the session's number in 8 hexadecimal digits, a point and a running number.

#include "base/Text.h"

#include <optional>

namespace nib {

/// Running numbers go from 1 to this.
inline constexpr int32_t kLastAutoSaveNumber = 32767;

Text SessionDigits(uint32_t session);
/// At least three digits of the running number.
Text AutoSaveName(uint32_t session, int32_t number);
/// What stands in front of the first point, or all of a name without one, read as a hexadecimal number as far as it is
/// one: 0 for a name that begins otherwise, nothing for a number that no session can have.
std::optional<uint32_t> SessionOfName(TextView name);

} // namespace nib
