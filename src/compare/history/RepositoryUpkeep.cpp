#include "compare/history/RepositoryUpkeep.h"

#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"
#include "platform/posix/FileSaver.h"

#include <git2/sys/odb_backend.h>

#include <algorithm>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr TextView kNotPacked = u"The history cannot be packed: ";
constexpr size_t kDueInOneFolder = 16; ///< of 256, among which objects lie evenly
constexpr int64_t kSecondsADay = 86400;
constexpr int64_t kLeftOver = 3600; ///< seconds after which nobody writes to a temporary file any more

/// Calls visit(path, name) for the files of a folder.
template <typename Visit>
void ForEachFile(const std::string& folder, Visit&& visit)
{
    std::vector<FolderEntry> entries;
    ListFolder(folder, entries);
    for (const FolderEntry& entry : entries)
        if (!entry.isFolder) visit(folder + "/" + entry.name, entry.name);
}

/// Calls visit(path, id) for each object that has a file of its own; what writers left behind goes meanwhile.
template <typename Visit>
void ForEachLoose(const std::string& repository, Visit&& visit)
{
    constexpr int kFolders = 256;
    static constexpr char kDigits[] = "0123456789abcdef";
    for (int i = 0; i < kFolders; ++i) {
        const std::string begin{kDigits[i / 16], kDigits[i % 16]};
        ForEachFile(repository + "/objects/" + begin, [&](const std::string& path, const std::string& name) {
            git_oid id;
            const std::string whole = std::string(begin).append(name);
            if (whole.size() == GIT_OID_HEXSZ && git_oid_fromstr(&id, whole.c_str()) == 0)
                visit(path, id);
            else if (time(nullptr) - StampOf(path).seconds > kLeftOver)
                unlink(path.c_str());
        });
    }
}

/// As the index of a pack says, in the last of its 256 sums.
uint32_t ObjectCount(const std::string& index)
{
    constexpr off_t kLastSum = 8 + 255 * 4;
    const Descriptor file(open(index.c_str(), O_RDONLY | O_CLOEXEC));
    unsigned char bytes[4] = {};
    if (!file || pread(file.Get(), bytes, sizeof bytes, kLastSum) != sizeof bytes) return 0;
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

int TakeId(const git_oid* id, void* ids)
{
    static_cast<GitIds*>(ids)->insert(*id);
    return 0;
}

void AddPacked(const std::string& index, GitIds& ids)
{
    const auto odb = Make<GitOdb>(git_odb_new);
    git_odb_backend* backend = nullptr;
    Check(git_odb_backend_one_pack(&backend, index.c_str()));
    Check(git_odb_add_backend(odb.get(), backend, 1));
    Check(git_odb_foreach(odb.get(), TakeId, &ids));
}

void Sync(const std::string& path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file || fsync(file.Get()) != 0) throw SystemFailure(Text(kNotPacked) + FromFileName(path), errno);
}

int AskPacking(int, uint32_t, uint32_t, void* goOn)
{
    return (*static_cast<const std::function<bool()>*>(goOn))() ? 0 : GIT_EUSER;
}

int AskWriting(const git_indexer_progress*, void* goOn)
{
    return AskPacking(0, 0, 0, goOn);
}

GitCommit CommitOf(const VersionRepository& repository, const git_oid& id)
{
    return Find<GitCommit>(git_commit_lookup, repository.Get(), &id);
}

git_oid BlobIn(const VersionRepository& repository, const git_oid& treeId)
{
    const auto tree = Make<GitTree>(git_tree_lookup, repository.Get(), &treeId);
    const git_tree_entry* entry = git_tree_entry_byindex(tree.get(), 0);
    return entry ? *git_tree_entry_id(entry) : treeId;
}

bool IsBranch(const std::string& reference)
{
    return reference.starts_with("refs/heads/");
}

} // namespace

void RepositoryUpkeep::AskWhetherToGoOn() const
{
    if (!goOn_()) throw GitFailure(GIT_EUSER);
}

std::vector<RepositoryUpkeep::PackFile> RepositoryUpkeep::Packs() const
{
    std::vector<PackFile> packs;
    ForEachFile(repository_.Folder() + "/objects/pack", [&](const std::string& path, const std::string& name) {
        if (name.ends_with(".idx")) packs.push_back({path.substr(0, path.size() - 4), ObjectCount(path)});
    });
    std::sort(packs.begin(), packs.end(), [](const auto& a, const auto& b) { return a.objects < b.objects; });
    return packs;
}

bool RepositoryUpkeep::IsDue() const
{
    size_t count = 0;
    ForEachFile(repository_.Folder() + "/objects/17", [&](const auto&, const auto&) { ++count; });
    return count >= kDueInOneFolder;
}

int64_t RepositoryUpkeep::Size() const
{
    int64_t size = 0;
    const auto add = [&](const std::string& path, const auto&) { size += std::max<int64_t>(StampOf(path).size, 0); };
    ForEachFile(repository_.Folder() + "/objects/pack", add);
    ForEachLoose(repository_.Folder(), add);
    return size;
}

std::map<std::string, git_oid> RepositoryUpkeep::Tips() const
{
    std::map<std::string, git_oid> tips;
    const auto all = Make<GitReferences>(git_reference_iterator_new, repository_.Get());
    git_reference* next = nullptr;
    while (git_reference_next(&next, all.get()) == 0) {
        const GitReference reference(next);
        if (const git_oid* id = git_reference_target(next)) tips.emplace(git_reference_name(next), *id);
    }
    return tips;
}

RepositoryUpkeep::Old RepositoryUpkeep::Gather(bool all) const
{
    Old old;
    // Tips come first: what is written from now on is no part of this.
    old.tips = Tips();
    ForEachLoose(repository_.Folder(), [&](const std::string& path, const git_oid& id) {
        old.loose.push_back(path);
        old.ids.insert(id);
    });
    // Packs that are small beside what joins them are taken in, so that there never are many.
    size_t sum = old.ids.size();
    for (const PackFile& pack : Packs()) {
        if (!all && pack.objects > 2 * sum) break;
        AddPacked(pack.stem + ".idx", old.ids);
        old.packs.push_back(pack);
        sum += pack.objects;
    }
    return old;
}

void RepositoryUpkeep::Insert(git_packbuilder* packer, const Old& old, bool all, GitIds& taken) const
{
    const GitIds roots = Roots();
    const auto insert = [&](const git_oid& id, const std::string& name) {
        if (taken.insert(id).second) Check(git_packbuilder_insert(packer, &id, name.c_str()));
    };
    for (const auto& [reference, tip] : old.tips) {
        if (!IsBranch(reference)) {
            if (!all) continue;
            const auto walk = Make<GitWalk>(git_revwalk_new, repository_.Get());
            Check(git_revwalk_push(walk.get(), &tip));
            Check(git_packbuilder_insert_walk(packer, walk.get()));
            continue;
        }
        // Side by side in the pack, and by the same name, texts of one item become differences of one another.
        const std::string name = LastPart(reference);
        for (git_oid id = tip;;) {
            AskWhetherToGoOn();
            const GitCommit commit = old.ids.contains(id) ? CommitOf(repository_, id) : nullptr;
            if (!commit) break;
            const git_oid& tree = *git_commit_tree_id(commit.get());
            insert(id, {});
            insert(tree, {});
            insert(BlobIn(repository_, tree), name);
            if (git_commit_parentcount(commit.get()) == 0 || roots.contains(id)) break;
            id = *git_commit_parent_id(commit.get(), 0);
        }
    }
    if (all) return;
    for (const git_oid& id : old.ids) insert(id, {});
}

/// What a version needs that was saved meanwhile is among what is to go.
bool RepositoryUpkeep::IsGone(const Old& old, const GitIds& taken) const
{
    const auto gone = [&](const git_oid& id) { return old.ids.contains(id) && !taken.contains(id); };
    for (const auto& [reference, tip] : Tips()) {
        const auto known = old.tips.find(reference);
        if (known != old.tips.end() && git_oid_equal(&known->second, &tip)) continue;
        if (!IsBranch(reference)) return true;
        for (git_oid id = tip; !taken.contains(id);) {
            const GitCommit commit = CommitOf(repository_, id);
            if (!commit) break;
            const git_oid& tree = *git_commit_tree_id(commit.get());
            if (gone(id) || gone(tree) || gone(BlobIn(repository_, tree))) return true;
            if (git_commit_parentcount(commit.get()) == 0) break;
            id = *git_commit_parent_id(commit.get(), 0);
        }
    }
    return false;
}

void RepositoryUpkeep::Replace(const Old& old, bool all)
{
    const auto packer = Make<GitPacker>(git_packbuilder_new, repository_.Get());
    git_packbuilder_set_threads(packer.get(), 1);
    git_packbuilder_set_callbacks(packer.get(), AskPacking, &goOn_);
    GitIds taken;
    Insert(packer.get(), old, all, taken);
    if (git_packbuilder_object_count(packer.get()) == 0) return;
    const std::string folder = repository_.Folder() + "/objects/pack";
    Check(git_packbuilder_write(packer.get(), folder.c_str(), 0, AskWriting, &goOn_));
    const std::string written = folder + "/pack-" + git_packbuilder_name(packer.get());
    Sync(written + ".pack");
    Sync(written + ".idx");
    if (const int error = SyncFolder(folder)) throw SystemFailure(Text(kNotPacked) + FromFileName(folder), error);
    if (all) AddPacked(written + ".idx", taken);

    const RepositoryHold hold(repository_.Folder());
    if (all && IsGone(old, taken)) return; // it stays for the next time
    for (const PackFile& pack : old.packs) {
        if (pack.stem == written) continue;
        // A pack without its index is none.
        for (const char* end : {".idx", ".pack", ".rev"}) unlink((pack.stem + end).c_str());
    }
    for (const std::string& path : old.loose) unlink(path.c_str());
}

// Versions are dropped by a list of those that count as the first: other programs know it, too, as that of a copy that
// was not made whole. So nothing of what stays is written anew.

GitIds RepositoryUpkeep::Roots() const
{
    GitIds roots;
    std::string list;
    IgnoringErrors([&] { list = ReadWholeFile(repository_.Folder() + "/shallow").Bytes(); });
    for (size_t at = 0; at + GIT_OID_HEXSZ <= list.size(); at += GIT_OID_HEXSZ + 1)
        roots.insert(FromHex(list.substr(at, GIT_OID_HEXSZ)));
    return roots;
}

RepositoryUpkeep::Chains RepositoryUpkeep::Walk() const
{
    Chains chains;
    const GitIds roots = Roots();
    for (const auto& [reference, tip] : Tips()) {
        if (!IsBranch(reference)) continue;
        std::vector<Step>& chain = chains[reference];
        for (git_oid id = tip;;) {
            AskWhetherToGoOn();
            const GitCommit commit = CommitOf(repository_, id);
            if (!commit) break;
            chain.push_back({id, git_commit_time(commit.get())});
            if (git_commit_parentcount(commit.get()) == 0 || roots.contains(id)) break;
            id = *git_commit_parent_id(commit.get(), 0);
        }
        // A clock that was set back makes no version older than those before it.
        int64_t latest = INT64_MIN;
        for (auto step = chain.rbegin(); step != chain.rend(); ++step)
            latest = step->time = std::max(step->time, latest);
    }
    return chains;
}

bool RepositoryUpkeep::Drop(const HistoryBounds& bounds, int64_t now)
{
    constexpr int64_t kMegabyte = int64_t{1} << 20;
    const int64_t size = bounds.megabytes > 0 ? Size() : 0;
    const bool large = size > bounds.megabytes * kMegabyte;
    if (bounds.days <= 0 && !large) return false; // what is marked as dropped waits for the next time
    const Chains chains = Walk();
    int64_t limit = bounds.days > 0 ? now - bounds.days * kSecondsADay : INT64_MIN;
    if (large) {
        // As many as may be about four fifths of it, the oldest go; so it is not to be done again at once.
        std::vector<int64_t> times;
        for (const auto& [branch, chain] : chains)
            for (const Step& step : chain) times.push_back(step.time);
        std::sort(times.begin(), times.end(), std::greater<>());
        const double share = 0.8 * static_cast<double>(bounds.megabytes * kMegabyte) / static_cast<double>(size);
        const auto kept = static_cast<size_t>(share * static_cast<double>(times.size()));
        if (kept < times.size()) limit = std::max(limit, times[kept] + 1);
    }
    std::string roots;
    bool any = false;
    const GitIds known = Roots();
    for (const auto& [branch, chain] : chains) {
        const auto old = std::find_if(chain.begin(), chain.end(), [&](const Step& step) { return step.time < limit; });
        const size_t kept = std::max<size_t>(static_cast<size_t>(old - chain.begin()), 1);
        if (kept < chain.size())
            any = true;
        else if (!known.contains(chain.back().id))
            continue;
        roots += ToHex(chain[std::min(kept, chain.size()) - 1].id) + "\n";
    }
    // What an earlier end has left undone is done now.
    const std::string undone = repository_.Folder() + "/dropping";
    if (!any && !IsPlainFile(undone)) return false;
    const FileSaver saver(repository_.Folder(), 0600);
    saver.Save(undone, {});
    if (any) saver.Save(repository_.Folder() + "/shallow", roots);
    Replace(Gather(true), true);
    unlink(undone.c_str());
    return true;
}

} // namespace nib
