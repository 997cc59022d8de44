// Any bytes as a journal and behind a true beginning; and edits by chance, whose journal is cut anywhere: what is read
// is the text as it was when the last whole record was written. Input: two bytes for the cut, the first text, NUL, then
// for each edit two places and what is inserted, NUL.

#include "Fuzz.h"
#include "persistence/recovery/JournalFile.h"
#include "text/SourceDocument.h"

#include <map>

using namespace nib;

namespace {

struct Recorder : BufferListener {
    void TextChanged(const TextChange& change) override
    {
        journal::Change(change.start, change.oldEnd, text.GetRange(change.start, change.newEnd), bytes);
        states[bytes.size()] = text.GetText();
    }
    SourceDocument text;
    std::string bytes;
    std::map<size_t, Text> states; ///< by where the journal of each ends
};

std::optional<Text> TextIn(std::string_view bytes)
{
    return OrDefault([&] { return std::optional(journal::Read(bytes).text); }, std::optional<Text>());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input input(data, size);
    TextIn(input.rest);
    const size_t cut = input.Byte() << 8 | input.Byte();
    const std::string_view first = input.Part();
    const auto* units = reinterpret_cast<const unsigned char*>(first.data());
    Recorder to;
    to.text.SetText(Text(units, units + first.size()));
    journal::Begin({u"path", u"item", u"name", {}, {}}, to.bytes);
    journal::NarrowPiece(first, to.bytes);
    journal::EndOfText(to.bytes);
    to.states[to.bytes.size()] = to.text.GetText();
    to.text.AddListener(&to);
    const auto place = [&] { return Position{static_cast<int32_t>(input.Byte()), static_cast<int32_t>(input.Byte())}; };
    while (!input.rest.empty()) {
        const Position start = place();
        to.text.DeleteRange(start, place());
        to.text.InsertText(start, FromUtf8(input.Part()));
        if (start.line % 4 == 1) to.text.Undo();
    }
    const size_t end = cut % (to.bytes.size() + 1);
    const auto behind = to.states.upper_bound(end);
    const auto expected = behind == to.states.begin() ? std::nullopt : std::optional(std::prev(behind)->second);
    Require(TextIn(std::string_view(to.bytes).substr(0, end)) == expected);
    return 0;
}
