#include "hosts/PlaceName.h"

#include <algorithm>
#include <charconv>

namespace nib {

namespace {

constexpr TextView kLocalPrefix{u"file:"};

/// The levels of a host path are percent-encoded, those of a local one are not.
Text Decoded(TextView level)
{
    const std::string coded = ToUtf8(level);
    std::string bytes;
    for (size_t i = 0; i < coded.size(); ++i) {
        int code = 0;
        const char* digits = coded.data() + i + 1;
        if (coded[i] == '%' && i + 2 < coded.size() &&
            std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
            bytes.push_back(static_cast<char>(code));
            i += 2;
        } else {
            bytes.push_back(coded[i]);
        }
    }
    return FromUtf8(bytes);
}

} // namespace

bool IsLocalPath(TextView path)
{
    return path.starts_with(kLocalPrefix);
}

bool IsHostItemPath(TextView path)
{
    return !IsLocalPath(path) && std::count(path.begin(), path.end(), u'/') == 3;
}

Text PlaceName(TextView path)
{
    const bool local = IsLocalPath(path);
    if (local && path.substr(kLocalPrefix.size()) == u"/") return u"/";
    const TextView name = path.substr(path.find_last_of(u":/") + 1);
    return local ? Text(path.substr(path.rfind(u'/') + 1)) : Decoded(name);
}

} // namespace nib
