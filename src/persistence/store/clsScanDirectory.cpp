#include "persistence/store/clsScanDirectory.h"

namespace nib {

namespace {

constexpr int32_t kNotInMask = file_attribute::kHidden | file_attribute::kSystem | file_attribute::kFolder;
constexpr int32_t kMaskKnown = 0xB7;
constexpr int32_t kMaskPlain = 0xE9;

} // namespace

Text clsScanDirectory::Dir(TextView path, int32_t include, int32_t exclude)
{
    Text name;
    bool found = false;
    if (path.empty()) {
        if (!scanning_) return {};
        found = files_.FindNextFile(block_, name);
    } else {
        EndScan();
        const Text pattern = path.ends_with(u'/') ? Text(path) + u"*" : Text(path);
        if (!files_.FindFirstFile(pattern, block_, name)) return {};
        found = true;
        scanning_ = true;
        SetMasks(include, exclude);
    }
    for (; found; found = files_.FindNextFile(block_, name)) {
        const int32_t known = files_.FindAttributes(block_);
        const int32_t attributes = known == -1 ? 0 : known;
        if (((attributes & include_) != 0 || (attributes & exclude_) == 0) && !name.empty()) return name;
    }
    EndScan();
    return {};
}

void clsScanDirectory::SetMasks(int32_t include, int32_t exclude)
{
    include_ = include == 0 ? file_attribute::kNormal : include;
    exclude_ = exclude;
    if (exclude != -1) return;
    include_ &= kMaskKnown;
    exclude_ = ~include_ & kNotInMask;
    include_ &= kMaskPlain;
}

void clsScanDirectory::EndScan()
{
    if (scanning_) files_.FindClose(block_);
    scanning_ = false;
}

} // namespace nib
