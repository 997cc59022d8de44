#pragma once
#include "platform/FileStates.h"

namespace nib {

class PosixFileStates : public FileStates {
public:
    FileState StateOf(TextView path) override;
};

} // namespace nib
