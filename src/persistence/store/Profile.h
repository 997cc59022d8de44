#pragma once
#include "base/Text.h"
#include "platform/posix/FileLocks.h"
#include "platform/posix/FileSaver.h"

#include <functional>
#include <optional>

namespace nib {

/// One line of an ini file, taken apart. What is neither a section nor a key is of no interest.
struct IniLine {
    enum class Kind : uint8_t { Other, Section, Key };

    /// A line that begins with one of `comments` is one. `closesLine`: the name of a section ends with the line, else
    /// with the first "]".
    IniLine(TextView line, TextView comments, bool closesLine = false);

    Kind kind = Kind::Other;
    TextView name;
    TextView value; ///< as it stands there, without the blanks around it
};

/// The text of an ini file, edited in place: comments, order, blank lines and everything that is no "key=value" stay as
/// they are. Sections and keys are compared ignoring case. Whatever the bytes, reading them succeeds.
class ProfileFile {
public:
    /// Numbered as in file_encoding.
    enum class Encoding : int32_t { SingleByte = 1, Utf8, Utf16 };

    ProfileFile() = default;
    /// A byte order mark tells the encoding; without one it is `unmarked`.
    explicit ProfileFile(std::string_view bytes, Encoding unmarked = Encoding::SingleByte);

    Encoding Kind() const { return encoding_; }
    /// No answer when a character does not fit into the encoding.
    std::optional<std::string> Bytes() const;

    /// The value without the blanks and one pair of quotes around it. An empty value is a value.
    std::optional<Text> Find(TextView section, TextView key) const;
    /// False, and no change, for a name that would be read back as something else. The value ends at a line break or a
    /// NUL, which no line can hold.
    bool Set(TextView section, TextView key, TextView value);
    void Remove(TextView section, TextView key);

private:
    struct Line;
    class Lines;
    struct Place {
        size_t value = TextView::npos;  ///< where the key's value begins
        size_t end = 0;                 ///< where it ends
        size_t insert = TextView::npos; ///< where a new line of the section goes
    };

    Place Locate(TextView section, TextView key) const;
    void InsertLine(size_t at, TextView line);
    TextView LineBreak() const;

    Encoding encoding_ = Encoding::SingleByte;
    bool marked_ = false; ///< begins with a byte order mark
    Text text_;
};

// How the small files of the settings meet the disk, and single values of ini files. A reader needs no lock, because a
// file is replaced as a whole; a writer reads the file again right before it writes, while it holds the file, so that
// no copy of the program undoes what another one wrote.

struct ProfileDisk {
    FileSaver saver;
    std::chrono::milliseconds patience{500}; ///< with another copy that has the file
    /// Told why something could not be stored, and nothing as soon as it could.
    std::function<void(TextView why)> trouble{};

    FileHold Hold(TextView path) const;
};

/// An empty file where there is none. No answer for what cannot be read or is too large to be a settings file: it must
/// not be written either.
std::optional<ProfileFile> ReadProfile(TextView path,
                                       ProfileFile::Encoding unmarked = ProfileFile::Encoding::SingleByte);
/// The same, and trouble when there is no answer.
std::optional<ProfileFile> ReadOrTell(const ProfileDisk& disk, TextView path,
                                      ProfileFile::Encoding unmarked = ProfileFile::Encoding::SingleByte);
/// False when it could not be brought to disk, which is trouble; the old file is then still whole.
bool WriteProfile(const ProfileDisk& disk, TextView path, const ProfileFile& profile);

// A key with an empty value counts as absent. An alternate file is asked for what the file lacks; empty means that
// there is none.

Text ProfileGetString(TextView section, TextView key, TextView fallback, TextView file, TextView alternateFile = {});
/// The leading number of the value.
int32_t ProfileGetInt(TextView section, TextView key, int32_t fallback, TextView file, TextView alternateFile = {});
/// Keeps only what departs from the alternate file, or without one from the fallback; else the key goes. Failures are
/// forgotten.
void ProfileWriteString(const ProfileDisk& disk, TextView section, TextView key, TextView value, TextView fallback,
                        TextView file, TextView alternateFile = {});

} // namespace nib
