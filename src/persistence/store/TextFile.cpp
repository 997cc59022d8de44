#include "persistence/store/TextFile.h"

#include "base/Text.h"
#include "diagnostics/Guarded.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <algorithm>

#include <unistd.h>

namespace nib {

namespace {

using namespace error_number;

struct ErrorRow {
    int error;
    int32_t transfer; ///< reading and writing
    int32_t killing;  ///< deleting files
};

// Where the program has no number of its own, a transfer answers the number that file systems elsewhere have for it.
constexpr ErrorRow kErrors[] = {
    {ENOENT, kFileNotFound, kFileNotFound},
    {ENOTDIR, kPathNotFound, kPathNotFound},
    {ELOOP, kPathNotFound, kPathNotFound},
    {EMFILE, kTooManyFiles, kTooManyFiles},
    {ENFILE, kTooManyFiles, kTooManyFiles},
    {EACCES, kInvalidCall, kInvalidCall},
    {EPERM, kInvalidCall, kInvalidCall},
    {EROFS, kInvalidCall, kInvalidCall},
    {EISDIR, kInvalidCall, kInvalidCall},
    {EBADF, kBadFileName, kBadFileName},
    {ENOMEM, kOutOfMemory, kOutOfMemory},
    {ENODEV, 15, kDeviceUnavailable},
    {ENOTBLK, 15, kDeviceUnavailable},
    {ENXIO, 15, kDeviceUnavailable},
    {EXDEV, kRenameAcrossDisks, kRenameAcrossDisks},
    {EBUSY, kPermissionDenied, kPermissionDenied},
    {ETXTBSY, kPermissionDenied, kPermissionDenied},
    {EAGAIN, 33, kInvalidCall},
    {EINVAL, 87, kInvalidCall},
    {ENOSPC, kDiskFull, kDiskFull},
    {EDQUOT, kDiskFull, kDiskFull},
    {EFBIG, kDiskFull, kDiskFull},
    {ENAMETOOLONG, 123, kInvalidCall},
    {EILSEQ, 123, kInvalidCall},
    {ENOTEMPTY, 145, kPathAccess},
    {EEXIST, kFileExists, kFileExists},
};
constexpr ErrorRow kAnyOther{0, 31, kInvalidCall};

/// Whether there was no error. Unless quiet, one is thrown as the number that the column has for it.
bool Succeeded(int error, const std::string& path, int32_t ErrorRow::*column, bool quiet)
{
    if (error == 0) return true;
    // A missing file in a missing folder counts as a wrong path.
    if (error == ENOENT && !StampOf(FolderOf(path)).Exists()) error = ENOTDIR;
    if (quiet) return false;
    const auto* row = std::find_if(std::begin(kErrors), std::end(kErrors), [&](auto& r) { return r.error == error; });
    throw Error((row == std::end(kErrors) ? kAnyOther : *row).*column, SystemText(error));
}

bool IsUtf8(int32_t encoding)
{
    return encoding == file_encoding::kUtf8 || encoding == file_encoding::kUtf8Alternate;
}

bool IsUtf16(int32_t encoding)
{
    return encoding == file_encoding::kUtf16 || encoding == file_encoding::kUtf16Alternate;
}

std::string_view WithoutMark(std::string_view bytes, std::string_view mark)
{
    return bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes;
}

} // namespace

int32_t DetectEncoding(std::string_view bytes)
{
    if (bytes.starts_with(kUtf16Mark)) return file_encoding::kUtf16;
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
    return !ascii && IsValidUtf8(bytes) ? file_encoding::kUtf8 : file_encoding::kSingleByte;
}

Text DecodeText(std::string_view bytes, int32_t encoding)
{
    if (IsUtf8(encoding)) return FromUtf8(WithoutMark(bytes, kUtf8Mark));
    if (IsUtf16(encoding)) bytes = WithoutMark(bytes, kUtf16Mark);
    const size_t width = IsUtf16(encoding) || encoding == file_encoding::kBinary ? 2 : 1;
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    Text text(bytes.size() / width, u'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<char16_t>(width == 1 ? byte(i) : byte(2 * i) | byte(2 * i + 1) << 8);
    }
    return text;
}

std::string EncodeText(TextView text, int32_t encoding)
{
    if (encoding == file_encoding::kDetect && HasWideChars(text, false)) encoding = file_encoding::kUtf16;
    if (IsUtf8(encoding)) return ToUtf8(text);
    std::string bytes(IsUtf16(encoding) ? kUtf16Mark : std::string_view());
    if (!IsUtf16(encoding) && encoding != file_encoding::kBinary) {
        bytes.resize(text.size());
        std::transform(text.begin(), text.end(), bytes.data(),
                       [](char16_t c) { return c > 0xFF ? '?' : static_cast<char>(c); });
        return bytes;
    }
    bytes.resize(text.size() * 2 + bytes.size());
    char* out = bytes.data() + bytes.size() - text.size() * 2;
    for (char16_t c : text) {
        *out++ = static_cast<char>(c & 0xFF);
        *out++ = static_cast<char>(c >> 8);
    }
    return bytes;
}

Text ReadTextFile(TextView path, int32_t& encoding, bool quiet)
{
    const std::string name = ToFileName(path);
    FileContent content;
    const int error = SystemErrorOf([&] { content = ReadWholeFile(name); });
    if (!Succeeded(error, name, &ErrorRow::transfer, quiet)) return {};
    if (encoding == file_encoding::kDetect) encoding = DetectEncoding(content.Bytes());
    return DecodeText(content.Bytes(), encoding);
}

bool WriteFile(const FileSaver& saver, TextView path, const std::function<std::string()>& bytes, bool quiet)
{
    const std::string name = ToFileName(path);
    const int error = SystemErrorOf([&] { saver.Save(name, bytes()); });
    return Succeeded(error, name, &ErrorRow::transfer, quiet);
}

bool WriteTextFile(const FileSaver& saver, TextView path, TextView text, int32_t encoding, bool quiet)
{
    return WriteFile(
        saver, path, [&] { return EncodeText(text, encoding); }, quiet);
}

bool HasWideChars(TextView text, bool ignoreMarks)
{
    return std::any_of(text.begin(), text.end(), [ignoreMarks](char16_t c) {
        return c > 0xFF && !(ignoreMarks && c >= kSubValueMark && c <= kAttributeMark);
    });
}

bool CheckUnicodeFile(const FileSaver& saver, TextView path, TextView text)
{
    if (!HasWideChars(text, false)) return false;
    Text old;
    int32_t encoding = file_encoding::kSingleByte;
    const std::optional<Error> failure = FailureOf([&] { old = ReadTextFile(path, encoding, false); });
    // A file that could not be read must not be replaced by an empty one.
    if (failure && failure->number != kFileNotFound) return true;
    if (!old.starts_with(u"\u00FF\u00FE")) WriteTextFile(saver, path, old, file_encoding::kUtf16, true);
    return true;
}

bool KillFile(TextView path, bool quiet)
{
    const std::string name = ToFileName(path);
    return Succeeded(unlink(name.c_str()) == 0 ? 0 : errno, name, &ErrorRow::killing, quiet);
}

} // namespace nib
