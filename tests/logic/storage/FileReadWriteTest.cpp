#include "StoreFixture.h"
#include "persistence/store/modFileReadWrite.h"

namespace nib::test {

using namespace std::string_literals;

using FileReadWriteTest = StoreTest;

TEST_F(FileReadWriteTest, EncodingsByTheTable)
{
    struct Row {
        int32_t code;
        Text text;
        std::string bytes;
        int32_t detected;
    };
    const Row rows[] = {
        {-1, u"Aé", "A\0\xE9\0"s, 1},
        {0, u"Aé", "A\xE9", 1},
        {0, u"A€", "\xFF\xFE\x41\0\xAC\x20"s, 3},
        {1, u"Aé", "A\xE9", 1},
        {2, u"Aé", "A\xC3\xA9", 2},
        {3, u"Aé", "\xFF\xFE\x41\0\xE9\0"s, 3},
        {4, u"Aé", "A\xC3\xA9", 2},
        {5, u"Aé", "\xFF\xFE\x41\0\xE9\0"s, 3},
        {9, u"Aé", "A\xE9", 1},
        {3, u"", "\xFF\xFE", 3},
        {3, u"a\r\nb\n", "\xFF\xFE\x61\0\r\0\n\0b\0\n\0"s, 3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.code);
        EXPECT_TRUE(WriteTextFile(files, Path("f"), row.text, row.code, false));
        EXPECT_EQ(BytesOf(folder / "f"), row.bytes);
        int32_t encoding = row.code;
        EXPECT_EQ(ReadTextFile(files, Path("f"), encoding, false), row.text);
        EXPECT_EQ(encoding, row.code == 0 ? row.detected : row.code);
        encoding = 0;
        ReadTextFile(files, Path("f"), encoding, false);
        EXPECT_EQ(encoding, row.detected);
    }
}

} // namespace nib::test
