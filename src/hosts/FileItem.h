#pragma once
#include "hosts/StoredText.h"
#include "hosts/mvConnect.h"

namespace nib {

/// A local file. It takes no lock.
class FileItem : public mvItem {
public:
    FileItem(TextView fileName, bool readOnly, const FileSaver& saver);

    bool Exists() override { return stored_.Exists(); }
    bool IsItem() override { return !DisplayPath().ends_with(u'/') && !stored_.IsFolder(); }
    bool ReadOnly() const override { return readOnly_ || stored_.IsProtected(); }
    void SetReadOnly(bool readOnly) override { readOnly_ = readOnly; }
    bool Supports(int32_t) override { return false; }
    mvSession* Session() override { return nullptr; }

    Text ReadItem(int32_t, int32_t, int32_t) override { return stored_.Read(); }
    void WriteItem(int32_t, int32_t, int32_t, TextView text) override { stored_.Write(text); }
    void LockItem(bool) override {}

private:
    bool readOnly_;
    StoredText stored_;
};

} // namespace nib
