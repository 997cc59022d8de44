#include "TempFolder.h"
#include "base/Error.h"
#include "persistence/store/clsScanDirectory.h"
#include "persistence/store/modCheckUnicodeFile.h"
#include "persistence/store/modFileReadWrite.h"
#include "persistence/store/modGetSystemMessageText.h"
#include "platform/posix/PosixFileTransfer.h"
#include "platform/posix/SystemError.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include <sys/resource.h>

namespace nib::test {

namespace {

using namespace std::string_literals;

/// Fails every call with one code.
struct FailingTransfer : PosixFileTransfer {
    FailingTransfer() : PosixFileTransfer(FileSaver("")) {}
    Handle OpenFile(TextView, Access) override { return 0; }
    bool DeleteFile(TextView) override { return false; }
    int32_t LastError() const override { return code; }
    Text SystemMessage(int32_t) const override { return message; }
    int32_t code = 0;
    Text message = u"It failed.\r\n";
};

class FileReadWriteTest : public testing::Test {
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
    PosixFileTransfer files{FileSaver(folder / "backups")};
};

} // namespace

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
    const Text large(100'000, u'x');
    EXPECT_TRUE(WriteTextFile(files, Path("f"), large, 3, false));
    int32_t encoding = 3;
    EXPECT_EQ(ReadTextFile(files, Path("f"), encoding, false), large);
}

TEST_F(FileReadWriteTest, FailuresByTheTables)
{
    FailingTransfer failing;
    int32_t encoding = 3;
    const auto read = [&] { ReadTextFile(failing, u"f", encoding, false); };
    const auto kill = [&] { KillFile(failing, u"f", false); };
    const int32_t rows[][3] = {
        // code, reading and writing, deleting and making folders
        {1, 5, 5},     {2, 53, 53},    {3, 76, 76},   {4, 67, 67},  {5, 5, 5},    {6, 52, 52},
        {8, 7, 7},     {15, 15, 68},   {16, 16, 75},  {17, 74, 74}, {32, 70, 70}, {80, 58, 58},
        {112, 61, 61}, {145, 145, 75}, {183, 58, 58}, {99, 99, 5},  {0, 0, 5},
    };
    for (const auto& row : rows) {
        failing.code = row[0];
        EXPECT_EQ(NumberOf(read), row[1]);
        EXPECT_EQ(NumberOf([&] { WriteTextFile(failing, u"f", u"", 3, false); }), row[1]);
        EXPECT_EQ(NumberOf(kill), row[2]);
        EXPECT_EQ(ReadTextFile(failing, u"f", encoding, true), u"");
        EXPECT_FALSE(WriteTextFile(failing, u"f", u"", 3, true));
        EXPECT_FALSE(KillFile(failing, u"f", true));
    }
    EXPECT_EQ(GetSystemMessageText(failing, 2), u"It failed.\r");
    EXPECT_EQ(GetSystemMessageText(failing, 0), u"unknown error (0)");
    failing.message.clear();
    EXPECT_EQ(GetSystemMessageText(failing, 0xABC), u"error code 0xABC (no error message available)");
}

TEST_F(FileReadWriteTest, TheSystemsFailures)
{
    folder.File("f", "old");
    folder.Folder("d/e");
    int32_t encoding = 1;
    const auto read = [&](const char* name) {
        return NumberOf([&] { ReadTextFile(files, Path(name), encoding, false); });
    };
    EXPECT_EQ(read("none"), 53);
    EXPECT_EQ(read("none/f"), 76);
    EXPECT_EQ(read("f/f"), 76);
    EXPECT_EQ(read("d"), 5);
    EXPECT_EQ(NumberOf([&] { WriteTextFile(files, Path("none/f"), u"", 1, false); }), 76);
    EXPECT_EQ(NumberOf([&] { MakeFolder(files, Path("d"), false); }), 58);
    EXPECT_EQ(NumberOf([&] { KillFile(files, Path("none"), false); }), 53);
    EXPECT_TRUE(MakeFolder(files, Path("new"), false));
    EXPECT_TRUE(KillFile(files, Path("f"), false));
    folder.File("empty", "");
    EXPECT_EQ(ReadTextFile(files, Path("empty"), encoding, false), u"");
    EXPECT_EQ(SystemCode(ENOSPC), 112);
    EXPECT_EQ(SystemCode(ENOTEMPTY), 145);
    EXPECT_EQ(files.SystemMessage(112), u"No space left on device");

    // What only shows when the file is brought to disk fails the write and keeps the old file.
    folder.File("g", "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{100, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const int32_t number = NumberOf([&] { WriteTextFile(files, Path("g"), Text(500, u'x'), 1, false); });
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(number, 61);
    EXPECT_EQ(BytesOf(folder / "g"), "old");
}

TEST_F(FileReadWriteTest, WideCharsAndUnicodeFiles)
{
    EXPECT_FALSE(HasWideChars(u"aÿ", false));
    EXPECT_TRUE(HasWideChars(u"\xF8FC", false));
    EXPECT_FALSE(HasWideChars(u"\xF8FC\xF8FD\xF8FE", true));
    EXPECT_TRUE(HasWideChars(u"\xF8FB", true));
    EXPECT_FALSE(HasWideChars(u"", false));

    folder.File("narrow", "k=\xE9\n");
    EXPECT_FALSE(CheckUnicodeFile(files, Path("narrow"), u"ÿ"));
    EXPECT_EQ(BytesOf(folder / "narrow"), "k=\xE9\n");
    EXPECT_TRUE(CheckUnicodeFile(files, Path("narrow"), u"€"));
    EXPECT_EQ(BytesOf(folder / "narrow"), "\xFF\xFEk\0=\0\xE9\0\n\0"s);
    EXPECT_TRUE(CheckUnicodeFile(files, Path("narrow"), u"€"));
    EXPECT_EQ(BytesOf(folder / "narrow"), "\xFF\xFEk\0=\0\xE9\0\n\0"s);
    EXPECT_TRUE(CheckUnicodeFile(files, Path("new"), u"€"));
    EXPECT_EQ(BytesOf(folder / "new"), "\xFF\xFE");
    EXPECT_TRUE(CheckUnicodeFile(files, Path("none/new"), u"€"));
}

TEST_F(FileReadWriteTest, ScansOfAFolder)
{
    for (const char* name : {"s/a.txt", "s/b.ini", "s/c.txt", "s/.hidden.txt", "s/[x].txt"}) folder.File(name, "");
    folder.Folder("s/folder.txt");
    clsScanDirectory scan(files);
    const auto all = [&](TextView pattern, int32_t include, int32_t exclude) {
        Text names;
        for (Text name = scan.Dir(pattern, include, exclude); !name.empty(); name = scan.Dir(u"")) names += name + u" ";
        return names;
    };
    const Text in = Path("s/");
    EXPECT_EQ(all(in, 0, -1), u"[x].txt a.txt b.ini c.txt ");
    EXPECT_EQ(all(in + u"*.txt", 0, -1), u"[x].txt a.txt c.txt ");
    EXPECT_EQ(all(in + u"?.txt", 0, -1), u"a.txt c.txt ");
    EXPECT_EQ(all(in + u"[x]*", 0, -1), u"[x].txt ");
    EXPECT_EQ(all(in, file_attribute::kFolder, 0xFF), u"folder.txt ");
    EXPECT_EQ(all(in, file_attribute::kFolder, -1), u"[x].txt a.txt b.ini c.txt folder.txt ");
    EXPECT_EQ(all(in + u"*.none", 0, -1), u"");
    EXPECT_EQ(scan.Dir(u""), u"");
    EXPECT_EQ(all(Path("none/*"), 0, -1), u"");
}

} // namespace nib::test
