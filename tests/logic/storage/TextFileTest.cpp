#include "persistence/store/TextFile.h"
#include "TempFolder.h"
#include "base/Error.h"

#include <gtest/gtest.h>

#include <functional>

namespace nib::test {
namespace {

using namespace std::string_literals;

class TextFileTest : public testing::Test {
protected:
    Text Path(const std::string& name) const { return FromUtf8(folder / name); }
    int32_t NumberOf(const std::function<void()>& body) const
    {
        try {
            body();
        } catch (const Error& error) {
            return error.number;
        }
        return 0;
    }
    TempFolder folder;
    FileSaver saver{folder / "backups"};
};

TEST_F(TextFileTest, EncodingsByTheTable)
{
    struct Row {
        int32_t code;
        Text text;
        std::string bytes;
        int32_t detected;
    };
    const Row rows[] = {{-1, u"Aé", "A\0\xE9\0"s, 1},
                        {0, u"Aé", "A\xE9", 1},
                        {0, u"A€", "\xFF\xFE\x41\0\xAC\x20"s, 3},
                        {1, u"Aé", "A\xE9", 1},
                        {2, u"Aé", "A\xC3\xA9", 2},
                        {3, u"Aé", "\xFF\xFE\x41\0\xE9\0"s, 3},
                        {4, u"Aé", "A\xC3\xA9", 2},
                        {5, u"Aé", "\xFF\xFE\x41\0\xE9\0"s, 3},
                        {9, u"Aé", "A\xE9", 1},
                        {3, u"", "\xFF\xFE", 3},
                        {3, u"a\r\nb\n", "\xFF\xFE\x61\0\r\0\n\0b\0\n\0"s, 3}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.code);
        EXPECT_TRUE(WriteTextFile(saver, Path("f"), row.text, row.code, false));
        EXPECT_EQ(BytesOf(folder / "f"), row.bytes);
        int32_t encoding = row.code;
        EXPECT_EQ(ReadTextFile(Path("f"), encoding, false), row.text);
        EXPECT_EQ(encoding, row.code == 0 ? row.detected : row.code);
        EXPECT_EQ(DetectEncoding(row.bytes), row.detected);
    }
}

TEST_F(TextFileTest, Failures)
{
    folder.File("f", "old");
    folder.Folder("d/e");
    std::filesystem::create_symlink("loop", folder / "loop");
    int32_t encoding = 1;
    const std::pair<const char*, int32_t> rows[] = {{"none", 53}, {"none/f", 76}, {"f/f", 76},
                                                    {"loop", 76}, {"d", 5},       {"f", 0}};
    for (const auto& row : rows) {
        const auto& name = row.first;
        const int32_t number = row.second;
        SCOPED_TRACE(name);
        EXPECT_EQ(NumberOf([&] { ReadTextFile(Path(name), encoding, false); }), number);
        EXPECT_EQ(NumberOf([&] { ReadTextFile(Path(name), encoding, true); }), 0);
    }
    EXPECT_EQ(NumberOf([&] { ReadTextFile(Path(std::string(300, 'x')), encoding, false); }), 123);
    EXPECT_EQ(NumberOf([&] { WriteTextFile(saver, Path("none/f"), u"", 1, false); }), 76);
    EXPECT_FALSE(WriteTextFile(saver, Path("none/f"), u"", 1, true));
    EXPECT_EQ(NumberOf([&] { KillFile(Path("none"), false); }), 53);
    EXPECT_EQ(NumberOf([&] { KillFile(Path(std::string(300, 'x')), false); }), 5);
    EXPECT_FALSE(KillFile(Path("none"), true));

    {
        const FullDisk full(100);
        EXPECT_EQ(NumberOf([&] { WriteTextFile(saver, Path("f"), Text(500, u'x'), 1, false); }), 61);
    }
    EXPECT_EQ(BytesOf(folder / "f"), "old");
    EXPECT_TRUE(KillFile(Path("f"), false));
}

TEST_F(TextFileTest, WideCharsAndUnicodeFiles)
{
    EXPECT_FALSE(HasWideChars(u"aÿ", false));
    EXPECT_TRUE(HasWideChars(u"\xF8FC", false));
    EXPECT_FALSE(HasWideChars(u"\xF8FC\xF8FD\xF8FE", true));
    EXPECT_TRUE(HasWideChars(u"\xF8FB", true));
    EXPECT_FALSE(HasWideChars(u"", false));

    folder.File("narrow", "k=\xE9\n");
    EXPECT_FALSE(CheckUnicodeFile(saver, Path("narrow"), u"ÿ"));
    EXPECT_EQ(BytesOf(folder / "narrow"), "k=\xE9\n");
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_TRUE(CheckUnicodeFile(saver, Path("narrow"), u"€"));
        EXPECT_EQ(BytesOf(folder / "narrow"), "\xFF\xFEk\0=\0\xE9\0\n\0"s);
    }
    EXPECT_TRUE(CheckUnicodeFile(saver, Path("new"), u"€"));
    EXPECT_EQ(BytesOf(folder / "new"), "\xFF\xFE");
    EXPECT_TRUE(CheckUnicodeFile(saver, Path("none/new"), u"€"));
}

} // namespace
} // namespace nib::test
