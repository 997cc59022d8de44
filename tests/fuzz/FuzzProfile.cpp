// Any bytes are a readable ini file; a value written to it is read back, and no other value changes. The input: a byte
// for the encoding, a byte each for the lengths of section, key and value, these three, and the file.

#include "persistence/store/Profile.h"
#include "persistence/store/modPersistSettings.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace nib;

Text TakeText(std::string_view& bytes, size_t length)
{
    Text text;
    for (; length > 0 && !bytes.empty(); --length) {
        // Mostly what means something in an ini file, at times a wide character.
        const auto c = static_cast<unsigned char>(bytes.front());
        text.push_back(c >= 0xF0 ? static_cast<char16_t>(0xD7F0 + c * 16) : c);
        bytes.remove_prefix(1);
    }
    return text;
}

size_t TakeByte(std::string_view& bytes)
{
    if (bytes.empty()) return 0;
    const auto value = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    return value;
}

void Check(bool holds)
{
    if (!holds) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto encoding = static_cast<ProfileFile::Encoding>(TakeByte(input) % 3 + 1);
    const size_t sectionLength = TakeByte(input) % 8;
    const size_t keyLength = TakeByte(input) % 8;
    const size_t valueLength = TakeByte(input);
    const Text section = TakeText(input, sectionLength);
    const Text key = TakeText(input, keyLength);
    const Text value = TakeText(input, valueLength);

    ProfileFile file(input, encoding);
    const std::optional<Text> other = file.Find(u"Sec", u"Other");
    const bool isOther = EqualsNoCase(section, u"Sec") && EqualsNoCase(key, u"Other");
    if (file.Set(section, key, value)) {
        const Text expected = value.substr(0, value.find_first_of(TextView(u"\r\n\0", 3)));
        Check(file.Find(section, key) == expected);
        if (const auto bytes = file.Bytes(); bytes && file.Kind() != ProfileFile::Encoding::Utf8) {
            Check(ProfileFile(*bytes, file.Kind()).Find(section, key) == expected);
        }
        Check(isOther || file.Find(u"Sec", u"Other") == other);
        file.Remove(section, key);
        Check(!file.Find(section, key));
        Check(isOther || file.Find(u"Sec", u"Other") == other);
    }

    ProfileFile hive(input, ProfileFile::Encoding::Utf8);
    if (hive.Kind() != ProfileFile::Encoding::Utf8) return 0;
    Check(hive.Set(EncodeHiveName(section), EncodeHiveName(key), EncodeHiveValue(value)));
    const ProfileFile again(*hive.Bytes(), ProfileFile::Encoding::Utf8);
    const auto read = again.Find(EncodeHiveName(section), EncodeHiveName(key));
    Check(read && DecodeHiveValue(*read) == value);
    return 0;
}
