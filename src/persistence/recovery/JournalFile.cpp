#include "persistence/recovery/JournalFile.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"
#include "text/SourceDocument.h"

#include <algorithm>
#include <vector>

namespace nib {

namespace {

constexpr std::string_view kMagic = "Nib journal 1\n";
constexpr size_t kFrame = 9; ///< of a record, round its body

enum class Kind : char { Head = 'H', Piece = 'T', TextEnd = 'E', Change = 'C', Copy = 'N' };

constexpr Text JournalHead::*kHeadParts[] = {&JournalHead::path, &JournalHead::itemId, &JournalHead::name,
                                             &JournalHead::version, &JournalHead::copy};

[[noreturn]] void RefuseTorn()
{
    throw Error(error_number::kStorage, u"The journal is not whole.");
}

uint32_t SumOf(std::string_view bytes)
{
    const uint64_t hash = HashBytes(bytes);
    return static_cast<uint32_t>(hash ^ hash >> 32);
}

void PutNumber(uint32_t number, std::string& out)
{
    for (int shift = 0; shift < 32; shift += 8) out.push_back(static_cast<char>(number >> shift & 0xFF));
}

void PutPlace(Position place, std::string& out)
{
    PutNumber(static_cast<uint32_t>(place.col), out);
    PutNumber(static_cast<uint32_t>(place.line), out);
}

void PutText(TextView text, std::string& out)
{
    const bool narrow = std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x100; });
    out.push_back(narrow ? '1' : '2');
    PutNumber(static_cast<uint32_t>(text.size()), out);
    const size_t at = out.size();
    out.resize(at + text.size() * (narrow ? 1 : 2));
    char* to = out.data() + at;
    for (char16_t c : text) {
        *to++ = static_cast<char>(c & 0xFF);
        if (!narrow) *to++ = static_cast<char>(c >> 8);
    }
}

/// Frames what `body` appends.
template <typename Body>
void PutRecord(Kind kind, std::string& out, Body&& body)
{
    const size_t start = out.size();
    out.push_back(static_cast<char>(kind));
    PutNumber(0, out);
    const size_t from = out.size();
    body();
    std::string length;
    PutNumber(static_cast<uint32_t>(out.size() - from), length);
    out.replace(start + 1, length.size(), length);
    PutNumber(SumOf(std::string_view(out).substr(start)), out);
}

/// Cuts values off the front of bytes; throws when these are too short.
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    bool AtEnd() const { return bytes_.empty(); }
    std::string_view Take(size_t count)
    {
        if (count > bytes_.size()) RefuseTorn();
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        return taken;
    }
    uint32_t Number()
    {
        uint32_t number = 0;
        int shift = 0;
        for (char c : Take(4)) {
            number |= static_cast<uint32_t>(static_cast<unsigned char>(c)) << shift;
            shift += 8;
        }
        return number;
    }
    Position Place()
    {
        const auto col = static_cast<int32_t>(Number());
        return {col, static_cast<int32_t>(Number())};
    }
    void AppendText(Text& text)
    {
        const bool narrow = Take(1) == "1";
        const size_t size = Number();
        const std::string_view units = Take(narrow ? size : size * 2);
        for (size_t i = 0; i < units.size(); i += narrow ? 1 : 2) {
            const auto low = static_cast<unsigned char>(units[i]);
            const auto high = static_cast<unsigned char>(narrow ? '\0' : units[i + 1]);
            text.push_back(static_cast<char16_t>(low | high << 8));
        }
    }
    Text String()
    {
        Text text;
        AppendText(text);
        return text;
    }
    /// The next record's kind and body.
    std::pair<Kind, Reader> Record()
    {
        const std::string_view rest = bytes_;
        Take(1);
        const std::string_view body = Take(Number());
        if (Number() != SumOf(rest.substr(0, body.size() + kFrame - 4))) RefuseTorn();
        return {static_cast<Kind>(rest.front()), Reader(body)};
    }

private:
    std::string_view bytes_;
};

void ApplyChange(Reader body, SourceDocument& text)
{
    const Position start = body.Place();
    const Position oldEnd = body.Place();
    const Text inserted = body.String();
    text.DeleteRange(start, oldEnd);
    text.InsertText(start, inserted);
    text.ClearUndo();
}

JournalHead ReadBeginning(Reader& reader, SourceDocument& text)
{
    JournalHead head;
    auto [kind, parts] = reader.Record();
    if (kind != Kind::Head) RefuseTorn();
    for (Text JournalHead::*part : kHeadParts) head.*part = parts.String();
    Text copied;
    std::vector<Reader> changes;
    for (;;) {
        auto [next, body] = reader.Record();
        if (next == Kind::TextEnd) break;
        if (next == Kind::Piece) body.AppendText(copied);
        if (next == Kind::Copy) head.copy = body.String();
        if (next == Kind::Change) changes.push_back(body);
    }
    text.SetText(copied);
    for (const Reader& change : changes) ApplyChange(change, text);
    return head;
}

/// Records of kinds that a later release may write are passed over.
void Follow(Reader& reader, JournalHead& head, SourceDocument& text)
{
    while (!reader.AtEnd()) {
        auto [kind, body] = reader.Record();
        if (kind == Kind::Copy) head.copy = body.String();
        if (kind == Kind::Change) ApplyChange(body, text);
    }
}

} // namespace

void journal::Begin(const JournalHead& head, std::string& out)
{
    out += kMagic;
    PutRecord(Kind::Head, out, [&] {
        for (Text JournalHead::*part : kHeadParts) PutText(head.*part, out);
    });
}

void journal::TextPiece(TextView text, std::string& out)
{
    PutRecord(Kind::Piece, out, [&] { PutText(text, out); });
}

void journal::NarrowPiece(std::string_view text, std::string& out)
{
    out.reserve(out.size() + text.size() + 2 * kFrame);
    PutRecord(Kind::Piece, out, [&] {
        out.push_back('1');
        PutNumber(static_cast<uint32_t>(text.size()), out);
        out += text;
    });
}

void journal::EndOfText(std::string& out)
{
    PutRecord(Kind::TextEnd, out, [] {});
}

void journal::Change(Position start, Position oldEnd, TextView inserted, std::string& out)
{
    PutRecord(Kind::Change, out, [&] {
        PutPlace(start, out);
        PutPlace(oldEnd, out);
        PutText(inserted, out);
    });
}

void journal::CopyName(TextView copy, std::string& out)
{
    PutRecord(Kind::Copy, out, [&] { PutText(copy, out); });
}

JournalText journal::Read(std::string_view bytes)
{
    if (!bytes.starts_with(kMagic)) throw Error(error_number::kStorage, u"This is no journal.");
    Reader reader(bytes.substr(kMagic.size()));
    SourceDocument text;
    JournalText found{ReadBeginning(reader, text), {}};
    try {
        Follow(reader, found.head, text);
    } catch (const Error&) {
        // The machine stopped while this was written; what is before it is whole.
    }
    found.text = text.GetText();
    return found;
}

} // namespace nib
