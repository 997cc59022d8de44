#include "compare/GitLibrary.h"

#include "base/Error.h"

#include <git2.h>

#include <filesystem>
#include <memory>

namespace nib {

namespace {

template <typename T, void (*Free)(T*)>
struct Freed {
    void operator()(T* object) const { Free(object); }
};
template <typename T, void (*Free)(T*)>
using Owned = std::unique_ptr<T, Freed<T, Free>>;

[[noreturn]] void Fail()
{
    const git_error* error = git_error_last();
    throw Error{error_number::kStorage, FromUtf8(error && error->message ? error->message : "git")};
}

/// True when there is such a thing.
bool IsThere(int code)
{
    if (code == 0) return true;
    if (code == GIT_ENOTFOUND || code == GIT_EUNBORNBRANCH || code == GIT_EBAREREPO) return false;
    Fail();
}

int TellHunk(const git_diff_delta*, const git_diff_hunk* hunk, void* payload)
{
    // An empty side is told by the line in front of it, 1-based.
    const auto first = [](int start, int lines) { return lines > 0 ? start - 1 : start; };
    (*static_cast<const std::function<void(const GitHunk&)>*>(payload))(
        {first(hunk->old_start, hunk->old_lines), hunk->old_lines, first(hunk->new_start, hunk->new_lines),
         hunk->new_lines});
    return 0;
}

} // namespace

GitLibrary::GitLibrary()
{
    git_libgit2_init();
}

GitLibrary::~GitLibrary()
{
    git_libgit2_shutdown();
}

void GitLibrary::ForEachHunk(std::string_view left, std::string_view right,
                             const std::function<void(const GitHunk& hunk)>& visit, Cut cut) const
{
    git_diff_options options;
    git_diff_options_init(&options, GIT_DIFF_OPTIONS_VERSION);
    options.flags = GIT_DIFF_FORCE_TEXT | GIT_DIFF_SKIP_BINARY_CHECK;
    if (cut == Cut::ForReaders) options.flags |= GIT_DIFF_INDENT_HEURISTIC;
    options.context_lines = 0;
    options.interhunk_lines = 0;
    options.max_size = -1;
    auto called = visit;
    if (git_diff_buffers(left.data(), left.size(), nullptr, right.data(), right.size(), nullptr, &options, nullptr,
                         nullptr, TellHunk, nullptr, &called) != 0)
        Fail();
}

std::optional<std::string> GitLibrary::CommittedFile(const std::string& fileName) const
{
    std::error_code unknown;
    const std::filesystem::path file = std::filesystem::weakly_canonical(fileName, unknown);
    if (unknown) return std::nullopt;
    git_repository* opened = nullptr;
    if (!IsThere(git_repository_open_ext(&opened, file.parent_path().c_str(), 0, nullptr))) return std::nullopt;
    const Owned<git_repository, git_repository_free> repository(opened);
    const char* tree = git_repository_workdir(opened);
    if (!tree) return std::nullopt;
    const std::string inside =
        file.lexically_relative(std::filesystem::weakly_canonical(tree, unknown)).generic_string();
    git_object* found = nullptr;
    if (!IsThere(git_revparse_single(&found, opened, ("HEAD:" + inside).c_str()))) return std::nullopt;
    const Owned<git_object, git_object_free> object(found);
    if (git_object_type(found) != GIT_OBJECT_BLOB) return std::nullopt;
    const auto* blob = reinterpret_cast<const git_blob*>(found);
    return std::string(static_cast<const char*>(git_blob_rawcontent(blob)),
                       static_cast<size_t>(git_blob_rawsize(blob)));
}

} // namespace nib
