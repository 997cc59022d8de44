#pragma once
#include "base/Text.h"

#include <memory>
#include <string_view>
#include <variant>

namespace nib {

/// A text in the bytes that it was read in, for whoever keeps it in them and so need not copy it. Its lines end in
/// CR LF, LF or CR; a byte below 0x80 is the character of that number.
struct ByteText {
    std::shared_ptr<void> owner; ///< of the bytes, which may be written to
    char* data = nullptr;
    size_t size = 0;
    /// The units of a piece of a line, never more than it has bytes; answers where they end.
    char16_t* (*widen)(std::string_view piece, char16_t* out) = nullptr;

    std::string_view Bytes() const { return {data, size}; }
};

using ReadText = std::variant<Text, ByteText>;

} // namespace nib
