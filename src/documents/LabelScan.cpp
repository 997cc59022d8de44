#include "documents/LabelScan.h"

#include "text/Units.h"

namespace nib {

namespace {
using units::IsDigit;
using units::IsLetter;

bool IsNamePart(char16_t c)
{
    return IsDigit(c) || IsLetter(c) || c == u'$' || c == u'.' || c == u'_';
}
} // namespace

Label ScanLabel(TextView text, int32_t line)
{
    size_t start = text.find_first_not_of(u' ');
    if (start == TextView::npos) return {};
    auto belongs = IsDigit(text[start]) ? IsDigit : IsLetter(text[start]) ? IsNamePart : nullptr;
    if (!belongs) return {};
    size_t end = start;
    while (end < text.size() && belongs(text[end])) ++end;
    return {Text(text.substr(start, end - start)), line, static_cast<int32_t>(start)};
}

} // namespace nib
