#pragma once
#include "search/HitLights.h"

#include <QString>

class QLabel;

namespace nib {

/// What a label says of a search as it is typed: how many hits there are, or what is wrong.
void ShowHits(QLabel& label, const FindDialog& dialog, const HitCount& count);

/// What is wrong with an expression, in the user's language.
QString Told(const PatternFault& fault);

} // namespace nib
