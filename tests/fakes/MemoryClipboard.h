#pragma once
#include "platform/Desktop.h"

namespace nib {

struct MemoryClipboard final : Clipboard {
    Text text;
    Text primary;
    bool HasText() const override { return !text.empty(); }
    Text GetText() const override { return text; }
    void SetText(TextView value) override { text = value; }
    Text GetPrimary() const override { return primary; }
    void SetPrimary(TextView value) override { primary = value; }
};

} // namespace nib
