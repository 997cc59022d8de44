#include "hosts/TextCoding.h"

#include "base/Error.h"

#include <algorithm>
#include <memory>

#include <unicode/ucnv.h>

namespace nib {

namespace {

struct ConverterClose {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterClose>;

Converter Open(TextView name)
{
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(ToUtf8(name).c_str(), &status));
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    if (U_FAILURE(status)) return nullptr;
    return converter;
}

std::optional<Text> ToText(UConverter* converter, std::string_view bytes)
{
    UErrorCode status = U_ZERO_ERROR;
    Text out(bytes.size() * 2 + 1, u'\0');
    const int32_t length = ucnv_toUChars(converter, out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                                         static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    out.resize(static_cast<size_t>(length));
    return out;
}

std::optional<std::string> ToBytes(UConverter* converter, TextView text)
{
    UErrorCode status = U_ZERO_ERROR;
    std::string out(text.size() * 8 + 8, '\0');
    const int32_t length = ucnv_fromUChars(converter, out.data(), static_cast<int32_t>(out.size()), text.data(),
                                           static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status)) return std::nullopt;
    out.resize(static_cast<size_t>(length));
    return out;
}

bool IsStateless(UConverterType type)
{
    static constexpr UConverterType kTypes[] = {UCNV_SBCS, UCNV_DBCS, UCNV_MBCS, UCNV_US_ASCII};
    return std::find(std::begin(kTypes), std::end(kTypes), type) != std::end(kTypes);
}

bool KeepsAscii(UConverter* converter)
{
    // Some sets exchange a few control characters, which does no harm.
    Text ascii = u"\t\n\r";
    for (char16_t c = 0x20; c < 0x7F; ++c) ascii.push_back(c);
    return ToBytes(converter, ascii) == ToUtf8(ascii);
}

} // namespace

Charset::Charset(TextView name) : name_(name)
{
    const Converter converter = Open(name);
    if (!converter) throw Error(error_number::kStorage, u"The character set " + name_ + u" is not known.");
    const UConverterType type = ucnv_getType(converter.get());
    if (type == UCNV_LATIN_1) return;
    kind_ = type == UCNV_UTF8 ? Kind::Utf8 : Kind::Named;
    if (kind_ == Kind::Named && !(IsStateless(type) && KeepsAscii(converter.get()))) {
        throw Error(error_number::kStorage, u"The character set " + name_ + u" is not based on ASCII.");
    }
}

std::optional<Text> Charset::Decode(std::string_view bytes) const
{
    const Converter converter = Open(name_);
    std::optional<Text> text = ToText(converter.get(), bytes);
    if (text && ToBytes(converter.get(), *text) != bytes) return std::nullopt;
    return text;
}

std::optional<std::string> Charset::Encode(TextView text) const
{
    return ToBytes(Open(name_).get(), text);
}

} // namespace nib
