#include "persistence/store/modCheckUnicodeFile.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "persistence/store/modFileReadWrite.h"

#include <cstring>

namespace nib {

namespace {

bool BeginsAsUtf16(FileTransfer& files, TextView path)
{
    const FileTransfer::Handle file = files.OpenFile(path, FileTransfer::Access::Read);
    if (file == 0) return false;
    files.SetFileBinary(file, true);
    unsigned char start[2] = {};
    const bool both = files.ReadFile(file, start, 2) == 2;
    files.CloseFile(file);
    return both && start[0] == 0xFF && start[1] == 0xFE;
}

} // namespace

bool CheckUnicodeFile(FileTransfer& files, TextView path, TextView text)
{
    if (!HasWideChars(text, false)) return false;
    if (BeginsAsUtf16(files, path)) return true;
    int32_t failure = 0;
    const Text old = Guarded(
        DebugLog(), u"CheckUnicodeFile",
        [&] {
            int32_t encoding = file_encoding::kSingleByte;
            return ReadTextFile(files, path, encoding, false);
        },
        [&](const Error& error) {
            failure = error.number;
            return Text();
        });
    // A file that could not be read must not be replaced by an empty one.
    if (failure == 0 || failure == error_number::kFileNotFound) {
        WriteTextFile(files, path, old, file_encoding::kUtf16, true);
    }
    return true;
}

} // namespace nib
