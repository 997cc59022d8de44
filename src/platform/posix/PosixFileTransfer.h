#pragma once
#include "platform/FileTransfer.h"
#include "platform/posix/FileSaver.h"
#include "platform/posix/FolderScan.h"

#include <map>

namespace nib {

/// A file is read whole when it is opened and written whole, by the one saver, when it is closed.
class PosixFileTransfer : public FileTransfer {
public:
    explicit PosixFileTransfer(FileSaver saver) : saver_(std::move(saver)) {}

    Handle OpenFile(TextView path, Access access) override;
    bool CloseFile(Handle file) override;
    void SetFileBinary(Handle file, bool binary) override;
    void SetTransferCharset(Handle file, int32_t charset) override;
    void SetFileEncoding(Handle file, int32_t encoding) override;
    int32_t GetFileEncoding(Handle file) override;
    int32_t ReadFile(Handle file, void* buffer, int32_t bytes) override;
    int32_t WriteFile(Handle file, const void* buffer, int32_t bytes) override;

    bool FindFirstFile(TextView pattern, FindBlock& block, Text& name) override;
    bool FindNextFile(FindBlock& block, Text& name) override;
    void FindClose(FindBlock& block) override;
    int32_t FindAttributes(FindBlock& block) override;

    bool DeleteFile(TextView path) override;
    bool RenameFile(TextView from, TextView to) override;
    bool CreateFolder(TextView path) override;

    int32_t LastError() const override { return lastCode_; }
    Text SystemMessage(int32_t code) const override;

private:
    struct OpenedFile {
        std::string path;
        Access access = Access::Read;
        bool binary = false;
        int32_t encoding = 1;
        bool converted = false; ///< `bytes` holds what ReadFile delivers, not what the file does
        std::string bytes;
        size_t next = 0;
    };

    OpenedFile* Find(Handle file);
    void Convert(OpenedFile& file);
    /// Keeps the error, 0 for success, and answers whether it was one.
    bool Succeeded(int error);
    /// The same; a missing file in a missing folder counts as a wrong path.
    bool Succeeded(int error, const std::string& path);

    FileSaver saver_;
    std::map<Handle, OpenedFile> files_;
    std::map<intptr_t, FolderScan> scans_;
    Handle lastHandle_ = 0;
    intptr_t lastScan_ = 0;
    int lastErrno_ = 0;
    int32_t lastCode_ = 0;
};

} // namespace nib
