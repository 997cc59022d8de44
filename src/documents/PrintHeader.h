#pragma once
#include "text/SourceContract.h"

namespace nib {

/// The draw handler of a document's view: what stands at the head of its pages.
class PrintHeader : public ISourceDraw2 {
public:
    /// Both empty for a text that is stored nowhere yet.
    virtual void SetNames(TextView filename, TextView itemId) = 0;
};

} // namespace nib
