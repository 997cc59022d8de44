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

LabelAt ScanLabel(TextView line)
{
    size_t start = line.find_first_not_of(u' ');
    if (start == TextView::npos) return {};
    auto belongs = IsDigit(line[start]) ? IsDigit : IsLetter(line[start]) ? IsNamePart : nullptr;
    if (!belongs) return {};
    size_t end = start;
    while (end < line.size() && belongs(line[end])) ++end;
    return {line.substr(start, end - start), static_cast<int32_t>(start)};
}

} // namespace nib
