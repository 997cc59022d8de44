#include "persistence/store/modFileReadWrite.h"

#include "base/Error.h"
#include "base/Text.h"
#include "persistence/store/modGetSystemMessageText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <utility>

namespace nib {

namespace {

namespace te = transfer_encoding;
using namespace error_number;

constexpr int32_t kUtf16Transfer = 2;
constexpr int32_t kBlock = 2048;

struct ErrorRow {
    int32_t code;
    int32_t number;
};

// Reading and writing. Everything else is the caller's default.
constexpr ErrorRow kTransferErrors[] = {
    {1, kInvalidCall},       {2, kFileNotFound}, {3, kPathNotFound}, {4, kTooManyFiles},
    {5, kInvalidCall},       {6, kBadFileName},  {8, kOutOfMemory},  {17, kRenameAcrossDisks},
    {32, kPermissionDenied}, {80, kFileExists},  {112, kDiskFull},   {183, kFileExists},
};

// Deleting files and making folders. Everything else is an invalid call.
constexpr ErrorRow kFolderErrors[] = {
    {2, kFileNotFound},       {3, kPathNotFound}, {4, kTooManyFiles},       {6, kBadFileName},       {8, kOutOfMemory},
    {15, kDeviceUnavailable}, {16, kPathAccess},  {17, kRenameAcrossDisks}, {32, kPermissionDenied}, {80, kFileExists},
    {112, kDiskFull},         {145, kPathAccess}, {183, kFileExists},
};

struct EncodingRow {
    int32_t code;
    int32_t reading;
    int32_t writing;
};

constexpr EncodingRow kEncodings[] = {
    {file_encoding::kSingleByte, te::kSingleByte, te::kSingleByte},
    {file_encoding::kUtf8, te::kUtf8, te::kUtf8},
    {file_encoding::kUtf16, te::kUtf16, te::kUtf16},
    {4, te::kUtf8, te::kUtf8Alternate},
    {5, te::kUtf16, te::kUtf16Alternate},
};

int32_t MapError(std::span<const ErrorRow> table, int32_t code, int32_t otherwise)
{
    for (const ErrorRow& row : table)
        if (row.code == code) return row.number;
    return otherwise;
}

EncodingRow FindEncoding(int32_t code)
{
    for (const EncodingRow& row : kEncodings)
        if (row.code == code) return row;
    return {code, te::kSingleByte, te::kSingleByte};
}

int32_t ReadEncoding(int32_t code)
{
    return code == file_encoding::kDetect ? te::kDetect : FindEncoding(code).reading;
}

int32_t WriteEncoding(int32_t code, TextView text)
{
    if (code != file_encoding::kDetect) return FindEncoding(code).writing;
    return HasWideChars(text, false) ? te::kUtf16 : te::kSingleByte;
}

int32_t FoundEncoding(int32_t transfer)
{
    if (transfer == te::kUtf16) return file_encoding::kUtf16;
    return transfer == te::kUtf8 ? file_encoding::kUtf8 : file_encoding::kSingleByte;
}

/// A file that is open for one call and closed on every way out.
class TransferFile {
public:
    TransferFile(FileTransfer& files, TextView path, FileTransfer::Access access)
        : files_(files), handle_(files.OpenFile(path, access))
    {
    }
    TransferFile(const TransferFile&) = delete;
    TransferFile& operator=(const TransferFile&) = delete;
    ~TransferFile() { Close(); }

    explicit operator bool() const { return handle_ != 0; }
    FileTransfer::Handle Handle() const { return handle_; }
    bool Close() { return handle_ == 0 || files_.CloseFile(std::exchange(handle_, 0)); }
    void SetEncoding(int32_t encoding)
    {
        files_.SetFileEncoding(handle_, encoding);
        files_.SetTransferCharset(handle_, kUtf16Transfer);
    }

private:
    FileTransfer& files_;
    FileTransfer::Handle handle_;
};

/// Closes the file and, unless quiet, throws what the last system error stands for.
void Fail(const FileTransfer& files, TransferFile& file, bool quiet)
{
    const int32_t code = files.LastError();
    const Text text = quiet ? Text() : GetSystemMessageText(files, code);
    file.Close();
    const int32_t number = MapError(kTransferErrors, code, code);
    if (!quiet && number != 0) throw Error(number, text);
}

bool Done(const FileTransfer& files, bool succeeded, bool quiet)
{
    if (succeeded || quiet) return succeeded;
    const int32_t code = files.LastError();
    throw Error(MapError(kFolderErrors, code, kInvalidCall), GetSystemMessageText(files, code));
}

} // namespace

Text ReadTextFile(FileTransfer& files, TextView path, int32_t& encoding, bool quiet)
{
    TransferFile file(files, path, FileTransfer::Access::Read);
    Text text;
    if (file) {
        if (encoding == file_encoding::kBinary) {
            files.SetFileBinary(file.Handle(), true);
        } else {
            file.SetEncoding(ReadEncoding(encoding));
        }
        std::array<char16_t, kBlock / 2> block{};
        for (;;) {
            block.fill(0);
            const int32_t n = std::min(files.ReadFile(file.Handle(), block.data(), kBlock), kBlock);
            if (n <= 0) break;
            text.append(block.data(), static_cast<size_t>(n + 1) / 2);
        }
        if (files.LastError() == 0) {
            if (encoding == file_encoding::kDetect) encoding = FoundEncoding(files.GetFileEncoding(file.Handle()));
            return text;
        }
    }
    Fail(files, file, quiet);
    return {};
}

bool WriteTextFile(FileTransfer& files, TextView path, TextView text, int32_t encoding, bool quiet)
{
    TransferFile file(files, path, FileTransfer::Access::Replace);
    if (file) {
        if (encoding == file_encoding::kBinary) {
            files.SetFileBinary(file.Handle(), true);
        } else {
            file.SetEncoding(WriteEncoding(encoding, text));
        }
        const auto length = static_cast<int32_t>(text.size() * sizeof(char16_t));
        const int32_t written = files.WriteFile(file.Handle(), text.data(), length);
        // What was written reaches the disk when the file is closed.
        if ((written != 0 || files.LastError() == 0) && file.Close()) return written == length;
    }
    Fail(files, file, quiet);
    return false;
}

bool HasWideChars(TextView text, bool ignoreMarks)
{
    return std::any_of(text.begin(), text.end(), [ignoreMarks](char16_t c) {
        return c > 0xFF && !(ignoreMarks && c >= kSubValueMark && c <= kAttributeMark);
    });
}

bool KillFile(FileTransfer& files, TextView path, bool quiet)
{
    return Done(files, files.DeleteFile(path), quiet);
}

bool MakeFolder(FileTransfer& files, TextView path, bool quiet)
{
    return Done(files, files.CreateFolder(path), quiet);
}

} // namespace nib
