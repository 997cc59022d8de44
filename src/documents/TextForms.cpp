#include "documents/TextForms.h"

#include <algorithm>

namespace nib {

Text NormalizeLineEnds(TextView text)
{
    if (std::count(text.begin(), text.end(), u'\r') == std::count(text.begin(), text.end(), u'\n')) return Text(text);
    return Replace(Replace(Replace(text, u"\r\n", u"\n"), u"\r", u"\n"), u"\n", u"\r\n");
}

} // namespace nib
