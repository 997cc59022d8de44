#pragma once
// The library's objects as values that free themselves, and its failures as errors.

#include "base/Error.h"
#include "base/Text.h"

#include <git2.h>

#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace nib {

template <typename T, void (*Free)(T*)>
struct GitFree {
    void operator()(T* object) const { Free(object); }
};
template <typename T, void (*Free)(T*)>
using GitHandle = std::unique_ptr<T, GitFree<T, Free>>;

using GitBlob = GitHandle<git_blob, git_blob_free>;
using GitCommit = GitHandle<git_commit, git_commit_free>;
using GitConfig = GitHandle<git_config, git_config_free>;
using GitNote = GitHandle<git_note, git_note_free>;
using GitObject = GitHandle<git_object, git_object_free>;
using GitOdb = GitHandle<git_odb, git_odb_free>;
using GitPacker = GitHandle<git_packbuilder, git_packbuilder_free>;
using GitReference = GitHandle<git_reference, git_reference_free>;
using GitWalk = GitHandle<git_revwalk, git_revwalk_free>;
using GitReferences = GitHandle<git_reference_iterator, git_reference_iterator_free>;
using GitRepository = GitHandle<git_repository, git_repository_free>;
using GitSignature = GitHandle<git_signature, git_signature_free>;
using GitTree = GitHandle<git_tree, git_tree_free>;
using GitTreeBuilder = GitHandle<git_treebuilder, git_treebuilder_free>;

/// A failure of the library, with its number.
struct GitFailure : Error {
    explicit GitFailure(int result)
        : Error(error_number::kStorage, FromUtf8(git_error_last() ? git_error_last()->message : "unknown")),
          code(result)
    {
    }
    int code;
};

/// Throws GitFailure for what is no success.
inline void Check(int result)
{
    if (result < 0) throw GitFailure(result);
}

/// What a call makes that answers through its first argument.
template <typename Handle, typename Call, typename... Arguments>
Handle Make(Call&& call, Arguments&&... arguments)
{
    typename Handle::pointer made = nullptr;
    Check(call(&made, std::forward<Arguments>(arguments)...));
    return Handle(made);
}

inline bool IsMissing(int result)
{
    return result == GIT_ENOTFOUND || result == GIT_EUNBORNBRANCH || result == GIT_EBAREREPO;
}

/// The same where there may be no such thing: then it is null.
template <typename Handle, typename Call, typename... Arguments>
Handle Find(Call&& call, Arguments&&... arguments)
{
    typename Handle::pointer found = nullptr;
    const int result = call(&found, std::forward<Arguments>(arguments)...);
    if (IsMissing(result)) return nullptr;
    Check(result);
    return Handle(found);
}

/// As long as the blob lives.
inline std::string_view ContentOf(const git_blob& blob)
{
    return {static_cast<const char*>(git_blob_rawcontent(&blob)), static_cast<size_t>(git_blob_rawsize(&blob))};
}

struct GitIdLess {
    bool operator()(const git_oid& a, const git_oid& b) const { return git_oid_cmp(&a, &b) < 0; }
};
using GitIds = std::set<git_oid, GitIdLess>;

inline std::string ToHex(const git_oid& id)
{
    char digits[GIT_OID_HEXSZ + 1];
    return git_oid_tostr(digits, sizeof digits, &id);
}

inline git_oid FromHex(const std::string& digits)
{
    git_oid id;
    Check(git_oid_fromstr(&id, digits.c_str()));
    return id;
}

} // namespace nib
