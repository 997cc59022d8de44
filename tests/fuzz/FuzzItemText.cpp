// Any bytes of an item or a local file: refused, or a text that is written back byte for byte.
// Input: a byte of options, then the bytes.

#include "Fuzz.h"
#include "hosts/ItemText.h"

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
    return 0;
}
