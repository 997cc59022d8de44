// Any bytes as a journal; and true records of any places, in the text or not, cut anywhere behind the beginning. What
// is read of uncut ones JournalTest looks at. Input: two bytes for the cut, the first text, NUL, then for each change
// two places and what is inserted, NUL.

#include "Fuzz.h"
#include "diagnostics/Guarded.h"
#include "persistence/recovery/JournalFile.h"

using namespace nib;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input input(data, size);
    IgnoringErrors([&] { journal::Read(input.rest); });
    const size_t cut = input.Byte() << 8 | input.Byte();
    std::string bytes;
    journal::Begin({u"path", u"item", u"name", {}, {}}, bytes);
    journal::NarrowPiece(input.Part(), bytes);
    journal::EndOfText(bytes);
    const size_t beginning = bytes.size();
    const auto place = [&] { return Position{static_cast<int8_t>(input.Byte()), static_cast<int8_t>(input.Byte())}; };
    while (!input.rest.empty()) {
        const Position start = place();
        journal::Change(start, place(), FromUtf8(input.Part()), bytes);
    }
    const size_t end = beginning + cut % (bytes.size() - beginning + 1);
    Require(journal::Read(std::string_view(bytes).substr(0, end)).head.name == u"name");
    return 0;
}
