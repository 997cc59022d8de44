#include "platform/posix/PosixFileTransfer.h"

#include "platform/posix/FileName.h"
#include "platform/posix/SystemError.h"
#include "platform/posix/TransferText.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

int AccessError(const std::string& path, int wanted)
{
    return faccessat(AT_FDCWD, path.c_str(), wanted, AT_EACCESS) == 0 ? 0 : errno;
}

/// What would keep the file from being written, asked before anybody has made the new content.
int CheckReplaceable(const std::string& path)
{
    struct stat status {};
    if (path.empty()) return ENOENT;
    if (stat(path.c_str(), &status) == 0) return S_ISDIR(status.st_mode) ? EISDIR : AccessError(path, W_OK);
    if (errno != ENOENT) return errno;
    return AccessError(FolderOf(path), W_OK | X_OK);
}

/// Renames, but never over another file; the file system need not be able to do that in one step.
int RenameError(const std::string& from, const std::string& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    if (AccessError(to, F_OK) == 0) return EEXIST;
    return rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

} // namespace

bool PosixFileTransfer::Succeeded(int error)
{
    lastErrno_ = error;
    lastCode_ = SystemCode(error);
    return error == 0;
}

bool PosixFileTransfer::Succeeded(int error, const std::string& path)
{
    const bool folderMissing = error == ENOENT && AccessError(FolderOf(path), F_OK) != 0;
    return Succeeded(folderMissing ? ENOTDIR : error);
}

PosixFileTransfer::OpenedFile* PosixFileTransfer::Find(Handle file)
{
    const auto found = files_.find(file);
    Succeeded(found == files_.end() ? EBADF : 0);
    return found == files_.end() ? nullptr : &found->second;
}

FileTransfer::Handle PosixFileTransfer::OpenFile(TextView path, Access access)
{
    OpenedFile file;
    file.path = ToFileName(path);
    file.access = access;
    const int error = access == Access::Replace ? CheckReplaceable(file.path)
                                                : SystemErrorOf([&] { file.bytes = ReadWholeFile(file.path).Bytes(); });
    if (!Succeeded(error, file.path)) return 0;
    files_.emplace(++lastHandle_, std::move(file));
    return lastHandle_;
}

bool PosixFileTransfer::CloseFile(Handle handle)
{
    OpenedFile* file = Find(handle);
    if (!file) return false;
    OpenedFile closing = std::move(*file);
    files_.erase(handle);
    if (closing.access == Access::Read) return true;
    const int error = SystemErrorOf([&] {
        if (!closing.binary) {
            Text text(closing.bytes.size() / sizeof(char16_t), u'\0');
            std::memcpy(text.data(), closing.bytes.data(), text.size() * sizeof(char16_t));
            closing.bytes = EncodeTransfer(text, closing.encoding);
        }
        saver_.Save(closing.path, closing.bytes);
    });
    return Succeeded(error, closing.path);
}

void PosixFileTransfer::SetFileBinary(Handle handle, bool binary)
{
    if (OpenedFile* file = Find(handle)) file->binary = binary;
}

/// Text is UTF-16 on the program's side whatever the number.
void PosixFileTransfer::SetTransferCharset(Handle handle, int32_t)
{
    Find(handle);
}

void PosixFileTransfer::SetFileEncoding(Handle handle, int32_t encoding)
{
    OpenedFile* file = Find(handle);
    if (!file) return;
    const bool detect = encoding == transfer_encoding::kDetect && file->access == Access::Read;
    file->encoding = detect ? DetectEncoding(file->bytes) : encoding;
}

int32_t PosixFileTransfer::GetFileEncoding(Handle handle)
{
    const OpenedFile* file = Find(handle);
    return file ? file->encoding : 0;
}

void PosixFileTransfer::Convert(OpenedFile& file)
{
    if (file.converted || file.binary) return;
    const Text text = DecodeTransfer(file.bytes, file.encoding);
    file.bytes.resize(text.size() * sizeof(char16_t));
    std::memcpy(file.bytes.data(), text.data(), file.bytes.size());
    file.converted = true;
}

int32_t PosixFileTransfer::ReadFile(Handle handle, void* buffer, int32_t bytes)
{
    OpenedFile* file = Find(handle);
    if (!file || !Succeeded(file->access == Access::Read && bytes >= 0 ? 0 : EBADF)) return 0;
    Convert(*file);
    const size_t count = std::min(static_cast<size_t>(bytes), file->bytes.size() - file->next);
    std::memcpy(buffer, file->bytes.data() + file->next, count);
    file->next += count;
    return static_cast<int32_t>(count);
}

int32_t PosixFileTransfer::WriteFile(Handle handle, const void* buffer, int32_t bytes)
{
    OpenedFile* file = Find(handle);
    if (!file || !Succeeded(file->access == Access::Replace && bytes >= 0 ? 0 : EBADF)) return 0;
    file->bytes.append(static_cast<const char*>(buffer), static_cast<size_t>(bytes));
    return bytes;
}

bool PosixFileTransfer::FindFirstFile(TextView pattern, FindBlock& block, Text& name)
{
    FindClose(block);
    FolderScan scan;
    const int error = scan.Open(pattern);
    if (!Succeeded(error == ENOENT ? ENOTDIR : error)) return false;
    if (!scan.Next(name)) return Succeeded(ENOENT);
    block.scan = ++lastScan_;
    scans_.emplace(block.scan, std::move(scan));
    return true;
}

bool PosixFileTransfer::FindNextFile(FindBlock& block, Text& name)
{
    const auto found = scans_.find(block.scan);
    Succeeded(0);
    return found != scans_.end() && found->second.Next(name);
}

void PosixFileTransfer::FindClose(FindBlock& block)
{
    scans_.erase(block.scan);
    block.scan = 0;
}

int32_t PosixFileTransfer::FindAttributes(FindBlock& block)
{
    const auto found = scans_.find(block.scan);
    return found == scans_.end() ? -1 : found->second.Attributes();
}

bool PosixFileTransfer::DeleteFile(TextView path)
{
    const std::string name = ToFileName(path);
    return Succeeded(unlink(name.c_str()) == 0 ? 0 : errno, name);
}

bool PosixFileTransfer::RenameFile(TextView from, TextView to)
{
    const std::string name = ToFileName(from);
    return Succeeded(RenameError(name, ToFileName(to)), name);
}

bool PosixFileTransfer::CreateFolder(TextView path)
{
    const std::string name = ToFileName(path);
    return Succeeded(mkdir(name.c_str(), 0700) == 0 ? 0 : errno, name);
}

Text PosixFileTransfer::SystemMessage(int32_t code) const
{
    // Several reasons share a code; the one that was met last is the truest.
    const int error = code == lastCode_ ? lastErrno_ : ErrnoOfCode(code);
    return error == 0 ? Text() : SystemText(error);
}

} // namespace nib
