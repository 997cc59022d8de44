// Any bytes are a readable ini file; a value written to it is read back, and no other value changes. The input: a byte
// for the encoding, a byte each for the lengths of section, key and value, these three, and the file.

#include "Fuzz.h"
#include "persistence/store/Profile.h"
#include "persistence/store/modPersistSettings.h"

#include <algorithm>

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Input bytes(data, size);
    const auto encoding = static_cast<ProfileFile::Encoding>(bytes.Byte() % 3 + 1);
    const size_t sectionLength = bytes.Byte() % 8;
    const size_t keyLength = bytes.Byte() % 8;
    const size_t valueLength = bytes.Byte();
    std::string_view& input = bytes.rest;
    const Text section = TakeText(input, sectionLength);
    const Text key = TakeText(input, keyLength);
    const Text value = TakeText(input, valueLength);

    ProfileFile file(input, encoding);
    const std::optional<Text> other = file.Find(u"Sec", u"Other");
    const bool isOther = EqualsNoCase(section, u"Sec") && EqualsNoCase(key, u"Other");
    if (file.Set(section, key, value)) {
        const Text expected = value.substr(0, value.find_first_of(TextView(u"\r\n\0", 3)));
        Require(file.Find(section, key) == expected);
        if (const auto kept = file.Bytes(); kept && file.Kind() != ProfileFile::Encoding::Utf8) {
            Require(ProfileFile(*kept, file.Kind()).Find(section, key) == expected);
        }
        Require(isOther || file.Find(u"Sec", u"Other") == other);
        file.Remove(section, key);
        Require(!file.Find(section, key));
        Require(isOther || file.Find(u"Sec", u"Other") == other);
    }

    ProfileFile hive(input, ProfileFile::Encoding::Utf8);
    if (hive.Kind() != ProfileFile::Encoding::Utf8) return 0;
    Require(hive.Set(EncodeHiveName(section), EncodeHiveName(key), EncodeHiveValue(value)));
    const ProfileFile again(*hive.Bytes(), ProfileFile::Encoding::Utf8);
    const auto read = again.Find(EncodeHiveName(section), EncodeHiveName(key));
    Require(read && DecodeHiveValue(*read) == value);
    return 0;
}
