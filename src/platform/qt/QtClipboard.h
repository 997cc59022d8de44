#pragma once
#include "platform/Desktop.h"

namespace nib {

class QtClipboard : public Clipboard {
public:
    bool HasText() const override;
    Text GetText() const override;
    void SetText(TextView text) override;
    Text GetPrimary() const override;
    void SetPrimary(TextView text) override;
};

} // namespace nib
