#pragma once
// The bytes of an item or a local file as the text that is edited, and back in the way they were read.
//
// Items in files: lines are attributes, and the line feed after the last one is no part of the text. The bytes FB to FF
// are the marks. What remains is UTF-8 if it is valid as such, else the connection's character set.
// Items of a server: the same with FE between the lines, none of which is left out. A line feed within a line is shown
// in the place that FE has left free, as the attribute mark.
// Local files: UTF-8, UTF-16 with a byte order mark, else Latin-1 with all its letters; every line feed is text.

#include "base/ByteText.h"
#include "base/LinewiseText.h"
#include "hosts/TextCoding.h"

#include <span>
#include <string>
#include <string_view>

namespace nib {

enum class TextCoding : uint8_t { Utf8, Utf16Le, Utf16Be, Latin1, Named };

/// How a text stood in storage.
struct TextForm {
    TextCoding coding = TextCoding::Utf8;
    LineEnd lineEnd = LineEnd::Lf; ///< of most lines, and of new ones
    bool byteOrderMark = false;
    bool finalBreak = false; ///< items: a line feed follows the last line
    bool breakAlone = false; ///< items: it does so even when there is no text at all
    bool codedMarks = false; ///< items: marks are written as UTF-8 and not as single bytes
};

/// Of a text that outlives them, with breaks of any kind.
LinewiseText LinesIn(TextView text);

class ItemText {
public:
    static ItemText ForFiles() { return {Kind::File, Charset(), false}; }
    /// `configured`: new items are written in the character set too, not in UTF-8.
    static ItemText ForItems(Charset charset, bool configured) { return {Kind::Item, std::move(charset), configured}; }
    static ItemText ForServer(Charset charset, bool configured)
    {
        return {Kind::Server, std::move(charset), configured};
    }

    TextForm NewForm() const;
    /// The text with CR LF between lines. Throws Error for what is not a text; `name` is for the user to read. `odd`
    /// takes the ends that differ from the form's, that of a last line of an item too.
    Text Decode(std::string_view bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd = nullptr) const;
    /// The same where the bytes may be taken, which spares copies.
    ReadText Read(ByteText bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd = nullptr) const;
    /// Throws Error naming the character and the line when the form cannot hold the text. `odd` in order of the lines.
    std::string Encode(const LinewiseText& text, const TextForm& form, TextView name,
                       const std::vector<OddEnd>& odd = {}) const;
    std::string Encode(TextView text, const TextForm& form, TextView name, const std::vector<OddEnd>& odd = {}) const
    {
        return Encode(LinesIn(text), form, name, odd);
    }
    /// Both are items or both files.
    bool IsLike(const ItemText& other) const { return IsItem() == other.IsItem(); }
    /// What the one has read, the other can write as it stood.
    bool SharesForms(const ItemText& other) const
    {
        return kind_ == other.kind_ && charset_.Name() == other.charset_.Name();
    }
    /// What a text may be written in: that of the connection, if it has one, is the last.
    std::vector<TextCoding> Codings() const;
    /// For the user to read.
    Text NameOf(TextCoding coding) const;
    /// A new text may take the line ends of another one.
    bool HasLineEnds() const { return kind_ != Kind::Server; }

private:
    enum class Kind : uint8_t { File, Item, Server };

    ItemText(Kind kind, Charset charset, bool configured)
        : kind_(kind), configured_(configured), charset_(std::move(charset))
    {
    }
    bool IsItem() const { return kind_ != Kind::File; }
    using WidenLine = char16_t* (*)(std::string_view, char16_t*);

    /// Between the bytes of a server's item and lines that end in line feeds, either way.
    static void SwapLineMarks(std::span<char> bytes);
    Text DecodeLines(std::string_view bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd) const;
    /// How the lines are widened that `bytes` then holds; null when they are no such lines, and `text` is all of it.
    WidenLine Look(std::string_view& bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd, Text& text) const;
    TextCoding CharsetCoding() const;
    bool IsRawMark(unsigned char byte) const { return IsItem() && byte >= 0xFB; }
    /// True when it was UTF-16.
    bool DecodeWide(std::string_view bytes, TextForm& form, Text& text, std::vector<OddEnd>* odd) const;
    bool ChooseUtf8(std::string_view bytes, TextForm& form) const;
    std::string_view TakeFinalBreak(std::string_view bytes, TextForm& form) const;
    bool DecodeNamed(std::string_view bytes, Text& text) const;
    bool DecodeNamedLine(std::string_view line, Text& text) const;
    /// Both append a line; false at the character that cannot be written, which is then named by `at`.
    bool EncodeLine(TextView line, const TextForm& form, std::string& out, size_t& at) const;
    bool EncodeNamed(TextView line, std::string& out, size_t& at) const;
    [[noreturn]] void RefuseCharacter(TextView line, size_t at, int64_t lineNumber, const TextForm& form,
                                      TextView name) const;

    Kind kind_;
    bool configured_;
    Charset charset_;
};

} // namespace nib
