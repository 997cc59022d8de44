#pragma once
#include "documents/clsDocView.h"

#include <memory>

namespace nib {

class mvDocument;

/// Makes the window of a document; which kind is its own choice.
class ViewFactory {
public:
    virtual ~ViewFactory() = default;
    virtual std::unique_ptr<clsDocView> CreateView(mvDocument& document) = 0;
};

} // namespace nib
