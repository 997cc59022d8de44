#pragma once
// What the logic says to people, for the translators: the logic itself knows none.

#include <span>

namespace nib {

/// Captions, tips and short words.
extern const std::span<const char* const> kCaptionTexts;
/// Whole messages; %1 to %7 are names and numbers, %8 is a caption, %9 a message of this list itself.
extern const std::span<const char* const> kMessageTexts;

} // namespace nib
