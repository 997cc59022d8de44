#pragma once
// What saves keep for the case that they are cut short, and what a later start makes of it.
//
// While a file is written in place, the folder of copies holds COPY, its whole old content, and COPY.of, which names
// the file and tells its new content by a hash. While a temporary file has a name, a symbolic link there leads to it.
// Both are locked as long as the process lives.

#include "platform/posix/FileContent.h"

#include <string>
#include <string_view>
#include <vector>

namespace nib {

/// The old content of a file that is about to be written over.
class CopyKeeper {
public:
    CopyKeeper(const std::string& folder, const std::string& target);

    CopyKeeper(CopyKeeper&&) = default;
    CopyKeeper& operator=(CopyKeeper&&) = delete;
    ~CopyKeeper();

    const std::string& Name() const { return name_; }
    /// Brings it to disk; answers 0 or the system's error.
    int Keep(std::string_view oldBytes, std::string_view newBytes);
    /// It stays when this object goes.
    void Leave() { file_.Close(); }

private:
    std::string target_;
    std::string name_;
    Descriptor file_;
};

/// Makes a temporary file known as long as it has its name.
class TemporaryMark {
public:
    TemporaryMark() = default;
    TemporaryMark(const std::string& folder, int file, const std::string& name);
    TemporaryMark(const TemporaryMark&) = delete;
    TemporaryMark& operator=(const TemporaryMark&) = delete;
    ~TemporaryMark();

    /// It stays when this object goes.
    void Leave() { link_.clear(); }

private:
    std::string link_;
};

/// An old content, and the file that it was kept for.
struct KeptCopy {
    std::string copy;
    std::string target;
};

/// Of processes that have ended, where the file is neither as it was nor as it should have become.
std::vector<KeptCopy> UnsettledCopies(const std::string& folder);
/// The file has been saved as a whole: what earlier saves kept of it must not be put back over that.
void ForgetCopiesOf(const std::string& folder, const std::string& target);
/// When it is no longer wanted.
void ForgetCopy(const KeptCopy& kept);
/// Removes copies of files that are whole, and temporary files of processes that have ended.
void ClearLeftovers(const std::string& folder);

} // namespace nib
