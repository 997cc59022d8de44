#pragma once
#include "base/Text.h"

namespace nib {

class SourceView;

class Printing {
public:
    virtual ~Printing() = default;
    /// Asks where to and which pages, and prints what the view holds. Tells the user of any failure itself.
    virtual void Print(SourceView& view, TextView title) = 0;
};

} // namespace nib
