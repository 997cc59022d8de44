#pragma once
#include "automation/Member.h"

namespace nib {

struct BusInterface {
    const char* name;
    std::span<const Member> members;
};

/// In the order in which they are published. Both dispatch and introspection read them.
const BusInterface& ApplicationInterface();
const BusInterface& DocumentsInterface();
const BusInterface& DocumentInterface();

} // namespace nib
