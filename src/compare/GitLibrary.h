#pragma once
// The library that knows how texts differ and what a repository holds; whoever calls it holds one of these meanwhile.

#include "base/Text.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace nib {

/// Lines that differ, 0-based; of a side without any, the line that they would stand before.
struct GitHunk {
    int32_t left = 0;
    int32_t leftCount = 0;
    int32_t right = 0;
    int32_t rightCount = 0;
};

class GitLibrary {
public:
    GitLibrary();
    ~GitLibrary();
    GitLibrary(const GitLibrary&) = delete;
    GitLibrary& operator=(const GitLibrary&) = delete;

    /// Where a change could begin at several lines: where its indent reads best, or as late as git's merges have it.
    enum class Cut : uint8_t { ForReaders, ForMerges };
    /// In order. Throws Error.
    void ForEachHunk(std::string_view left, std::string_view right,
                     const std::function<void(const GitHunk& hunk)>& visit, Cut cut = Cut::ForReaders) const;
    /// The file as it is in the last commit of the work tree that it lies in; nothing when there is no such tree,
    /// commit or file. Throws Error when the repository cannot be read.
    std::optional<std::string> CommittedFile(const std::string& fileName) const;
};

} // namespace nib
