#pragma once
#include "documents/mvDocument.h"
#include "shell/CommandPorts.h"

namespace nib {

class TextPrinter final : public DocumentPrinter {
public:
    void PrintText(mvDocument& document) override { document.PrintText(); }
};

} // namespace nib
