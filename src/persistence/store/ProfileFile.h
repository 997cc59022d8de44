#pragma once
#include "base/Text.h"

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

} // namespace nib
