// Any file in the folder of recovery copies, under any name; and a copy that was written is read as it was.
// Input: a name, NUL, the bytes.

#include "Fuzz.h"
#include "persistence/recovery/modAutoRecover.h"
#include "persistence/store/TextFile.h"

#include <fstream>

#include <unistd.h>

using namespace nib;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const std::string kFile = "/dev/shm/nib-fuzz-" + std::to_string(getpid());
    Input input(data, size);
    const Text name = FromUtf8(input.Part());
    if (const std::optional<uint32_t> session = SessionOfName(name))
        Require(SessionOfName(AutoSaveName(*session, 7)) == session);
    std::ofstream(kFile, std::ios::binary) << input.rest;
    const std::optional<Text> text = ReadAutoSaveCopy(FromUtf8(kFile));
    Require(text.has_value());
    WriteAutoSaveCopy(FileSaver("/dev/shm"), FromUtf8(kFile), name,
                      {[&](const auto& visit) {
                           visit({text->data(), text->size(), true});
                       },
                       1, text->size()});
    Require(*ReadAutoSaveCopy(FromUtf8(kFile)) == name + u"\r\n" + *text);
    return 0;
}
