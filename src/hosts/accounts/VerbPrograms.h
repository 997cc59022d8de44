#pragma once
#include "platform/MessageBoxes.h"

namespace nib {

/// What the programs of verbs run with.
struct VerbPrograms {
    VerbPrograms() = default;
    // A folder alone will do.
    VerbPrograms(Text programFolder, WaitNotice* waitNotice = nullptr) // NOLINT(google-explicit-constructor)
        : folder(std::move(programFolder)), notice(waitNotice)
    {
    }

    Text folder;                  ///< its programs are found before all others
    WaitNotice* notice = nullptr; ///< outlives all sessions
};

} // namespace nib
