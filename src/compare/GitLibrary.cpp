#include "compare/GitLibrary.h"

#include "compare/GitHandles.h"

#include <filesystem>

namespace nib {

namespace {

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
    Check(git_diff_buffers(left.data(), left.size(), nullptr, right.data(), right.size(), nullptr, &options, nullptr,
                           nullptr, TellHunk, nullptr, &called));
}

std::optional<std::string> GitLibrary::CommittedFile(const std::string& fileName) const
{
    std::error_code unknown;
    const std::filesystem::path file = std::filesystem::weakly_canonical(fileName, unknown);
    if (unknown) return std::nullopt;
    const auto repository = Find<GitRepository>(git_repository_open_ext, file.parent_path().c_str(), 0, nullptr);
    const char* tree = repository ? git_repository_workdir(repository.get()) : nullptr;
    if (!tree) return std::nullopt;
    const std::string inside =
        file.lexically_relative(std::filesystem::weakly_canonical(tree, unknown)).generic_string();
    const auto found = Find<GitObject>(git_revparse_single, repository.get(), ("HEAD:" + inside).c_str());
    if (!found || git_object_type(found.get()) != GIT_OBJECT_BLOB) return std::nullopt;
    return std::string(ContentOf(*reinterpret_cast<const git_blob*>(found.get())));
}

} // namespace nib
