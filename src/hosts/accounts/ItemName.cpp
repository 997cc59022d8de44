#include "hosts/accounts/ItemName.h"

#include "base/Error.h"
#include "platform/posix/FileName.h"

#include <climits>

#include <sys/stat.h>

namespace nib {

namespace {

bool IsKept(unsigned char c, size_t at)
{
    return c >= 0x20 && c != 0x7F && c != '/' && c != '%' && (c != '.' || at > 0);
}

bool Exists(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

bool IsPlainName(std::string_view name)
{
    return !name.empty() && name.front() != '.' && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

} // namespace

std::string EncodeName(TextView id)
{
    return PercentEncode(ToFileName(id), IsKept);
}

std::string LockName(TextView file, TextView item)
{
    return EncodeName(file) + "%%" + EncodeName(item);
}

std::optional<Text> DecodeName(std::string_view name)
{
    if (!IsPlainName(name)) return std::nullopt;
    const std::optional<std::string> bytes = PercentDecode(name);
    if (!bytes) return FromFileName(name);
    Text id = FromFileName(*bytes);
    return EncodeName(id) == name ? id : FromFileName(name);
}

std::string FindName(const std::string& folder, TextView id)
{
    std::string name = EncodeName(id);
    if (name.size() > NAME_MAX) {
        throw Error(error_number::kBadFileName, u"The name \"" + Text(id.substr(0, 40)) + u"...\" is too long: " +
                                                    Decimal(static_cast<int64_t>(name.size())) + u" of " +
                                                    Decimal(NAME_MAX) + u" bytes.");
    }
    const std::string plain = ToFileName(id);
    if (plain != name && IsPlainName(plain) && !Exists(folder + "/" + name) && Exists(folder + "/" + plain)) {
        return plain;
    }
    return name;
}

} // namespace nib
