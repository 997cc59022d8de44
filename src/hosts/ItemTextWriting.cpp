// How an item or a local file is written back in the way it was read; part of ItemText.

#include "base/Error.h"
#include "hosts/ItemText.h"
#include "hosts/TextCoding.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <unicode/utf16.h>

namespace nib {

namespace {

constexpr std::string_view kUtf8Mark{"\xEF\xBB\xBF"};
constexpr std::string_view kUtf16LeMark{"\xFF\xFE"};
constexpr std::string_view kUtf16BeMark{"\xFE\xFF"};

bool IsWide(TextCoding coding)
{
    return coding == TextCoding::Utf16Le || coding == TextCoding::Utf16Be;
}

void AppendWide(TextView text, bool bigEndian, std::string& out)
{
    for (char16_t c : text) {
        const char low = static_cast<char>(c & 0xFF);
        const char high = static_cast<char>(c >> 8);
        out.push_back(bigEndian ? high : low);
        out.push_back(bigEndian ? low : high);
    }
}

/// Appends the end of each line, the usual one or its own.
class LineEnds {
public:
    LineEnds(const TextForm& form, const std::vector<OddEnd>& odd)
        : usual_(form.lineEnd), next_(odd.begin()), end_(odd.end())
    {
        for (LineEnd kind : {LineEnd::Lf, LineEnd::CrLf, LineEnd::Cr}) {
            const TextView units = kind == LineEnd::CrLf ? u"\r\n" : kind == LineEnd::Cr ? u"\r" : u"\n";
            if (IsWide(form.coding))
                AppendWide(units, form.coding == TextCoding::Utf16Be, bytes_[static_cast<size_t>(kind)]);
            else
                AppendNarrow(units, bytes_[static_cast<size_t>(kind)]);
        }
    }

    /// In the order of the lines.
    void Append(int64_t line, std::string& out)
    {
        while (next_ != end_ && next_->line < line) ++next_;
        out += bytes_[static_cast<size_t>(next_ != end_ && next_->line == line ? next_->end : usual_)];
    }

private:
    std::string bytes_[3]; ///< by kind
    LineEnd usual_;
    std::vector<OddEnd>::const_iterator next_;
    std::vector<OddEnd>::const_iterator end_;
};

/// The same bytes in each coding that is no UTF-16. In a character set by name only the letters and signs of ASCII are.
bool IsPlain(std::string_view bytes, bool named)
{
    // Eight at a time, each byte by its highest bit: one that is above 7E has it or gets it when 1 is added; one that
    // is below the least does not get it with what takes the least there.
    constexpr uint64_t kOnes = 0x0101010101010101U;
    constexpr uint64_t kHigh = 0x80 * kOnes;
    const uint64_t toHigh = (named ? 0x60 : 0x7F) * kOnes;
    uint64_t other = 0;
    const auto look = [&](uint64_t eight) { other |= (eight | (eight + kOnes) | ~(eight + toHigh)) & kHigh; };
    const auto lookAt = [&](size_t at) {
        uint64_t eight = 0;
        std::memcpy(&eight, bytes.data() + at, sizeof eight);
        look(eight);
    };
    if (bytes.size() < sizeof(uint64_t)) {
        for (char byte : bytes) look(0x20 * (kOnes - 1) + static_cast<unsigned char>(byte));
        return other == 0;
    }
    for (size_t at = 0; at + sizeof(uint64_t) <= bytes.size(); at += sizeof(uint64_t)) lookAt(at);
    lookAt(bytes.size() - sizeof(uint64_t));
    return other == 0;
}

} // namespace

LinewiseText LinesIn(TextView text)
{
    LinewiseText lines;
    lines.walk = [text](const LinewiseText::Visit& visit) {
        ForEachLine(text, true, [&](TextView line, bool) { visit({line.data(), line.size(), true}); });
    };
    lines.units = text.size();
    return lines;
}

std::string ItemText::Encode(const LinewiseText& text, const TextForm& form, TextView name,
                             const std::vector<OddEnd>& odd) const
{
    std::string out;
    // With room for some letters that take more than one byte: a larger string would be one copy more for a moment.
    const size_t units = text.units + text.units / 8 + 2 * static_cast<size_t>(text.count) + 16;
    out.reserve(units * (IsWide(form.coding) ? 2 : 1));
    if (form.byteOrderMark && form.coding == TextCoding::Utf8) out += kUtf8Mark;
    if (form.coding == TextCoding::Utf16Le) out += kUtf16LeMark;
    if (form.coding == TextCoding::Utf16Be) out += kUtf16BeMark;

    LineEnds ends(form, odd);
    int64_t number = 0;
    bool empty = true;
    Text widened;
    // Lines that lie one behind the other as they are to be written, as most of a text that was read do.
    std::string_view run;
    const bool joins = form.lineEnd == LineEnd::Lf && odd.empty();
    text.walk([&](const UnitSpan& line) {
        const std::string_view bytes(static_cast<const char*>(line.data), line.wide ? 0 : line.length);
        const bool plain = !line.wide && !IsWide(form.coding) && IsPlain(bytes, form.coding == TextCoding::Named);
        if (plain && joins && run.data() && bytes.data() == run.data() + run.size() + 1 &&
            run.data()[run.size()] == '\n') {
            run = {run.data(), run.size() + 1 + bytes.size()};
            ++number;
            empty = false;
            return;
        }
        out += std::exchange(run, {});
        if (number > 0) ends.Append(number - 1, out);
        empty = number++ == 0 && line.length == 0;
        if (plain) {
            run = bytes;
            return;
        }
        if (!line.wide) {
            widened.clear();
            line.AppendTo(widened);
        }
        const TextView units16 = line.wide ? TextView(line.Wide(), line.length) : TextView(widened);
        size_t at = 0;
        if (!EncodeLine(units16, form, out, at)) RefuseCharacter(units16, at, number, form, name);
    });
    out += run;
    if (form.finalBreak && (form.breakAlone || !empty)) ends.Append(number - 1, out);
    if (kind_ == Kind::Server) SwapLineMarks(out);
    return out;
}

bool ItemText::EncodeLine(TextView line, const TextForm& form, std::string& out, size_t& at) const
{
    if (form.coding == TextCoding::Named) return EncodeNamed(line, out, at);
    if (IsWide(form.coding)) {
        at = line.find(u'\0');
        AppendWide(line, form.coding == TextCoding::Utf16Be, out);
        return at == TextView::npos;
    }
    const bool utf8 = form.coding == TextCoding::Utf8;
    while (at < line.size()) {
        const size_t ascii = AsciiRun(line.substr(at));
        AppendNarrow(line.substr(at, ascii), out);
        at += ascii;
        if (at == line.size()) break;
        const char16_t c = line[at];
        if (c == 0) return false;
        if (IsItem() && !form.codedMarks && IsMark(c)) {
            out.push_back(static_cast<char>(c & 0xFF));
            ++at;
        } else if (utf8) {
            const size_t length = U16_IS_LEAD(c) && at + 1 < line.size() && U16_IS_TRAIL(line[at + 1]) ? 2 : 1;
            if (length == 1 && U16_IS_SURROGATE(c)) return false;
            out += ToUtf8(line.substr(at, length));
            at += length;
        } else {
            if (c > 0xFF || IsRawMark(static_cast<unsigned char>(c))) return false;
            out.push_back(static_cast<char>(c));
            ++at;
        }
    }
    return true;
}

bool ItemText::EncodeNamed(TextView line, std::string& out, size_t& at) const
{
    const auto holdsMark = [this](std::string_view bytes) {
        for (char c : bytes)
            if (IsRawMark(static_cast<unsigned char>(c))) return true;
        return false;
    };
    const auto takes = [&](TextView piece, std::string& bytes) {
        if (piece.find(u'\0') != TextView::npos) return false;
        std::optional<std::string> encoded = charset_.Encode(piece);
        if (encoded) bytes = std::move(*encoded);
        return encoded && !holdsMark(bytes);
    };
    while (at < line.size()) {
        if (IsItem() && IsMark(line[at])) {
            out.push_back(static_cast<char>(line[at++] & 0xFF));
            continue;
        }
        size_t end = at;
        while (end < line.size() && !(IsItem() && IsMark(line[end]))) ++end;
        std::string bytes;
        if (takes(line.substr(at, end - at), bytes)) {
            out += bytes;
            at = end;
            continue;
        }
        for (; at < end; ++at) {
            const size_t length = U16_IS_LEAD(line[at]) && at + 1 < end && U16_IS_TRAIL(line[at + 1]) ? 2 : 1;
            if (!takes(line.substr(at, length), bytes)) return false;
            at += length - 1;
        }
        return false;
    }
    return true;
}

void ItemText::RefuseCharacter(TextView line, size_t at, int64_t lineNumber, const TextForm& form, TextView name) const
{
    const size_t length = at + 1 < line.size() && U16_IS_LEAD(line[at]) && U16_IS_TRAIL(line[at + 1]) ? 2 : 1;
    const TextView character = line.substr(at, length);
    const int32_t code = length == 2 ? U16_GET_SUPPLEMENTARY(line[at], line[at + 1]) : line[at];
    Text hex = Hex(code);
    if (hex.size() < 4) hex.insert(0, 4 - hex.size(), u'0');
    const Text where = Text(name) + u" cannot be saved: the character " +
                       (code == 0 || U16_IS_SURROGATE(code) ? Text() : Text(character) + u" ") + u"(U+" + hex +
                       u") in line " + Decimal(lineNumber);
    const Text set = form.coding == TextCoding::Named    ? NameOf(form.coding)
                     : form.coding == TextCoding::Latin1 ? Text(u"ISO-8859-1")
                                                         : Text(u"a text");
    const bool mark = IsItem() && form.coding == TextCoding::Latin1 && code >= 0xFB && code <= 0xFF;
    throw Error(error_number::kStorage,
                where + (mark ? u" would be read as a mark in " + set + u"." : u" cannot be held by " + set + u"."));
}

} // namespace nib
