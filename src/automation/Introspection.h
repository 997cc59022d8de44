#pragma once
#include "automation/MemberTables.h"

namespace nib {

/// The whole document, with the standard interfaces. `children` are names of objects below this one.
std::string IntrospectionXml(const BusInterface* interface, const std::vector<std::string>& children);

} // namespace nib
