#pragma once
// Single values of ini files. A key with an empty value counts as absent. An alternate file is asked for what the file
// lacks; empty means that there is none.

#include "persistence/store/ProfileDisk.h"

namespace nib {

/// At most 4095 characters.
Text ProfileGetString(const ProfileDisk& disk, TextView section, TextView key, TextView fallback, TextView file,
                      TextView alternateFile = {});
/// The leading number of the value.
int32_t ProfileGetInt(const ProfileDisk& disk, TextView section, TextView key, int32_t fallback, TextView file,
                      TextView alternateFile = {});
/// Keeps only what departs from the alternate file, or without one from the fallback; else the key goes. Failures are
/// forgotten.
void ProfileWriteString(const ProfileDisk& disk, TextView section, TextView key, TextView value, TextView fallback,
                        TextView file, TextView alternateFile = {});

} // namespace nib
