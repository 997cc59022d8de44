#pragma once
#include "base/Text.h"

namespace nib {

/// Copies the account folder to the accounts' root under its own name, unless an account of that name is there. True
/// when it was copied. It appears whole or not at all.
bool InstallSampleAccount(TextView sourceFolder, TextView accountsRoot);

} // namespace nib
