#include "language/server/ClientText.h"

#include <algorithm>
#include <limits>

namespace nib {

namespace {

constexpr bool IsHigh(char16_t c)
{
    return c >= 0xD800 && c < 0xDC00;
}

constexpr bool IsLow(char16_t c)
{
    return c >= 0xDC00 && c < 0xE000;
}

/// UTF-16 units of the character at `col`, and its bytes in UTF-8.
struct Extent {
    int32_t units;
    int32_t bytes;
};

Extent ExtentAt(TextView line, size_t col)
{
    const char16_t c = line[col];
    if (c < 0x80) return {1, 1};
    if (c < 0x800) return {1, 2};
    if (IsHigh(c) && col + 1 < line.size() && IsLow(line[col + 1])) return {2, 4};
    return {1, 3};
}

int64_t ReadNumber(const Json& value)
{
    if (value.is_number_unsigned() && value.get<uint64_t>() > std::numeric_limits<int32_t>::max())
        return std::numeric_limits<int32_t>::max();
    if (!value.is_number_integer() || value.get<int64_t>() < 0)
        throw Error{lsp_error::kInvalidParams, u"A position is no number from 0 on."};
    return value.get<int64_t>();
}

} // namespace

int32_t ToClient(TextView line, int32_t col, Units units)
{
    const size_t end = std::min(line.size(), static_cast<size_t>(std::max(col, 0)));
    if (units == Units::Utf16) return static_cast<int32_t>(end);
    int32_t bytes = 0;
    for (size_t at = 0; at < end;) {
        const Extent extent = ExtentAt(line, at);
        bytes += extent.bytes;
        at += static_cast<size_t>(extent.units);
    }
    return bytes;
}

int32_t FromClient(TextView line, int64_t character, Units units)
{
    const auto length = static_cast<int64_t>(line.size());
    if (units == Units::Utf16) {
        const int64_t col = std::clamp<int64_t>(character, 0, length);
        const auto at = static_cast<size_t>(col);
        const bool split = col > 0 && col < length && IsLow(line[at]) && IsHigh(line[at - 1]);
        return static_cast<int32_t>(split ? col - 1 : col);
    }
    int64_t bytes = 0;
    size_t at = 0;
    while (at < line.size()) {
        const Extent extent = ExtentAt(line, at);
        bytes += extent.bytes;
        if (bytes > character) break;
        at += static_cast<size_t>(extent.units);
    }
    return static_cast<int32_t>(at);
}

ClientText::ClientText(TextView text, Json version, Units units)
    : document_(std::make_unique<SourceDocument>()), version_(std::move(version)), units_(units)
{
    document_->SetText(text);
}

LinesChanged ClientText::Change(const Json& change, bool& clamped)
{
    const Text text = ToText(Member(change, "text"));
    const Json& range = Member(change, "range");
    const int32_t before = LineCount();
    if (range.is_null()) {
        document_->SetText(text);
        return {0, before, LineCount()};
    }
    const TextRange place = ReadRange(range, &clamped);
    document_->BeginGroup();
    document_->DeleteRange(place.start, place.end);
    const Position end = document_->InsertText(place.start, text);
    document_->EndGroup();
    document_->ClearUndo();
    return {place.start.line, place.end.line - place.start.line + 1, end.line - place.start.line + 1};
}

std::vector<Text> ClientText::Lines(int32_t first, int32_t count) const
{
    std::vector<Text> lines;
    lines.reserve(static_cast<size_t>(count));
    for (int32_t line = first; line < first + count; ++line) lines.push_back(Line(line));
    return lines;
}

Position ClientText::Read(const Json& position, bool* clamped) const
{
    const int64_t line = ReadNumber(Member(position, "line"));
    const int64_t character = ReadNumber(Member(position, "character"));
    if (line >= LineCount()) {
        // The end of a text is told as the line behind the last one.
        if (clamped && (line > LineCount() || character > 0)) *clamped = true;
        return document_->End();
    }
    const auto known = static_cast<int32_t>(line);
    Text scratch;
    return {FromClient(document_->LineText(known, scratch), character, units_), known};
}

TextRange ClientText::ReadRange(const Json& range, bool* clamped) const
{
    TextRange read{Read(Member(range, "start"), clamped), Read(Member(range, "end"), clamped)};
    if (read.end < read.start) {
        if (clamped) *clamped = true;
        std::swap(read.start, read.end);
    }
    return read;
}

Json ClientText::Write(Position at) const
{
    Text scratch;
    const Position inside = document_->Clamp(at);
    return {{"line", inside.line},
            {"character", ToClient(document_->LineText(inside.line, scratch), inside.col, units_)}};
}

Json ClientText::Write(const TextRange& range) const
{
    return {{"start", Write(range.start)}, {"end", Write(range.end)}};
}

} // namespace nib
