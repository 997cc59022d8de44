#include "persistence/recovery/AutoSaveName.h"

namespace nib {

namespace {

constexpr size_t kSessionDigits = 8;
constexpr size_t kNumberDigits = 3;

Text PadLeft(Text digits, size_t width)
{
    if (digits.size() < width) digits.insert(0, width - digits.size(), u'0');
    return digits;
}

int32_t DigitOf(char16_t c)
{
    if (c >= u'0' && c <= u'9') return c - u'0';
    const auto letter = static_cast<char16_t>(c & ~0x20);
    return letter >= u'A' && letter <= u'F' ? letter - u'A' + 10 : -1;
}

} // namespace

Text SessionDigits(uint32_t session)
{
    return PadLeft(Hex(static_cast<int32_t>(session)), kSessionDigits);
}

Text AutoSaveName(uint32_t session, int32_t number)
{
    return SessionDigits(session) + u"." + PadLeft(Decimal(number), kNumberDigits);
}

std::optional<uint32_t> SessionOfName(TextView name)
{
    uint64_t number = 0;
    for (char16_t c : name.substr(0, name.find(u'.'))) {
        const int32_t digit = DigitOf(c);
        if (digit < 0) break;
        number = number * 16 + static_cast<uint64_t>(digit);
        if (number > UINT32_MAX) return std::nullopt;
    }
    return static_cast<uint32_t>(number);
}

} // namespace nib
