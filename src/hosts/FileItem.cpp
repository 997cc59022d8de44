#include "hosts/FileItem.h"

#include "platform/posix/FileName.h"

namespace nib {

namespace {

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

FileItem::FileItem(TextView fileName, bool readOnly, const FileSaver& saver)
    : mvItem(NamesOf(fileName)), readOnly_(readOnly),
      stored_(ToFileName(fileName), Text(fileName), ItemText::ForFiles(), saver)
{
}

} // namespace nib
