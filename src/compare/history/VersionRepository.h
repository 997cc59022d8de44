#pragma once
#include "compare/GitHandles.h"
#include "compare/history/HistoryPlace.h"
#include "platform/posix/FileContent.h"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace nib {

/// One version of an item.
struct Version {
    std::string id;
    std::string parent;   ///< the one before; empty for the first
    int64_t time = 0;     ///< seconds since the epoch, by the clock as it was; versions are not in its order
    Text author;          ///< who saved it, or for one that was read the host
    bool wasRead = false; ///< it was there before a save, or came from elsewhere between two
    int32_t added = -1;   ///< lines against the one before; below 0 where nobody counted
    int32_t removed = -1;
    Text message; ///< of the user's own
};

/// A version to be.
struct NewVersion {
    std::string bytes;
    int64_t time = 0;
    Text author;
    Text item; ///< what is told of it: for people who read the repository by other means
    Text host;
    Text account;
    bool wasRead = false;
};

/// In bytes; texts above it are kept, but not compared line by line.
constexpr size_t kLargestCompared = size_t{16} << 20;

/// Keeps other programs of the user's from writing to a repository, as long as it lives. It leaves nothing behind and
/// ends with the process. Throws Error when another one does not let go of it.
class RepositoryHold {
public:
    explicit RepositoryHold(const std::string& folder, std::chrono::milliseconds patience = std::chrono::seconds(2));

private:
    Descriptor folder_;
};

/// The versions of the items of one account: a bare repository of the user's own, with a branch for each item. Each
/// version is a commit whose tree holds the item alone, so that a save costs the same however many items there are, and
/// the way back from one version leads through those of the same item only.
///
/// Not for more than one thread. Throws Error.
class VersionRepository {
public:
    /// Makes it where there is none yet.
    static VersionRepository Make(const std::string& folder);
    /// Nothing where there is none.
    static std::optional<VersionRepository> Open(const std::string& folder);

    const std::string& Folder() const { return folder_; }
    git_repository* Get() const { return repository_.get(); }

    /// Adds a version on top of an item's; one that was read only if the last one has another text.
    void Add(const HistoryPlace& place, const NewVersion& version);
    /// The last version; empty when there is none.
    std::string Last(const HistoryPlace& place) const;
    /// `count` versions from this one back; fewer where the first one is reached, or those before are gone.
    std::vector<Version> List(const std::string& from, size_t count) const;
    std::string Bytes(const std::string& version) const;
    /// False for one so large that nobody waits for what differs in it.
    bool IsComparable(const std::string& version) const;
    /// An empty message takes an earlier one away.
    void SetMessage(const std::string& version, TextView message, TextView author);

private:
    VersionRepository(std::string folder, GitRepository repository);

    static void Create(const std::string& folder);
    git_oid BlobIdOf(const git_oid& commit) const;
    GitBlob BlobOf(const git_oid& commit) const;
    bool HasText(const git_oid& commit, std::string_view bytes) const;
    std::optional<std::pair<int32_t, int32_t>> CountChanges(const git_oid& older, std::string_view newer) const;
    git_oid Commit(const HistoryPlace& place, const NewVersion& version, const std::optional<git_oid>& parent);
    std::optional<git_oid> Tip(const HistoryPlace& place) const;
    void SetTip(const HistoryPlace& place, const git_oid& tip, const std::optional<git_oid>& before);
    Version Describe(git_commit& commit) const;

    std::string folder_;
    GitRepository repository_;
};

} // namespace nib
