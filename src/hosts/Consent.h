#pragma once
#include "persistence/store/SettingsStore.h"
#include "platform/MessageBoxes.h"

#include <initializer_list>

namespace nib {

/// Asks a question of Yes and No, once for what `parts` name together. What was agreed to is kept in `setting`.
bool Consents(SettingsStore& store, MessageBoxes& boxes, TextView setting, std::initializer_list<TextView> parts,
              const Text& question);

} // namespace nib
