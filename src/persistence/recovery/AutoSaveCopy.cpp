#include "persistence/recovery/AutoSaveCopy.h"

#include "diagnostics/Guarded.h"
#include "persistence/store/TextFile.h"

#include <algorithm>

namespace nib {

namespace {

/// Half the size for plain text, and still no doubt when it is read: bytes above 7F could be UTF-8 by chance.
int32_t EncodingFor(TextView text)
{
    const bool plain = std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; });
    return plain ? file_encoding::kSingleByte : file_encoding::kUtf16;
}

} // namespace

bool WriteAutoSaveCopy(const FileSaver& saver, TextView path, TextView itemId, TextView text)
{
    return OrDefault(
        [&] {
            Text content;
            content.reserve(itemId.size() + text.size() + 2);
            content.append(itemId).append(u"\r\n").append(text);
            return WriteTextFile(saver, path, content, EncodingFor(content), true);
        },
        false);
}

std::optional<Text> ReadAutoSaveCopy(TextView path)
{
    return OrDefault(
        [&] {
            int32_t encoding = file_encoding::kDetect;
            return std::optional<Text>(ReadTextFile(path, encoding, false));
        },
        std::optional<Text>());
}

} // namespace nib
