#pragma once
// Between the values of the automation model and those of Qt's bus library.

#include "automation/BusValue.h"

#include <QVariant>

namespace nib {

/// A variant gives what is in it; a whole number of any width counts as one if it fits. What no member takes is
/// nothing.
BusValue FromBus(const QVariant& value);
/// Throws where the value cannot cross: text with a null character, or more of it than a message holds.
QVariant ToBus(const BusValue& value);
/// Never throws: what cannot cross is replaced.
QString ToBusMessage(TextView text);

} // namespace nib
