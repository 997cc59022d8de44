#include "compare/history/VersionRepository.h"

#include "compare/GitLibrary.h"
#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"

#include <git2/sys/odb_backend.h>
#include <git2/sys/repository.h>

#include <algorithm>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr std::string_view kLines = "Lines: ";
constexpr std::string_view kRead = "Read ";
constexpr int kQuickly = 1;      ///< of the nine ways to compress
constexpr int kBeforeOthers = 9; ///< the library's own backends have 1 and 2
constexpr auto kNextTry = std::chrono::milliseconds(3);
constexpr auto kAbandoned = std::chrono::seconds(60); ///< a lock file that old was left by a process that ended

/// One line, that is never empty.
std::string Plain(TextView text)
{
    std::string bytes = ToUtf8(text);
    std::replace_if(
        bytes.begin(), bytes.end(), [](unsigned char c) { return c < ' ' || c == '<' || c == '>' || c == 0x7F; }, '?');
    return bytes.empty() ? "?" : bytes;
}

GitSignature Signature(TextView name, TextView host, int64_t time)
{
    constexpr int64_t kMinute = 60;
    const auto now = static_cast<time_t>(time);
    tm local{};
    localtime_r(&now, &local);
    std::string mail = Plain(name) + "@" + Plain(host);
    std::replace(mail.begin(), mail.end(), ' ', '.');
    return Make<GitSignature>(git_signature_new, Plain(name).c_str(), mail.c_str(), time,
                              static_cast<int>(local.tm_gmtoff / kMinute));
}

std::string MessageOf(const NewVersion& version, const std::optional<std::pair<int32_t, int32_t>>& lines)
{
    std::string message = std::string(version.wasRead ? kRead : "Saved ") + Plain(version.item) +
                          "\n\nHost: " + Plain(version.host) + "\n";
    if (!version.account.empty()) message += "Account: " + Plain(version.account) + "\n";
    if (lines)
        message.append(kLines).append("+" + std::to_string(lines->first) + " -" + std::to_string(lines->second) + "\n");
    return message;
}

/// What the user wrote about a version; null where nothing.
GitNote NoteOf(git_repository* repository, const git_oid& id)
{
    return Find<GitNote>(git_note_read, repository, nullptr, &id);
}

/// Removes the lock of a reference when whoever took it cannot be there any more.
void ClearAbandoned(const std::string& path)
{
    const FileStamp stamp = StampOf(path);
    if (stamp.Exists() && time(nullptr) - stamp.seconds > kAbandoned.count()) unlink(path.c_str());
}

} // namespace

RepositoryHold::RepositoryHold(const std::string& folder, std::chrono::milliseconds patience)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (!folder_) throw SystemFailure(FromFileName(folder), errno);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (flock(folder_.Get(), LOCK_EX | LOCK_NB) != 0) {
        // A file system without locks is the user's own choice, and nothing worse than a refused write comes of it.
        if (errno != EWOULDBLOCK && errno != EINTR) return;
        if (std::chrono::steady_clock::now() > end)
            throw Error(error_number::kLocked, Text(u"another program is writing to it."));
        std::this_thread::sleep_for(kNextTry);
    }
}

VersionRepository::VersionRepository(std::string folder, GitRepository repository)
    : folder_(std::move(folder)), repository_(std::move(repository))
{
    // Its own settings alone: those of the user's other repositories, or a fault in them, are no business of this one.
    const GitConfig own = nib::Make<GitConfig>(git_config_open_ondisk, (folder_ + "/config").c_str());
    git_repository_set_config(repository_.get(), own.get());
    // A pack is to be small; until then what counts is that a large text does not take seconds.
    const auto odb = nib::Make<GitOdb>(git_repository_odb, repository_.get());
    git_odb_backend* quick = nullptr;
    Check(git_odb_backend_loose(&quick, (folder_ + "/objects").c_str(), kQuickly, 1, 0, 0));
    Check(git_odb_add_backend(odb.get(), quick, kBeforeOthers));
}

std::optional<VersionRepository> VersionRepository::Open(const std::string& folder)
{
    if (!IsFolder(folder)) return std::nullopt;
    return VersionRepository(folder, nib::Make<GitRepository>(git_repository_open_bare, folder.c_str()));
}

/// Beside its place, and then moved there: nobody meets half of one.
void VersionRepository::Create(const std::string& folder)
{
    const std::string made = folder + std::string(kTemporaryName) + RandomSuffix();
    const auto failure = FailureOf([&] {
        if (const int error = MakeFolders(made)) throw SystemFailure(FromFileName(folder), error);
        git_repository_init_options options;
        git_repository_init_options_init(&options, GIT_REPOSITORY_INIT_OPTIONS_VERSION);
        options.flags = GIT_REPOSITORY_INIT_BARE;
        options.initial_head = "main";
        nib::Make<GitRepository>(git_repository_init_ext, made.c_str(), &options);
        const int error = RenameNew(made, folder);
        if (error != 0 && !IsFolder(folder)) throw SystemFailure(FromFileName(folder), error);
    });
    std::error_code ignored;
    std::filesystem::remove_all(made, ignored);
    if (failure) throw Error(*failure);
}

VersionRepository VersionRepository::Make(const std::string& folder)
{
    if (!IsFolder(folder)) Create(folder);
    auto repository = Open(folder);
    if (!repository) throw SystemFailure(FromFileName(folder), ENOENT);
    return std::move(*repository);
}

std::optional<git_oid> VersionRepository::Tip(const HistoryPlace& place) const
{
    git_oid id;
    const int result = git_reference_name_to_id(&id, repository_.get(), place.branch.c_str());
    if (result == GIT_ENOTFOUND) return std::nullopt;
    Check(result);
    return id;
}

std::string VersionRepository::Last(const HistoryPlace& place) const
{
    const auto tip = Tip(place);
    return tip ? ToHex(*tip) : std::string();
}

git_oid VersionRepository::BlobIdOf(const git_oid& commit) const
{
    const auto found = nib::Make<GitCommit>(git_commit_lookup, repository_.get(), &commit);
    const auto tree = nib::Make<GitTree>(git_commit_tree, found.get());
    const git_tree_entry* entry = git_tree_entry_byindex(tree.get(), 0);
    if (!entry) throw Error(error_number::kStorage, Text(u"a version holds no text."));
    return *git_tree_entry_id(entry);
}

GitBlob VersionRepository::BlobOf(const git_oid& commit) const
{
    const git_oid id = BlobIdOf(commit);
    return nib::Make<GitBlob>(git_blob_lookup, repository_.get(), &id);
}

std::string VersionRepository::Bytes(const std::string& version) const
{
    return std::string(ContentOf(*BlobOf(FromHex(version))));
}

bool VersionRepository::IsComparable(const std::string& version) const
{
    const git_oid blob = BlobIdOf(FromHex(version));
    const auto odb = nib::Make<GitOdb>(git_repository_odb, repository_.get());
    size_t size = 0;
    git_object_t type{};
    Check(git_odb_read_header(&size, &type, odb.get(), &blob));
    return size <= kLargestCompared;
}

bool VersionRepository::HasText(const git_oid& commit, std::string_view bytes) const
{
    git_oid id;
    Check(git_odb_hash(&id, bytes.data(), bytes.size(), GIT_OBJECT_BLOB));
    const git_oid own = BlobIdOf(commit);
    return git_oid_equal(&id, &own);
}

/// Lines that came and lines that went; nothing when the texts are too large to look.
std::optional<std::pair<int32_t, int32_t>> VersionRepository::CountChanges(const git_oid& older,
                                                                           std::string_view newer) const
{
    if (newer.size() > kLargestCompared || !IsComparable(ToHex(older))) return std::nullopt;
    std::pair<int32_t, int32_t> lines;
    GitLibrary().ForEachHunk(ContentOf(*BlobOf(older)), newer, [&](const GitHunk& hunk) {
        lines.first += hunk.rightCount;
        lines.second += hunk.leftCount;
    });
    return lines;
}

git_oid VersionRepository::Commit(const HistoryPlace& place, const NewVersion& version,
                                  const std::optional<git_oid>& parent)
{
    git_repository* repository = repository_.get();
    git_oid blob;
    Check(git_blob_create_from_buffer(&blob, repository, version.bytes.data(), version.bytes.size()));
    const auto builder = nib::Make<GitTreeBuilder>(git_treebuilder_new, repository, nullptr);
    Check(git_treebuilder_insert(nullptr, builder.get(), place.fileName.c_str(), &blob, GIT_FILEMODE_BLOB));
    git_oid treeId;
    Check(git_treebuilder_write(&treeId, builder.get()));
    const auto tree = nib::Make<GitTree>(git_tree_lookup, repository, &treeId);

    const auto lines = parent ? CountChanges(*parent, version.bytes) : std::nullopt;
    const GitSignature author = Signature(version.author, version.host, version.time);
    const auto before = parent ? nib::Make<GitCommit>(git_commit_lookup, repository, &*parent) : nullptr;
    const git_commit* parents[] = {before.get()};
    git_oid id;
    Check(git_commit_create(&id, repository, nullptr, author.get(), author.get(), "UTF-8",
                            MessageOf(version, lines).c_str(), tree.get(), before ? 1 : 0, parents));
    return id;
}

void VersionRepository::SetTip(const HistoryPlace& place, const git_oid& tip, const std::optional<git_oid>& before)
{
    git_reference* made = nullptr;
    const git_oid none{};
    const int result = git_reference_create_matching(&made, repository_.get(), place.branch.c_str(), &tip, 1,
                                                     before ? &*before : &none, nullptr);
    const GitReference reference(made);
    Check(result);
}

void VersionRepository::Add(const HistoryPlace& place, const NewVersion& version)
{
    constexpr int kTries = 5;
    const RepositoryHold hold(folder_);
    for (int left = kTries;; --left) {
        const auto old = Tip(place);
        if (old && version.wasRead && HasText(*old, version.bytes)) return;
        const git_oid tip = Commit(place, version, old);
        try {
            return SetTip(place, tip, old);
        } catch (const GitFailure& failure) {
            // Other programs know nothing of our hold.
            const bool taken = failure.code == GIT_ELOCKED;
            if (left == 0 || (!taken && failure.code != GIT_EMODIFIED && failure.code != GIT_EEXISTS)) throw;
            if (taken) ClearAbandoned(folder_ + "/" + place.branch + ".lock");
            std::this_thread::sleep_for(kNextTry);
        }
    }
}

Version VersionRepository::Describe(git_commit& commit) const
{
    Version version;
    const git_oid& id = *git_commit_id(&commit);
    version.id = ToHex(id);
    if (git_commit_parentcount(&commit) > 0) version.parent = ToHex(*git_commit_parent_id(&commit, 0));
    version.time = git_commit_author(&commit)->when.time;
    version.author = FromUtf8(git_commit_author(&commit)->name);
    const std::string_view message(git_commit_message(&commit));
    version.wasRead = message.starts_with(kRead);
    if (const size_t at = message.rfind("\n" + std::string(kLines)); at != std::string_view::npos)
        std::sscanf(message.data() + at + 1 + kLines.size(), "+%d -%d", &version.added, &version.removed);
    if (const GitNote note = NoteOf(repository_.get(), id)) {
        std::string_view own(git_note_message(note.get()));
        own = own.substr(0, own.find_last_not_of('\n') + 1);
        version.message = FromUtf8(own);
    }
    return version;
}

std::vector<Version> VersionRepository::List(const std::string& from, size_t count) const
{
    std::vector<Version> versions;
    for (std::string next = from; !next.empty() && versions.size() < count; next = versions.back().parent) {
        const git_oid id = FromHex(next);
        const auto commit = Find<GitCommit>(git_commit_lookup, repository_.get(), &id);
        if (!commit) break; // older ones were dropped
        versions.push_back(Describe(*commit));
    }
    return versions;
}

void VersionRepository::SetMessage(const std::string& version, TextView message, TextView author)
{
    const RepositoryHold hold(folder_);
    const git_oid id = FromHex(version);
    const GitSignature who = Signature(author, u"localhost", time(nullptr));
    if (message.empty()) {
        const int result = git_note_remove(repository_.get(), nullptr, who.get(), who.get(), &id);
        if (result != GIT_ENOTFOUND) Check(result);
        return;
    }
    git_oid note;
    Check(git_note_create(&note, repository_.get(), nullptr, who.get(), who.get(), &id,
                          (ToUtf8(message) + "\n").c_str(), 1));
}

} // namespace nib
