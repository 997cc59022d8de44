#pragma once
#include "hosts/SeenFile.h"
#include "hosts/StoredForm.h"
#include "hosts/mvConnect.h"
#include "platform/posix/FileSaver.h"

#include <optional>
#include <string>

namespace nib {

/// One file on disk as a text that is read once, edited, and written back in the way it was read.
///
/// What another program did to the file meanwhile is not overwritten silently: Write throws once when the file is not
/// the one that was read, or that Exists() first told of, any more, or has vanished. Writing again then overwrites or
/// makes it, because by then the caller knows; to the state it stays a change, which a user can be asked about. One
/// that cannot be looked at is not saved.
class StoredText {
public:
    /// `name` is what messages call it.
    StoredText(std::string path, Text name, ItemText coding, FileSaver saver)
        : path_(std::move(path)), form_(std::move(coding), std::move(name)), saver_(std::move(saver))
    {
    }

    const std::string& Path() const { return path_; }
    /// What cannot be looked at is there: reading it tells what is wrong.
    bool Exists();
    StoredState State();
    void AcceptState();
    bool AcceptVersion(TextView version);
    /// Of the file as it is now; none when there is none.
    std::optional<int64_t> Size() const;
    Text Version() const { return known_ ? known_->Version() : Text(); }
    bool IsFolder() const;
    /// No right to write the file, or to make it where it would be.
    bool IsProtected() const;
    Text Read();
    ReadText ReadWhole();
    void Write(const LinewiseText& text, const Elsewhere& elsewhere = kHere);

    StoredForm& Form() { return form_; }

private:
    void WriteNow(const LinewiseText& text);
    void CheckUnchanged();
    /// The text was read from it, written to it, or may take its place.
    void Know(SeenFile seen);

    std::string path_;
    StoredForm form_;
    FileSaver saver_;
    std::optional<SeenFile> known_;
    std::optional<SeenFile> told_; ///< what a write was refused for
};

/// A local file. It takes no lock.
class FileItem : public mvItem {
public:
    FileItem(TextView fileName, bool readOnly, const FileSaver& saver);

    bool Exists() override { return stored_.Exists(); }
    bool IsItem() override { return !DisplayPath().ends_with(u'/') && !stored_.IsFolder(); }
    bool ReadOnly() const override { return readOnly_ || stored_.IsProtected(); }
    void SetReadOnly(bool readOnly) override { readOnly_ = readOnly; }
    StoredState State() override { return stored_.State(); }
    void AcceptState() override { stored_.AcceptState(); }
    bool AcceptVersion(TextView version) override { return stored_.AcceptVersion(version); }
    Text Version() override { return stored_.Version(); }
    StoredForm* Form() override { return &stored_.Form(); }
    std::optional<int64_t> StoredSize() override { return stored_.Size(); }
    std::string StoredFile() const override { return stored_.Path(); }

    Text ReadItem(int32_t, int32_t, int32_t) override { return stored_.Read(); }
    ReadText ReadWhole() override { return stored_.ReadWhole(); }
    void WriteItem(int32_t, int32_t, int32_t, TextView text) override { stored_.Write(LinesIn(text)); }
    void WriteWhole(const LinewiseText& text, const Elsewhere& elsewhere) override { stored_.Write(text, elsewhere); }

private:
    bool readOnly_;
    StoredText stored_;
};

} // namespace nib
