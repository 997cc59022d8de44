#pragma once
#include "hosts/StoredText.h"
#include "hosts/mvConnect.h"

namespace nib {

/// A local file. It takes no lock.
class FileItem : public mvItem {
public:
    FileItem(TextView fileName, bool readOnly, const FileSaver& saver);

    Text Path() const override;
    Text Provider() const override { return u"file"; }
    Text ServerName() const override { return {}; }
    Text Database() const override { return {}; }
    Text Folder() const override { return FileName(); }
    Text ItemID() const override;
    Text ItemName() const override { return ItemID(); }
    Text HostName() const override { return {}; }
    Text Account() const override { return {}; }
    Text FileName() const override;
    Text DisplayPath() const override { return name_; }

    bool Exists() override { return stored_.Exists(); }
    bool IsItem() override;
    bool ReadOnly() const override { return readOnly_ || stored_.IsProtected(); }
    void SetReadOnly(bool readOnly) override { readOnly_ = readOnly; }
    bool Supports(int32_t) override { return false; }

    Text ReadItem(int32_t attribute, int32_t value, int32_t subValue) override;
    void WriteItem(int32_t attribute, int32_t value, int32_t subValue, TextView text) override;
    void Commit() override {}
    void LockItem(bool) override {}
    void Close() override {}
    mvSession* Session() override { return nullptr; }

private:
    Text name_;
    bool readOnly_;
    StoredText stored_;
};

} // namespace nib
