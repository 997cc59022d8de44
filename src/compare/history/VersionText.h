#pragma once
// A text as a version holds it: UTF-8 with a line feed behind each line, so that other programs show what differs.

#include "base/LinewiseText.h"

#include <string>
#include <string_view>

namespace nib {

/// Half of a pair, which is no character, becomes three bytes that are no UTF-8: nothing of a text is lost.
std::string VersionBytes(const LinewiseText& text);
/// CR LF between lines.
Text VersionText(std::string_view bytes);

} // namespace nib
