#include "hosts/StoredText.h"

#include "base/Error.h"
#include "platform/posix/FileName.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

bool IsDenied(const std::string& path, int access)
{
    return faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) != 0 &&
           (errno == EACCES || errno == EPERM || errno == EROFS);
}

ItemNames NamesOf(TextView fileName)
{
    const std::string name = ToFileName(fileName);
    const Text id = FromFileName(LastPart(name));
    return {{Text(kFileProvider), {}, {}, FromFileName(FolderOf(name)), id},
            ComposeFilePath(fileName),
            id,
            {},
            Text(fileName)};
}

} // namespace

bool StoredText::Exists()
{
    const FileStamp stamp = StampOf(path_);
    if (!known_) known_ = stamp;
    return stamp.Exists();
}

bool StoredText::IsFolder() const
{
    return nib::IsFolder(path_);
}

bool StoredText::IsProtected() const
{
    if (StampOf(path_).Exists()) return IsDenied(path_, W_OK);
    return IsDenied(FolderOf(path_), W_OK | X_OK);
}

Text StoredText::Read()
{
    const FileContent content = ReadWholeFile(path_);
    Text text = coding_.Decode(content.Bytes(), form_, name_);
    known_ = content.stamp;
    return text;
}

void StoredText::Write(TextView text)
{
    const std::string bytes = coding_.Encode(text, form_, name_);
    CheckUnchanged();
    known_ = saver_.Save(path_, bytes);
}

void StoredText::CheckUnchanged()
{
    FileStamp now;
    if (int error = ReadStamp(path_, now); error != 0)
        throw SystemFailure(FromFileName(path_) + u" cannot be saved", error);
    const std::optional<FileStamp> known = std::exchange(known_, now);
    if (!known || !now.Exists() || now == *known) return;
    throw Error(error_number::kStorage, name_ + (known->Exists() ? u" was changed" : u" was created") +
                                            u" by another program since it was opened. Save it again to replace it.");
}

FileItem::FileItem(TextView fileName, bool readOnly, const FileSaver& saver)
    : mvItem(NamesOf(fileName)), readOnly_(readOnly),
      stored_(ToFileName(fileName), Text(fileName), ItemText::ForFiles(), saver)
{
}

} // namespace nib
