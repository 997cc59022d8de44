// Any text as a path: what it names makes a path that names the same.

#include "Fuzz.h"
#include "hosts/mvConnect.h"

using namespace nib;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const Text path = FromUtf8({reinterpret_cast<const char*>(data), size});
    try {
        const ItemPlace place = ParsePath(path);
        const Text composed = ComposeHostPath(place);
        Require(ParsePath(composed) == place);
        Require(IsLocalPath(composed) == (place.provider == kFileProvider));
        Require(!IsHostItemPath(composed) || !IsLocalPath(composed));
        PlaceName(path);
    } catch (const Error& error) {
        Require(!error.description.empty());
    }
    return 0;
}
