// Any bytes of an item or a local file: refused, or a text that is written back byte for byte; the same text when the
// document keeps the bytes.
// Input: a byte of options, then the bytes.

#include "Fuzz.h"
#include "hosts/ItemText.h"
#include "text/SourceDocument.h"

using namespace nib;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Charset kCharsets[] = {Charset(), Charset(u"UTF-8"), Charset(u"windows-1252"), Charset(u"Shift_JIS")};
    Input input(data, size);
    const size_t options = input.Byte();
    const ItemText coding =
        options & 1 ? ItemText::ForFiles() : ItemText::ForItems(kCharsets[options >> 1 & 3], options & 8);
    TextForm form;
    std::vector<OddEnd> odd;
    Text text;
    try {
        text = coding.Decode(input.rest, form, u"item", &odd);
    } catch (const Error&) {
        return 0;
    }
    Require(coding.Encode(text, form, u"item", odd) == input.rest);

    const auto owner = std::make_shared<std::string>(input.rest);
    ReadText read = coding.Read({owner, owner->data(), owner->size(), nullptr}, form, u"item", &odd);
    if (auto* bytes = std::get_if<ByteText>(&read)) {
        SourceDocument document;
        Require(document.SetText(std::move(*bytes), 3) == TabsOf(text, 3));
        Require(document.GetText() == ExpandTabs(text, 3));
    }
    return 0;
}
