#pragma once
#include "compare/history/VersionRepository.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace nib {

/// How much is kept; 0 is no bound. The last version of an item always is.
struct HistoryBounds {
    int32_t days = 0;
    int32_t megabytes = 0;

    friend bool operator==(const HistoryBounds&, const HistoryBounds&) = default;
};

/// Keeps a repository small, in time that nobody waits for: objects that lie there one by one go into packs, and
/// versions that are too old, or too many, are dropped. Whenever it is stopped, be it by a kill, the repository is
/// whole: a new pack is on disk before anything goes that it holds.
class RepositoryUpkeep {
public:
    /// `goOn` is asked again and again; when it answers false, all is left as it is.
    RepositoryUpkeep(const VersionRepository& repository, std::function<bool()> goOn)
        : repository_(repository), goOn_(std::move(goOn))
    {
    }

    /// There is enough to pack.
    bool IsDue() const;
    void Pack() { Replace(Gather(false), false); }
    /// True when versions were dropped. `now` is in seconds since the epoch.
    bool Drop(const HistoryBounds& bounds, int64_t now);
    /// Bytes that all versions take.
    int64_t Size() const;

private:
    struct PackFile {
        std::string stem; ///< its path without the end
        uint32_t objects = 0;
    };
    /// What a new pack takes the place of.
    struct Old {
        std::vector<std::string> loose; ///< paths
        std::vector<PackFile> packs;
        GitIds ids;
        std::map<std::string, git_oid> tips; ///< by reference
    };
    struct Step {
        git_oid id;
        int64_t time;
    };
    using Chains = std::map<std::string, std::vector<Step>>; ///< by branch, from the last version back

    std::vector<PackFile> Packs() const;
    std::map<std::string, git_oid> Tips() const;
    Old Gather(bool all) const;
    void Replace(const Old& old, bool all);
    void Insert(git_packbuilder* packer, const Old& old, bool all, GitIds& taken) const;
    bool IsGone(const Old& old, const GitIds& taken) const;
    GitIds Roots() const;
    Chains Walk() const;
    void AskWhetherToGoOn() const;

    const VersionRepository& repository_;
    std::function<bool()> goOn_;
};

} // namespace nib
