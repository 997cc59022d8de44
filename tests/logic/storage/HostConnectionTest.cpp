#include "platform/hosts/HostConnection.h"
#include "TempFolder.h"
#include "base/Error.h"

#include <gtest/gtest.h>

namespace nib::test {

namespace {

struct FakePicker : PickerDialog {
    std::optional<PickerAnswer> Run(const SelectRequest&, TextView startPath, ItemBrowser&) override
    {
        start = startPath;
        return answer;
    }
    std::optional<PickerAnswer> answer;
    Text start;
};

struct FakeBoxes : MessageBoxes {
    int32_t Show(TextView text, int32_t, TextView) override
    {
        shown.emplace_back(text);
        return answer;
    }
    std::vector<Text> shown;
    int32_t answer = message_box::kAnswerYes;
};

class HostConnectionTest : public testing::Test {
protected:
    HostConnectionTest()
    {
        HostConfig config = HostConfig::Parse(u"[*]\nname=box\naccount=DEMO\n[far]\nkind=network\n", folder.Path());
        config.hosts[0].root = folder / "accounts";
        folder.File("accounts/DEMO/BP/INVOICE", "A=1\nPRINT A\n");
        folder.File("accounts/DEMO/VOC/LIST", "V\nls");
        connection = std::make_unique<HostConnection>(config, picker, boxes, u"");
    }
    std::shared_ptr<mvItem> Open(TextView path, bool readOnly = false, bool lock = false)
    {
        return connection->OpenServerForPath(path, readOnly, lock);
    }

    TempFolder folder;
    FakePicker picker;
    FakeBoxes boxes;
    std::unique_ptr<HostConnection> connection;
};

} // namespace

TEST_F(HostConnectionTest, AnAccountItemIsReadAndWrittenAsItStood)
{
    auto item = Open(u"mvdb:*/DEMO/BP/INVOICE");
    EXPECT_TRUE(item->IsItem());
    EXPECT_TRUE(item->Exists());
    EXPECT_EQ(item->DisplayPath(), u"DEMO BP INVOICE");
    EXPECT_EQ(item->ItemName(), u"BP INVOICE");
    EXPECT_EQ(item->HostName(), u"box");
    EXPECT_EQ(item->ReadItem(0, 0, 0), u"A=1\r\nPRINT A");
    item->WriteItem(0, 0, 0, u"B=2\r\nPRINT B");
    EXPECT_EQ(BytesOf(folder / "accounts/DEMO/BP/INVOICE"), "B=2\nPRINT B\n");
}

TEST_F(HostConnectionTest, ALocalFileIsReadAndWrittenAsItStood)
{
    const std::string name = folder.File("a.txt", "x\r\ny");
    auto item = Open(connection->ComposeFilePath(FromUtf8(name)));
    EXPECT_EQ(item->ReadItem(0, 0, 0), u"x\r\ny");
    EXPECT_EQ(item->ItemID(), u"a.txt");
    item->WriteItem(0, 0, 0, u"x\r\nz");
    EXPECT_EQ(BytesOf(name), "x\r\nz");
}

} // namespace nib::test
