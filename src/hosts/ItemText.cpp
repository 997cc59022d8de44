#include "hosts/ItemText.h"

#include "base/Error.h"
#include "base/Text.h"
#include "hosts/TextCoding.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace nib {

namespace {

constexpr std::string_view kUtf8Mark{"\xEF\xBB\xBF"};
constexpr std::string_view kUtf16LeMark{"\xFF\xFE"};
constexpr std::string_view kUtf16BeMark{"\xFE\xFF"};

struct Utf8Shape {
    bool valid = true;
    bool ascii = true;
    bool rawMarks = false;
    bool codedMarks = false;
};

Utf8Shape ShapeOf(std::string_view bytes, bool marksAllowed)
{
    Utf8Shape shape;
    const auto size = static_cast<int64_t>(bytes.size());
    for (auto i = static_cast<int64_t>(AsciiRun(bytes)); i < size && shape.valid;
         i += static_cast<int64_t>(AsciiRun(bytes.substr(static_cast<size_t>(i))))) {
        if (marksAllowed && static_cast<unsigned char>(bytes[static_cast<size_t>(i)]) >= 0xFB) {
            shape.rawMarks = true;
            ++i;
            continue;
        }
        UChar32 c = 0;
        U8_NEXT(bytes.data(), i, size, c);
        shape.ascii = false;
        if (c < 0) shape.valid = false;
        if (c >= kTextMark && c <= kItemMark) shape.codedMarks = true;
    }
    return shape;
}

/// Only for bytes that are known to be valid, marks apart.
char16_t* WidenUtf8(std::string_view bytes, char16_t* out)
{
    while (!bytes.empty()) {
        const size_t ascii = AsciiRun(bytes);
        out = Widen(bytes.substr(0, ascii), out);
        bytes.remove_prefix(ascii);
        if (bytes.empty()) break;
        if (static_cast<unsigned char>(bytes.front()) >= 0xFB) {
            out = WidenWithMarks(bytes.substr(0, 1), out);
            bytes.remove_prefix(1);
            continue;
        }
        size_t i = 0;
        UChar32 c = 0;
        U8_NEXT_UNSAFE(bytes.data(), i, c);
        if (U_IS_SUPPLEMENTARY(c)) *out++ = U16_LEAD(c);
        *out++ = U_IS_SUPPLEMENTARY(c) ? U16_TRAIL(c) : static_cast<char16_t>(c);
        bytes.remove_prefix(i);
    }
    return out;
}

template <typename WidenLine>
Text WidenLines(std::string_view bytes, WidenLine widen)
{
    // No line grows when it is widened, and a break becomes two units.
    Text text(bytes.size() + MostBreaks(bytes), u'\0');
    char16_t* out = text.data();
    ForEachLine(bytes, HasCr(bytes), [&](std::string_view line, bool broken) {
        out = widen(line, out);
        if (!broken) return;
        *out++ = u'\r';
        *out++ = u'\n';
    });
    text.resize(static_cast<size_t>(out - text.data()));
    return text;
}

template <typename Unit>
void ReadBreaks(std::basic_string_view<Unit> text, TextForm& form, std::vector<OddEnd>* odd)
{
    form.lineEnd = LineEnd::Lf;
    if (!HasCr(text)) return;
    const BreakCount breaks = CountBreaks(text);
    form.lineEnd = breaks.Usual();
    if (odd && breaks.Mixed()) *odd = FindOddEnds(text, form.lineEnd);
}

[[noreturn]] void RefuseNul(TextView name)
{
    throw Error(error_number::kStorage, Text(name) + u" is not a text: it holds NUL bytes.");
}

} // namespace

TextCoding ItemText::CharsetCoding() const
{
    switch (charset_.GetKind()) {
    case Charset::Kind::Utf8: return TextCoding::Utf8;
    case Charset::Kind::Named: return TextCoding::Named;
    case Charset::Kind::Latin1: break;
    }
    return TextCoding::Latin1;
}

std::vector<TextCoding> ItemText::Codings() const
{
    if (!IsItem()) return {TextCoding::Utf8, TextCoding::Utf16Le, TextCoding::Utf16Be, TextCoding::Latin1};
    const TextCoding own = CharsetCoding();
    return own == TextCoding::Utf8 ? std::vector{own} : std::vector{TextCoding::Utf8, own};
}

Text ItemText::NameOf(TextCoding coding) const
{
    switch (coding) {
    case TextCoding::Utf8: return u"UTF-8";
    case TextCoding::Utf16Le: return u"UTF-16 LE";
    case TextCoding::Utf16Be: return u"UTF-16 BE";
    case TextCoding::Latin1: return u"Latin-1";
    case TextCoding::Named: break;
    }
    return charset_.Name();
}

TextForm ItemText::NewForm() const
{
    TextForm form;
    if (configured_) form.coding = CharsetCoding();
    form.finalBreak = kind_ == Kind::Item;
    return form;
}

void ItemText::SwapLineMarks(std::span<char> bytes)
{
    for (char& byte : bytes) {
        if (byte == '\xFE')
            byte = '\n';
        else if (byte == '\n')
            byte = '\xFE';
    }
}

Text ItemText::Decode(std::string_view bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd) const
{
    if (kind_ != Kind::Server) return DecodeLines(bytes, form, name, odd);
    std::string lines(bytes);
    SwapLineMarks(lines);
    return DecodeLines(lines, form, name, odd);
}

ReadText ItemText::Read(ByteText bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd) const
{
    if (kind_ == Kind::Server) SwapLineMarks({bytes.data, bytes.size});
    std::string_view lines = bytes.Bytes();
    Text text;
    bytes.widen = Look(lines, form, name, odd, text);
    if (!bytes.widen) return text;
    bytes.data += lines.data() - bytes.data;
    bytes.size = lines.size();
    return bytes;
}

Text ItemText::DecodeLines(std::string_view bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd) const
{
    Text text;
    const WidenLine widen = Look(bytes, form, name, odd, text);
    return widen ? WidenLines(bytes, widen) : text;
}

ItemText::WidenLine ItemText::Look(std::string_view& bytes, TextForm& form, TextView name, std::vector<OddEnd>* odd,
                                   Text& text) const
{
    form = NewForm();
    if (odd) odd->clear();
    if (DecodeWide(bytes, form, text, odd)) {
        if (text.find(u'\0') != Text::npos) RefuseNul(name);
        return nullptr;
    }
    if (bytes.find('\0') != std::string_view::npos) RefuseNul(name);

    if (ChooseUtf8(bytes, form)) {
        form.byteOrderMark = bytes.starts_with(kUtf8Mark);
        if (form.byteOrderMark) bytes.remove_prefix(kUtf8Mark.size());
    }
    ReadBreaks(bytes, form, odd);
    if (kind_ == Kind::Item) bytes = TakeFinalBreak(bytes, form);
    if (form.coding == TextCoding::Named) {
        if (DecodeNamed(bytes, text)) return nullptr;
        form.coding = TextCoding::Latin1;
    }
    if (form.coding == TextCoding::Utf8) return WidenUtf8;
    return IsItem() ? WidenWithMarks : Widen;
}

bool ItemText::DecodeWide(std::string_view bytes, TextForm& form, Text& text, std::vector<OddEnd>* odd) const
{
    const bool little = bytes.starts_with(kUtf16LeMark);
    if (IsItem() || bytes.size() % 2 != 0 || !(little || bytes.starts_with(kUtf16BeMark))) return false;
    Text units(bytes.size() / 2 - 1, u'\0');
    for (size_t i = 0; i < units.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[i * 2 + 2]);
        const auto second = static_cast<unsigned char>(bytes[i * 2 + 3]);
        units[i] = static_cast<char16_t>(little ? first | second << 8 : second | first << 8);
    }
    ReadBreaks(TextView(units), form, odd);
    form.coding = little ? TextCoding::Utf16Le : TextCoding::Utf16Be;
    form.byteOrderMark = true;
    text.reserve(units.size() + MostBreaks(TextView(units)));
    ForEachLine(TextView(units), HasCr(TextView(units)), [&](TextView line, bool broken) {
        text.append(line);
        if (broken) text.append(u"\r\n");
    });
    return true;
}

/// Sets the form's coding; plain ASCII is left as a new text would be written.
bool ItemText::ChooseUtf8(std::string_view bytes, TextForm& form) const
{
    const Utf8Shape shape = ShapeOf(bytes, IsItem());
    if (shape.valid && shape.ascii) return false;
    // Marks in both forms could not be told apart when they are written back.
    const bool utf8 = shape.valid && !(shape.rawMarks && shape.codedMarks);
    form.codedMarks = IsItem() && utf8 && shape.codedMarks;
    form.coding = utf8 ? TextCoding::Utf8 : IsItem() ? CharsetCoding() : TextCoding::Latin1;
    if (!utf8 && form.coding == TextCoding::Utf8) form.coding = TextCoding::Latin1;
    return utf8;
}

std::string_view ItemText::TakeFinalBreak(std::string_view bytes, TextForm& form) const
{
    form.breakAlone = bytes == "\n" || bytes == "\r\n";
    // An empty item gets a line feed with its first line, as a new one does.
    form.finalBreak = bytes.empty() || bytes.ends_with('\n');
    if (bytes.ends_with('\n')) bytes.remove_suffix(bytes.ends_with("\r\n") ? 2 : 1);
    return bytes;
}

bool ItemText::DecodeNamed(std::string_view bytes, Text& text) const
{
    bool whole = true;
    ForEachLine(bytes, true, [&](std::string_view line, bool broken) {
        whole = whole && DecodeNamedLine(line, text);
        if (broken) text.append(u"\r\n");
    });
    return whole;
}

bool ItemText::DecodeNamedLine(std::string_view line, Text& text) const
{
    while (!line.empty()) {
        size_t end = 0;
        while (end < line.size() && !IsRawMark(static_cast<unsigned char>(line[end]))) ++end;
        const std::optional<Text> piece = end == 0 ? Text() : charset_.Decode(line.substr(0, end));
        if (!piece) return false;
        text += *piece;
        if (end < line.size()) text.push_back(static_cast<char16_t>(0xF800 | static_cast<unsigned char>(line[end++])));
        line.remove_prefix(end);
    }
    return true;
}

} // namespace nib
