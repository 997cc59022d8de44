#pragma once
#include <span>
#include <string_view>

namespace nib {

/// The files of resources/dialects, which the build puts into the programs.
struct BuiltInDialect {
    std::string_view name;
    std::string_view text;
};
std::span<const BuiltInDialect> BuiltInDialects();

} // namespace nib
