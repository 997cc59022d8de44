#pragma once
// What is known of a program as bytes to be kept: its findings, which the rules of a later day may not share, and what
// folds are left out.

#include "language/Program.h"

#include <string>
#include <string_view>

namespace nib {

std::string BytesOf(const ProgramFacts& program);
/// Throws Error for bytes that are not whole.
ProgramFacts ProgramOf(std::string_view bytes);

/// Names with their places, as many items of an account are looked through by.
std::string BytesOf(const std::vector<OutlineEntry>& outline);
std::vector<OutlineEntry> OutlineOf(std::string_view bytes);

} // namespace nib
