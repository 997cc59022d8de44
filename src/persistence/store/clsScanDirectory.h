#pragma once
#include "platform/FileTransfer.h"

namespace nib {

/// Lists a folder, a name a call.
class clsScanDirectory {
public:
    explicit clsScanDirectory(FileTransfer& files) : files_(files) {}
    clsScanDirectory(const clsScanDirectory&) = delete;
    clsScanDirectory& operator=(const clsScanDirectory&) = delete;
    ~clsScanDirectory() { EndScan(); }

    /// With a path, begins a scan of that pattern ("/" at its end means all of the folder) and answers the first name;
    /// without one, answers the next. Empty at the end. The masks are of file_attribute; 0 and -1 list plain files that
    /// are neither hidden nor the system's.
    Text Dir(TextView path, int32_t include = 0, int32_t exclude = -1);

private:
    void SetMasks(int32_t include, int32_t exclude);
    void EndScan();

    FileTransfer& files_;
    FileTransfer::FindBlock block_;
    bool scanning_ = false;
    int32_t include_ = 0;
    int32_t exclude_ = 0;
};

} // namespace nib
