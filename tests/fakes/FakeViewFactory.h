#pragma once
#include "base/Error.h"
#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "fakes/FakeDocView.h"

#include <optional>

namespace nib::test {

class FakeViewFactory {
public:
    FakeViewFactory(FakeMainWindow& window, Clipboard& clipboard) : window_(window), clipboard_(clipboard) {}

    std::unique_ptr<clsDocView> operator()(mvDocument& document)
    {
        if (failure) throw Error(*failure);
        return std::make_unique<FakeDocView>(window_, clipboard_, document.DocumentID());
    }

    std::optional<Error> failure;

private:
    FakeMainWindow& window_;
    Clipboard& clipboard_;
};

} // namespace nib::test
