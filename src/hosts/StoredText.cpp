#include "hosts/StoredText.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nib {

namespace {

bool IsDenied(const std::string& path, int access)
{
    return faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) != 0 &&
           (errno == EACCES || errno == EPERM || errno == EROFS);
}

ItemNames NamesOf(TextView fileName)
{
    const std::string name = ToFileName(fileName);
    const Text id = FromFileName(LastPart(name));
    return {{Text(kFileProvider), {}, {}, FromFileName(FolderOf(name)), id},
            ComposeFilePath(fileName),
            id,
            {},
            Text(fileName)};
}

} // namespace

bool StoredText::Exists()
{
    FileStamp stamp;
    const int error = ReadStamp(path_, stamp);
    if (error != 0) return error != ENOTDIR;
    if (!known_) known_.emplace(stamp);
    return stamp.Exists();
}

StoredState StoredText::State()
{
    if (!known_) return StoredState::Same;
    return OrDefault([&] { return known_->Compare(path_); }, StoredState::Unknown);
}

void StoredText::Know(SeenFile seen)
{
    known_ = std::move(seen);
    told_.reset();
}

void StoredText::AcceptState()
{
    IgnoringErrors([&] { Know(SeenFile::Now(path_)); });
}

bool StoredText::AcceptVersion(TextView version)
{
    SeenFile now = SeenFile::Now(path_);
    if (now.Version() != version) return false;
    Know(std::move(now));
    return true;
}

std::optional<int64_t> StoredText::Size() const
{
    FileStamp stamp;
    if (ReadStamp(path_, stamp) != 0 || !stamp.Exists()) return std::nullopt;
    return stamp.size;
}

bool StoredText::IsFolder() const
{
    return nib::IsFolder(path_);
}

bool StoredText::IsProtected() const
{
    if (StampOf(path_).Exists()) return IsDenied(path_, W_OK);
    return IsDenied(FolderOf(path_), W_OK | X_OK);
}

Text StoredText::Read()
{
    const FileContent content = ReadWholeFile(path_);
    Text text = form_.Decode(content.Bytes());
    Know({content.stamp, content.Bytes()});
    return text;
}

ReadText StoredText::ReadWhole()
{
    FileContent content = ReadWholeFile(path_);
    const std::shared_ptr<char[]> owner(std::move(content.data));
    ReadText text = form_.Read({{owner, owner.get()}, owner.get(), content.size, nullptr});
    Know({content.stamp, std::string_view(owner.get(), content.size)});
    return text;
}

void StoredText::Write(const LinewiseText& text, const Elsewhere& elsewhere)
{
    // By a copy, so that this one can be asked meanwhile; what it has learnt counts however it ends.
    StoredText writer(*this);
    const auto takeOver = [&] { *this = std::move(writer); };
    try {
        elsewhere([&] { writer.WriteNow(text); });
    } catch (...) {
        takeOver();
        throw;
    }
    takeOver();
}

void StoredText::WriteNow(const LinewiseText& text)
{
    const std::string bytes = form_.Encode(text);
    CheckUnchanged();
    SeenFile written({}, bytes);
    const auto lastCheck = [&] {
        CheckUnchanged();
        // However a write that fails from here on ends, what it may have left is no change by another.
        if (known_) known_->Accept(written);
    };
    try {
        written.SetStamp(saver_.Save(path_, bytes, lastCheck));
    } catch (const DamagedFile&) {
        AcceptState();
        throw;
    } catch (const Error&) {
        State(); // tells which of the two it holds now
        throw;
    }
    Know(std::move(written));
}

void StoredText::CheckUnchanged()
{
    const StoredState state = known_ ? known_->Compare(path_) : StoredState::Same;
    if (state == StoredState::Same || (told_ && told_->Compare(path_) == StoredState::Same)) return;
    const bool gone = state == StoredState::Gone;
    const TextView what = gone ? u" was deleted" : known_->Exists() ? u" was changed" : u" was created";
    told_ = SeenFile::Now(path_);
    throw Error(error_number::kStorage, form_.Name() + Text(what) +
                                            u" by another program since it was opened. Save it again to " +
                                            (gone ? u"make it anew." : u"replace it."));
}

FileItem::FileItem(TextView fileName, bool readOnly, const FileSaver& saver)
    : mvItem(NamesOf(fileName)), readOnly_(readOnly),
      stored_(ToFileName(fileName), Text(fileName), ItemText::ForFiles(), saver)
{
}

} // namespace nib
