#pragma once
// What is said of programs, in the user's language.

#include "language/FindingCodes.h"

#include <QString>

namespace nib {

Text ShownText(const Phrase& phrase);
QString Shown(const Phrase& phrase);
/// The line that tells what a kind of findings is about.
QString ShownHelp(const FindingKind& kind);

} // namespace nib
