#pragma once
#include "base/Text.h"

#include <optional>
#include <string>

namespace nib {

/// A character set by name: UTF-8, ISO-8859-1, or any of ICU's that keeps ASCII as it is and has no state.
class Charset {
public:
    enum class Kind : uint8_t { Utf8, Latin1, Named };

    /// Latin-1.
    Charset() = default;
    /// Throws Error for a name that is not known or not based on ASCII.
    explicit Charset(TextView name);

    Kind GetKind() const { return kind_; }
    Text Name() const { return name_; }
    /// Only for kind Named: no answer when the bytes do not come back as they were.
    std::optional<Text> Decode(std::string_view bytes) const;
    /// Only for kind Named: no answer when it cannot hold all of the text.
    std::optional<std::string> Encode(TextView text) const;

private:
    Kind kind_ = Kind::Latin1;
    Text name_ = u"ISO-8859-1";
};

} // namespace nib
