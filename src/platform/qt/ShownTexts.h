#pragma once
// What the logic says to people, for the translators: the logic itself knows none.

#include <span>

namespace nib {

/// Captions, tips and short words.
extern const std::span<const char* const> kCaptionTexts;
/// Whole messages; %1 to %5 are names and numbers, %6 and %7 words that are looked up too, or stay as the system or a
/// host gives them, %8 is a caption, %9 a message of these lists itself. The first that fits is taken.
extern const std::span<const char* const> kMessageTexts;
/// More of them: what hosts, files and connections have to say.
extern const std::span<const char* const> kHostTexts;

} // namespace nib
