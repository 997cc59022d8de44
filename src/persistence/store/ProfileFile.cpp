#include "persistence/store/ProfileFile.h"

#include <algorithm>

namespace nib {

namespace {

constexpr std::string_view kUtf16Mark{"\xFF\xFE"};
constexpr std::string_view kUtf8Mark{"\xEF\xBB\xBF"};
constexpr TextView kBlanks{u" \t"};
constexpr TextView kLineEnds{u"\r\n"};
constexpr TextView kQuotes{u"\"'"};

TextView TrimBlanks(TextView text)
{
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == TextView::npos) return text.substr(text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

TextView Unquote(TextView value)
{
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && kQuotes.find(value.front()) != TextView::npos;
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// Blanks at an end would be trimmed, and quotes taken for ours.
bool NeedsQuotes(TextView value)
{
    const auto isEdge = [](char16_t c) {
        return kBlanks.find(c) != TextView::npos || kQuotes.find(c) != TextView::npos;
    };
    return !value.empty() && (isEdge(value.front()) || isEdge(value.back()));
}

Text Quoted(TextView value)
{
    return NeedsQuotes(value) ? u"\"" + Text(value) + u"\"" : Text(value);
}

char16_t LowerAscii(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

/// Every line of a file is asked this: plain letters are compared without the tables of Unicode.
bool SameName(TextView a, TextView b)
{
    size_t i = 0;
    for (; i < a.size() && i < b.size() && a[i] < 0x80 && b[i] < 0x80; ++i)
        if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
    return i == a.size() || i == b.size() ? a.size() == b.size() : EqualsNoCase(a.substr(i), b.substr(i));
}

bool FitsOneLine(TextView name)
{
    return name.find_first_of(kLineEnds) == TextView::npos && name.find(u'\0') == TextView::npos;
}

bool IsSectionName(TextView name)
{
    return !name.empty() && FitsOneLine(name) && name.find(u']') == TextView::npos;
}

bool IsKeyName(TextView name)
{
    return !name.empty() && FitsOneLine(name) && name.find(u'=') == TextView::npos && name.front() != u'[' &&
           name.front() != u';';
}

} // namespace

/// One line, taken apart. What is neither a section nor a key is of no interest.
struct ProfileFile::Line {
    enum class Kind { Other, Section, Key };

    Line(TextView whole, size_t start, size_t stop) : begin(start), end(stop)
    {
        const TextView line = whole.substr(start, stop - start);
        const TextView trimmed = TrimBlanks(line);
        if (trimmed.empty() || trimmed.front() == u';') return;
        if (trimmed.front() == u'[') {
            const size_t close = trimmed.find(u']');
            if (close == TextView::npos) return;
            kind = Kind::Section;
            name = TrimBlanks(trimmed.substr(1, close - 1));
            return;
        }
        const size_t equals = line.find(u'=');
        if (equals == TextView::npos) return;
        kind = Kind::Key;
        name = TrimBlanks(line.substr(0, equals));
        const TextView content = TrimBlanks(line.substr(equals + 1));
        value = static_cast<size_t>(content.data() - whole.data());
        valueEnd = value + content.size();
    }

    Kind kind = Kind::Other;
    size_t begin;
    size_t end; ///< before the line break
    TextView name;
    size_t value = 0;
    size_t valueEnd = 0;
};

/// Walks the lines of a text; CR, LF and CR LF end one.
class ProfileFile::Lines {
public:
    explicit Lines(TextView text) : text_(text) {}

    bool AtEnd() const { return next_ >= text_.size(); }
    Line Next()
    {
        const size_t begin = next_;
        const size_t end = std::min(text_.find_first_of(kLineEnds, begin), text_.size());
        next_ = end + (text_.substr(end).starts_with(u"\r\n") ? 2 : 1);
        return Line(text_, begin, end);
    }
    /// Behind the break of the line that was answered last.
    size_t Position() const { return std::min(next_, text_.size()); }

private:
    TextView text_;
    size_t next_ = 0;
};

ProfileFile::ProfileFile(std::string_view bytes, Encoding unmarked) : encoding_(unmarked)
{
    marked_ = bytes.starts_with(kUtf16Mark) || bytes.starts_with(kUtf8Mark);
    if (marked_) encoding_ = bytes.starts_with(kUtf16Mark) ? Encoding::Utf16 : Encoding::Utf8;
    if (marked_) bytes.remove_prefix(encoding_ == Encoding::Utf16 ? kUtf16Mark.size() : kUtf8Mark.size());

    const auto unit = [&](size_t i) { return static_cast<char16_t>(static_cast<unsigned char>(bytes[i])); };
    if (encoding_ == Encoding::Utf8) {
        text_ = FromUtf8(bytes);
    } else if (encoding_ == Encoding::SingleByte) {
        text_.resize(bytes.size());
        for (size_t i = 0; i < text_.size(); ++i) text_[i] = unit(i);
    } else {
        text_.resize(bytes.size() / 2);
        for (size_t i = 0; i < text_.size(); ++i) {
            text_[i] = static_cast<char16_t>(unit(2 * i) | unit(2 * i + 1) << 8);
        }
    }
}

std::optional<std::string> ProfileFile::Bytes() const
{
    if (encoding_ == Encoding::Utf8) return (marked_ ? std::string(kUtf8Mark) : std::string()) + ToUtf8(text_);
    std::string bytes;
    if (encoding_ == Encoding::SingleByte) {
        if (std::any_of(text_.begin(), text_.end(), [](char16_t c) { return c > 0xFF; })) return std::nullopt;
        bytes.resize(text_.size());
        std::transform(text_.begin(), text_.end(), bytes.begin(), [](char16_t c) { return static_cast<char>(c); });
        return bytes;
    }
    bytes = kUtf16Mark;
    bytes.reserve(bytes.size() + text_.size() * 2);
    for (char16_t c : text_) {
        bytes.push_back(static_cast<char>(c & 0xFF));
        bytes.push_back(static_cast<char>(c >> 8));
    }
    return bytes;
}

ProfileFile::Place ProfileFile::Locate(TextView section, TextView key) const
{
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    Place place;
    bool inside = false;
    bool first = false; // New keys go to the first of several sections of one name.
    for (Lines lines(text_); !lines.AtEnd();) {
        const Line line = lines.Next();
        if (line.kind == Line::Kind::Section) {
            inside = SameName(line.name, section);
            first = inside && place.insert == TextView::npos;
        }
        // Behind the last key, so that a comment above the next section stays with it.
        if (first && line.kind != Line::Kind::Other) place.insert = lines.Position();
        if (!inside || line.kind != Line::Kind::Key || !SameName(line.name, key)) continue;
        place.value = line.value;
        place.end = line.valueEnd;
        return place;
    }
    return place;
}

std::optional<Text> ProfileFile::Find(TextView section, TextView key) const
{
    const Place place = Locate(section, key);
    if (place.value == TextView::npos) return std::nullopt;
    return Text(Unquote(TextView(text_).substr(place.value, place.end - place.value)));
}

bool ProfileFile::Set(TextView section, TextView key, TextView value)
{
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    if (!IsSectionName(section) || !IsKeyName(key)) return false;
    value = value.substr(0, value.find_first_of(TextView(u"\r\n\0", 3)));

    const Place place = Locate(section, key);
    const Text content = Quoted(value);
    if (place.value != TextView::npos) {
        text_.replace(place.value, place.end - place.value, content);
        return true;
    }
    size_t insert = place.insert;
    if (insert == TextView::npos) {
        InsertLine(text_.size(), u"[" + Text(section) + u"]");
        insert = text_.size();
    }
    InsertLine(insert, Text(key) + u"=" + content);
    return true;
}

void ProfileFile::InsertLine(size_t at, TextView line)
{
    const Text lineBreak(LineBreak());
    Text inserted = Text(line) + lineBreak;
    const bool atLineStart = at == 0 || kLineEnds.find(text_[at - 1]) != TextView::npos;
    if (!atLineStart) inserted.insert(0, lineBreak);
    text_.insert(at, inserted);
}

TextView ProfileFile::LineBreak() const
{
    const size_t at = text_.find_first_of(kLineEnds);
    if (at == Text::npos) return encoding_ == Encoding::Utf8 ? u"\n" : u"\r\n";
    return TextView(text_).substr(at, TextView(text_).substr(at).starts_with(u"\r\n") ? 2 : 1);
}

void ProfileFile::Remove(TextView section, TextView key)
{
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    Text kept;
    size_t copied = 0;
    bool inside = false;
    for (Lines lines(text_); !lines.AtEnd();) {
        const Line line = lines.Next();
        if (line.kind == Line::Kind::Section) inside = SameName(line.name, section);
        if (!inside || line.kind != Line::Kind::Key || !SameName(line.name, key)) continue;
        kept.append(text_, copied, line.begin - copied);
        copied = lines.Position();
    }
    if (copied > 0) text_ = kept.append(text_, copied);
}

} // namespace nib
