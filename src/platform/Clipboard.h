#pragma once
#include "base/Text.h"

namespace nib {

class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual bool HasText() const = 0;
    virtual Text GetText() const = 0;
    virtual void SetText(TextView text) = 0;
    /// The desktop's primary selection (middle-button paste); a desktop without one ignores it.
    virtual Text GetPrimary() const = 0;
    virtual void SetPrimary(TextView text) = 0;
};

} // namespace nib
