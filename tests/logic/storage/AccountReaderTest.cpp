#include "HostFixture.h"

namespace nib::test::account_reader_test {

using AccountReaderTest = HostFixture;
using Ids = std::vector<Text>;

TEST_F(AccountReaderTest, ReadsAllItemsAsTheyAreOpened)
{
    folder.File("accounts/DEMO/BP/item10", "a\r\nb\xFD\n");
    folder.File("accounts/DEMO/BP/ITEM9", "caf\xE9");
    folder.File("accounts/DEMO/BP/N%2F1", "");
    folder.File("accounts/DEMO/BP/.hidden", "x");
    folder.File("accounts/DEMO/BP/OBJECT", std::string(3'000'000, 'x') + '\0');
    folder.Folder("accounts/DEMO/BP/folder");
    folder.File("accounts/DEMO/HASHED/~0", "x");
    const auto reader = connection->Reader({Text(kHostProvider), u"west", u"DEMO", {}, {}});
    EXPECT_EQ(reader->Files(), (Ids{u"BP", u"VOC"}));
    EXPECT_EQ(reader->Ids(u"BP"), (Ids{u"INVOICE", u"ITEM9", u"item10", u"N/1", u"OBJECT"}));
    for (const Text id : {u"INVOICE", u"ITEM9", u"item10", u"N/1"}) {
        const auto item = Open(ComposeHostPath({Text(kHostProvider), u"west", u"DEMO", u"BP", id}), true);
        EXPECT_EQ(reader->Read(u"BP", id), item->ReadItem(0, 0, 0)) << ToUtf8(id);
    }
    EXPECT_EQ(reader->Read(u"BP", u"OBJECT"), std::nullopt);
    EXPECT_TRUE(FailureOf([&] { reader->Read(u"BP", u"NONE"); }));
    EXPECT_EQ(FailureOf([&] { reader->Ids(u"NONE"); })->number, error_number::kPathNotFound);
    reader->Stop();
    EXPECT_TRUE(FailureOf([&] { reader->Read(u"BP", u"INVOICE"); }));
}

} // namespace nib::test::account_reader_test
