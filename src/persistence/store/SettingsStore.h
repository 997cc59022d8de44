#pragma once
#include "base/Text.h"

namespace nib {

/// The one key path of all settings of the editor.
inline constexpr TextView kSettingsKey = u"Software\\Orlin\\MultiValue Editor\\Settings";

/// Named string values that survive between runs, all under kSettingsKey. Nothing here fails: what cannot be read is
/// the fallback, what cannot be written is forgotten.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    /// A value that is stored empty counts as absent. The empty name is a name like any other.
    virtual Text Get(TextView valueName, TextView fallback) = 0;
    /// A value equal to a non-empty `fallback` need not be kept: reading with the same one gives it back.
    virtual void Save(TextView valueName, TextView value, TextView fallback = {}) = 0;
};

/// The number that the text begins with, 0 when there is none. Decimal numbers may have a fraction and an exponent;
/// "&H80000005&" and "&O17" are numbers too. Infinite when it is beyond all bounds.
double LeadingNumber(TextView text);
/// The same as a whole number, halves going to the even one; cut to what no setting can hold.
int64_t LeadingWhole(TextView text);
/// The same, kept within 32 bits.
int32_t LeadingInt(TextView text);

} // namespace nib
