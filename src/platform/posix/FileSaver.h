#pragma once
#include "platform/posix/FileContent.h"
#include "platform/posix/KeptCopies.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace nib {

/// Gives the open file `to` the mode, owner, access control list and extended attributes of `from`. False when
/// something of it could not be carried over, so that replacing the file would lose it.
bool CopyTraits(int from, int to);

// The one class that writes files that matter. The old content stays whole until the new one is safely on disk: it is
// written to a temporary file in the same folder, brought to disk, given the old file's mode, owner, access list and
// extended attributes, and renamed over it. A symbolic link is followed. Where a rename would lose something (other
// names of the same file, an owner or list that cannot be set, a folder that takes no new file) the file is written in
// place, after a copy of the old content was kept in the backup folder.

/// The new content has taken the old one's place, but whether it stays there when the machine fails is not known.
struct UncertainSave : SystemFailure {
    using SystemFailure::SystemFailure;
};

/// Neither content is whole; the message names a copy of the old one.
struct DamagedFile : SystemFailure {
    using SystemFailure::SystemFailure;
};

class FileSaver {
public:
    /// The backup folder is made when it is first needed, for the user alone. The mode is for files that are new; the
    /// user's mask takes its part of it.
    explicit FileSaver(std::string backupFolder, mode_t newFileMode = 0666)
        : backupFolder_(std::move(backupFolder)), newFileMode_(newFileMode)
    {
    }

    /// Stops a save by throwing. Called when all is ready, right before the old content goes.
    using LastCheck = std::function<void()>;

    /// The same, but a new file takes group and mode of the folder that it comes to, as far as the user may give these.
    FileSaver LikeFolders() const
    {
        FileSaver saver(*this);
        saver.likeFolders_ = true;
        return saver;
    }

    const std::string& BackupFolder() const { return backupFolder_; }
    /// Throws SystemFailure naming the file; the file then has its old content, except for the two kinds above. Answers
    /// the state of the new file.
    FileStamp Save(const std::string& path, std::string_view bytes, const LastCheck& check = {}) const;

private:
    std::optional<FileStamp> Replace(const std::string& path, const std::string& target, std::string_view bytes,
                                     const LastCheck& check) const;
    FileStamp WriteInPlace(const std::string& path, const std::string& target, std::string_view bytes,
                           const LastCheck& check) const;
    CopyKeeper Backup(const std::string& path, const std::string& target, std::string_view old,
                      std::string_view bytes) const;

    std::string backupFolder_;
    mode_t newFileMode_;
    bool likeFolders_ = false;
};

} // namespace nib
