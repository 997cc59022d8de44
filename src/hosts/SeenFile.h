#pragma once
#include "hosts/mvConnect.h"
#include "platform/posix/FileContent.h"

#include <string>
#include <string_view>
#include <vector>

namespace nib {

/// A file as it was when it was last read or written. Where size and times do not say whether it is still that, as
/// after a change of its mode or within one tick of the clock, its bytes do.
class SeenFile {
public:
    /// There was none.
    SeenFile() = default;
    /// Its bytes are not known.
    explicit SeenFile(const FileStamp& stamp) : stamp_(stamp), certain_(true) {}
    SeenFile(const FileStamp& stamp, std::string_view bytes);
    /// As it is now, read as far as that goes. Throws SystemFailure when it cannot be looked at.
    static SeenFile Now(const std::string& path);

    bool Exists() const { return stamp_.Exists(); }
    /// The bytes stay, in a file with this stamp.
    void SetStamp(const FileStamp& stamp);
    /// That would be no change either: to write it was tried, and how that ended is not known.
    void Accept(const SeenFile& other) { prints_.insert(prints_.end(), other.prints_.begin(), other.prints_.end()); }
    /// Of its bytes, for comparison alone; empty when they are not known.
    Text Version() const;
    /// Throws SystemFailure when the file cannot be looked at.
    StoredState Compare(const std::string& path);

private:
    struct Print {
        int64_t size = 0;
        uint64_t hash = 0;
        friend bool operator==(const Print&, const Print&) = default;
    };
    static Print PrintOf(std::string_view bytes);

    FileStamp stamp_;
    std::vector<Print> prints_; ///< of the bytes that it may hold
    bool certain_ = false;      ///< what changes it from now on changes the stamp, or nothing but that would tell
};

} // namespace nib
