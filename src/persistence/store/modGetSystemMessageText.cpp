#include "persistence/store/modGetSystemMessageText.h"

namespace nib {

Text GetSystemMessageText(const FileTransfer& files, int32_t code)
{
    if (code == 0) return u"unknown error (0)";
    Text text = files.SystemMessage(code);
    if (text.empty()) return u"error code 0x" + Hex(code) + u" (no error message available)";
    if (text.ends_with(u"\r\n")) text.pop_back();
    return text;
}

} // namespace nib
