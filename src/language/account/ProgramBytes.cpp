#include "language/account/ProgramBytes.h"

#include "base/Error.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"

#include <cstring>

namespace nib {

namespace {

/// Appends. Numbers take a byte for each seven bits.
class Writer {
public:
    static constexpr bool kReads = false;

    template <typename Number>
    void Integer(const Number& number)
    {
        const auto wide = static_cast<int64_t>(number);
        // Small numbers of either sign are short.
        auto bits = (static_cast<uint64_t>(wide) << 1) ^ static_cast<uint64_t>(wide >> 63);
        for (; bits >= 0x80; bits >>= 7) bytes.push_back(static_cast<char>(bits | 0x80));
        bytes.push_back(static_cast<char>(bits));
    }
    void String(const Text& text)
    {
        const std::string encoded = ToFileName(text);
        Integer(encoded.size());
        bytes += encoded;
    }
    template <typename Item, typename Each>
    void List(const std::vector<Item>& items, Each&& each)
    {
        Integer(items.size());
        for (const Item& item : items) each(item);
    }

    std::string bytes;
};

class Reader {
public:
    static constexpr bool kReads = true;

    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    template <typename Number>
    void Integer(Number& number)
    {
        uint64_t bits = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            const auto byte = static_cast<unsigned char>(Take(1).front());
            bits |= static_cast<uint64_t>(byte & 0x7F) << shift;
            if (byte < 0x80) break;
        }
        const auto wide = static_cast<int64_t>(bits >> 1) ^ -static_cast<int64_t>(bits & 1);
        number = static_cast<Number>(wide);
    }
    void String(Text& text)
    {
        size_t size = 0;
        Integer(size);
        text = FromFileName(Take(size));
    }
    template <typename Item, typename Each>
    void List(std::vector<Item>& items, Each&& each)
    {
        size_t size = 0;
        Integer(size);
        // An item has a byte at least.
        if (size > bytes_.size()) Refuse();
        items.resize(size);
        for (Item& item : items) each(item);
    }
    bool IsAtEnd() const { return bytes_.empty(); }

private:
    [[noreturn]] static void Refuse()
    {
        throw Error(error_number::kStorage, u"What was kept of a program is not whole.");
    }
    std::string_view Take(size_t size)
    {
        if (size > bytes_.size()) Refuse();
        const std::string_view taken = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return taken;
    }

    std::string_view bytes_;
};

/// Places follow one another: each is told from the line of the one before.
template <typename Archive, typename Range>
void Place(Archive& archive, Range& at, int32_t& line)
{
    int32_t lines = at.start.line - line;
    int32_t more = at.end.line - at.start.line;
    int32_t length = at.end.col - at.start.col;
    archive.Integer(lines);
    archive.Integer(at.start.col);
    archive.Integer(length);
    archive.Integer(more);
    if constexpr (Archive::kReads) {
        at.start.line = line + lines;
        at.end = {at.start.col + length, at.start.line + more};
    }
    line = at.start.line;
}

template <typename Archive, typename Entries>
void Outline(Archive& archive, Entries& outline)
{
    int32_t line = 0;
    archive.List(outline, [&](auto& entry) {
        archive.String(entry.name);
        archive.Integer(entry.kind);
        archive.Integer(entry.last);
        archive.Integer(entry.level);
        Place(archive, entry.at, line);
    });
}

template <typename Archive, typename Indices>
void Numbers(Archive& archive, Indices& numbers)
{
    archive.List(numbers, [&](auto& number) { archive.Integer(number); });
}

template <typename Archive, typename Symbols>
void SymbolList(Archive& archive, Symbols& symbols)
{
    archive.List(symbols, [&](auto& symbol) {
        archive.String(symbol.name);
        archive.Integer(symbol.kind);
        archive.Integer(symbol.routine);
        archive.Integer(symbol.item);
        archive.Integer(symbol.dimensions);
        Numbers(archive, symbol.sizes);
        archive.String(symbol.value);
        archive.Integer(symbol.common);
        archive.Integer(symbol.caseSensitive);
    });
}

template <typename Archive, typename Facts>
void Whole(Archive& archive, Facts& program)
{
    SymbolList(archive, program.symbols);
    int32_t line = 0;
    archive.List(program.occurrences, [&](auto& occurrence) {
        Place(archive, occurrence.at, line);
        archive.Integer(occurrence.symbol);
        archive.Integer(occurrence.use);
    });
    archive.List(program.routines, [&](auto& routine) {
        archive.String(routine.name);
        archive.Integer(routine.kind);
        Numbers(archive, routine.parameters);
        archive.Integer(routine.first);
        archive.Integer(routine.last);
        Place(archive, routine.nameAt, line);
        archive.Integer(routine.local);
        archive.Integer(routine.fewer);
    });
    archive.List(program.includes, [&](auto& include) {
        Place(archive, include.at, line);
        archive.String(include.file);
        archive.String(include.item);
        archive.Integer(include.found);
    });
    archive.List(program.calls, [&](auto& call) {
        Place(archive, call.at, line);
        archive.String(call.name);
        archive.Integer(call.arguments);
        archive.Integer(call.routine);
        archive.Integer(call.function);
    });
    archive.List(program.commons, [&](auto& common) {
        archive.String(common.name);
        Place(archive, common.at, line);
        Numbers(archive, common.members);
        archive.Integer(common.item);
    });
    Outline(archive, program.outline);
}

/// With their hash in front, so that what a broken disk has left is not taken for more.
std::string Sealed(const std::string& bytes)
{
    const uint64_t hash = HashBytes(bytes);
    std::string sealed(sizeof hash, '\0');
    std::memcpy(sealed.data(), &hash, sizeof hash);
    return sealed + bytes;
}

std::string_view Unsealed(std::string_view sealed)
{
    uint64_t hash = 0;
    if (sealed.size() >= sizeof hash) {
        std::memcpy(&hash, sealed.data(), sizeof hash);
        sealed.remove_prefix(sizeof hash);
        if (HashBytes(sealed) == hash) return sealed;
    }
    throw Error(error_number::kStorage, u"What was kept of a program is not whole.");
}

} // namespace

std::string BytesOf(const ProgramFacts& program)
{
    Writer writer;
    Whole(writer, program);
    return Sealed(writer.bytes);
}

ProgramFacts ProgramOf(std::string_view bytes)
{
    ProgramFacts program;
    Reader reader(Unsealed(bytes));
    Whole(reader, program);
    return program;
}

std::string BytesOf(const std::vector<OutlineEntry>& outline)
{
    Writer writer;
    Outline(writer, outline);
    return writer.bytes;
}

std::vector<OutlineEntry> OutlineOf(std::string_view bytes)
{
    std::vector<OutlineEntry> outline;
    Reader reader(bytes);
    Outline(reader, outline);
    return outline;
}

} // namespace nib
