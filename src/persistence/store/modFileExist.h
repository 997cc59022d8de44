#pragma once
#include "platform/FileStates.h"

namespace nib {

inline bool IsFolder(FileStates& states, TextView path)
{
    return states.StateOf(path).kind == FileState::Kind::Folder;
}
inline bool PathExists(FileStates& states, TextView path)
{
    return states.StateOf(path).kind != FileState::Kind::None;
}
inline bool IsFile(FileStates& states, TextView path)
{
    return states.StateOf(path).kind == FileState::Kind::File;
}

} // namespace nib
