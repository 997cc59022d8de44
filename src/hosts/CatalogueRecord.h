#pragma once
#include "base/Text.h"

#include <functional>
#include <optional>

namespace nib {

/// A program as messages and the catalogue name it.
struct ProgramName {
    Text file; ///< empty when it is not told
    Text item;

    friend bool operator==(const ProgramName&, const ProgramName&) = default;
};

/// Of what was translated: an item of "BP.OUT" is a program of "BP". A name without a folder is an item.
ProgramName ProgramOfObject(TextView path);
/// The program that a record of VOC names, given by its attributes: "V", a type such as "CS", and the path of what was
/// translated, or the file and the item.
std::optional<ProgramName> CataloguedProgram(const std::function<Text(int32_t attribute)>& record);

} // namespace nib
