#include "hosts/FileItem.h"

#include "hosts/PathString.h"
#include "platform/posix/FileName.h"

namespace nib {

FileItem::FileItem(TextView fileName, bool readOnly, const FileSaver& saver)
    : name_(fileName), readOnly_(readOnly), stored_(ToFileName(fileName), name_, ItemText::ForFiles(), saver)
{
}

Text FileItem::Path() const
{
    return ComposeFilePath(name_);
}

Text FileItem::ItemID() const
{
    return FromFileName(LastPart(stored_.Path()));
}

Text FileItem::FileName() const
{
    return FromFileName(FolderOf(stored_.Path()));
}

bool FileItem::IsItem()
{
    return !name_.ends_with(u'/') && !stored_.IsFolder();
}

Text FileItem::ReadItem(int32_t, int32_t, int32_t)
{
    return stored_.Read();
}

void FileItem::WriteItem(int32_t, int32_t, int32_t, TextView text)
{
    stored_.Write(text);
}

} // namespace nib
