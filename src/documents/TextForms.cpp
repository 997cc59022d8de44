#include "documents/TextForms.h"

#include <algorithm>

namespace nib {

Text ExpandTabs(TextView text, int32_t width)
{
    if (text.find(u'\t') == TextView::npos) return Text(text);
    return Replace(text, u"\t", Text(static_cast<size_t>(std::max(width, 1)), u' '));
}

Text NormalizeLineEnds(TextView text)
{
    if (std::count(text.begin(), text.end(), u'\r') == std::count(text.begin(), text.end(), u'\n')) return Text(text);
    return Replace(Replace(Replace(text, u"\r\n", u"\n"), u"\r", u"\n"), u"\n", u"\r\n");
}

} // namespace nib
