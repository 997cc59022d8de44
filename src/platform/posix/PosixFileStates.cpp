#include "platform/posix/PosixFileStates.h"

#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

namespace nib {

FileState PosixFileStates::StateOf(TextView path)
{
    struct stat status {};
    if (stat(ToFileName(path).c_str(), &status) != 0) return {};
    const FileStamp stamp = StampOf(status);
    FileState state;
    state.kind = S_ISDIR(status.st_mode) ? FileState::Kind::Folder : FileState::Kind::File;
    state.size = stamp.size;
    state.device = stamp.device;
    state.inode = stamp.inode;
    state.seconds = stamp.seconds;
    state.nanoseconds = stamp.nanoseconds;
    return state;
}

} // namespace nib
