#pragma once
// What crosses the bus, as the automation model sees it: the few types that its members use.

#include "base/Text.h"

#include <string>
#include <variant>
#include <vector>

namespace nib {

struct ObjectPath {
    std::string path;
    bool operator==(const ObjectPath&) const = default;
};

using ObjectPaths = std::vector<ObjectPath>;

/// monostate: nothing, or something that no member takes.
using BusValue = std::variant<std::monostate, bool, int32_t, Text, ObjectPath, ObjectPaths>;

/// D-Bus signatures of the alternatives above, in their order.
inline constexpr const char* kBusSignatures[] = {"", "b", "i", "s", "o", "ao"};

inline const char* SignatureOf(const BusValue& value)
{
    return kBusSignatures[value.index()];
}

} // namespace nib
