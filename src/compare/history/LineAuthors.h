#pragma once
#include "compare/GitLibrary.h"
#include "compare/history/VersionRepository.h"

#include <vector>

namespace nib {

/// Which version each line of a text comes from, found by going back from version to version, one at each step: who
/// asks may have other things to do in between.
class LineAuthors {
public:
    /// Of the lines of a version; of one too large to compare none is found. The repository outlives it.
    LineAuthors(const VersionRepository& repository, const std::string& tip);

    /// False when nothing is left to be found.
    bool Step();
    /// The versions that lines are of, the last one first.
    const std::vector<Version>& Versions() const { return versions_; }
    /// By line, which of them; -1 where that was not found.
    const std::vector<int32_t>& Lines() const { return lines_; }
    /// The same for the lines of another text: those that differ from the version's are of none.
    std::vector<int32_t> LinesOf(std::string_view bytes) const;

private:
    const VersionRepository& repository_;
    const GitLibrary git_;
    std::string tip_;
    std::vector<Version> versions_;
    std::vector<int32_t> lines_;
    std::vector<int32_t> open_; ///< by line of the version that is next: the line that it is in the end, or -1
    Version next_;
    std::string bytes_; ///< of that version
    size_t left_ = 0;   ///< lines of no version yet
    int32_t steps_ = 0;
};

} // namespace nib
