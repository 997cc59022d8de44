#pragma once
// Plain files with text conversion, below the documents: what the settings files and the recovery folder are read and
// written with. A handle is 0 on failure; the reason is LastError() of the same object.

#include "base/Text.h"

namespace nib {

/// Encodings of a transfer.
namespace transfer_encoding {
inline constexpr int32_t kDetect = -1;
inline constexpr int32_t kSingleByte = 1;
inline constexpr int32_t kUtf16 = 2; ///< little endian, begins with FF FE
inline constexpr int32_t kUtf8 = 3;
inline constexpr int32_t kUtf16Alternate = 130;
inline constexpr int32_t kUtf8Alternate = 131;
} // namespace transfer_encoding

/// File attributes as the masks of a scan name them.
namespace file_attribute {
inline constexpr int32_t kReadOnly = 1;
inline constexpr int32_t kHidden = 2;
inline constexpr int32_t kSystem = 4;
inline constexpr int32_t kFolder = 16;
inline constexpr int32_t kArchive = 32;
inline constexpr int32_t kNormal = 128;
} // namespace file_attribute

class FileTransfer {
public:
    using Handle = int32_t;
    enum class Access { Read, Replace };

    virtual ~FileTransfer() = default;
    virtual Handle OpenFile(TextView path, Access access) = 0;
    /// False when what was written could not be brought to disk; the old file is then still whole.
    virtual bool CloseFile(Handle file) = 0;
    virtual void SetFileBinary(Handle file, bool binary) = 0;
    virtual void SetTransferCharset(Handle file, int32_t charset) = 0;
    virtual void SetFileEncoding(Handle file, int32_t encoding) = 0;
    /// The encoding set, or after a read with kDetect the one found.
    virtual int32_t GetFileEncoding(Handle file) = 0;
    /// Binary: raw bytes. Otherwise UTF-16 units, two bytes each. Answers the bytes delivered, 0 at the end and on
    /// failure.
    virtual int32_t ReadFile(Handle file, void* buffer, int32_t bytes) = 0;
    virtual int32_t WriteFile(Handle file, const void* buffer, int32_t bytes) = 0;

    /// A scan: names that match the last part of `pattern` ("*" and "?"), one scan per block at a time.
    struct FindBlock {
        intptr_t scan = 0;
    };
    /// False when nothing matches.
    virtual bool FindFirstFile(TextView pattern, FindBlock& block, Text& name) = 0;
    virtual bool FindNextFile(FindBlock& block, Text& name) = 0;
    virtual void FindClose(FindBlock& block) = 0;
    /// Attributes of the present entry, -1 when unknown.
    virtual int32_t FindAttributes(FindBlock& block) = 0;

    virtual bool DeleteFile(TextView path) = 0;
    /// Within one folder. False when there is a file of the new name already, which stays as it is.
    virtual bool RenameFile(TextView from, TextView to) = 0;
    virtual bool CreateFolder(TextView path) = 0;

    /// The last failure as one of the system error codes of the error tables, 0 when there was none.
    virtual int32_t LastError() const = 0;
    /// The system's own text for one of those codes; empty when it has none.
    virtual Text SystemMessage(int32_t code) const = 0;
};

} // namespace nib
