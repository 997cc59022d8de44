#pragma once
// Between the values of the automation model and those of Qt's bus library.

#include "automation/Application.h"

#include <QVariant>

namespace nib {

/// A variant gives what is in it; a whole number of any width counts as one if it fits. What no member takes is
/// nothing.
BusValue FromBus(const QVariant& value);
QVariant ToBus(const BusValue& value);
/// Null characters go and halves of surrogate pairs are replaced: they would cost the connection.
QString ToBusString(TextView text);

} // namespace nib
