#include "HostFixture.h"
#include "fakes/Patience.h"

namespace nib::test {
namespace {

class HostBrowserTest : public HostFixture {
protected:
    Text Names(TextView path)
    {
        Text names;
        for (const BrowseEntry& entry : browser.Children(path)) {
            names += entry.name + (entry.isItem ? u" " : u"/ ");
            EXPECT_EQ(browser.Parent(entry.path), path);
        }
        return names;
    }
};

TEST_F(HostBrowserTest, LevelsFromTheConnectionDown)
{
    folder.Folder("accounts/.nib-half");
    folder.File("accounts/stray", "");
    folder.File("accounts/DEMO/BP/item10", "");
    folder.File("accounts/DEMO/BP/Item2", "");
    folder.File("accounts/DEMO/BP/A%2FB", "");
    folder.File("accounts/DEMO/BP/.nib-half", "");
    folder.File("local/b", "");
    folder.Folder("local/a");
    folder.File("local/.hidden", "");
    EXPECT_EQ(Names(u"mvdb:*"), u"DEMO/ ");
    EXPECT_EQ(Names(u"mvdb:*/DEMO"), u"BP/ VOC/ ");
    EXPECT_EQ(Names(u"mvdb:*/DEMO/BP"), u"A/B INVOICE Item2 item10 ");
    EXPECT_EQ(Names(u"file:" + FromUtf8(folder / "local")), u"a/ .hidden b ");
    EXPECT_EQ(browser.Parent(u"mvdb:*"), u"");
    EXPECT_EQ(browser.Parent(u"file:/"), u"");
    EXPECT_EQ(browser.Places().front().name, u"box");
    EXPECT_EQ(browser.Places().back().path, u"file:/");
    EXPECT_THROW(browser.Children(u"mvdb:*/NONE"), Error);
}

TEST_F(HostBrowserTest, TypedNames)
{
    folder.Folder("accounts/DEMO/MY");
    folder.File("accounts/DEMO/BP/MY OWN", "");
    setenv("HOME", "/home/ada", 1);
    const Text local = u"file:" + FromUtf8(folder.Path());
    const struct {
        Text place;
        TextView typed;
        Text path;
    } rows[] = {{u"mvdb:*/DEMO/BP", u" MAIN ", u"mvdb:*/DEMO/BP/MAIN"},
                {u"mvdb:*/DEMO/BP/INVOICE", u"MAIN", u"mvdb:*/DEMO/BP/MAIN"},
                {u"mvdb:*/DEMO/BP", u"VOC  LIST ME", u"mvdb:*/DEMO/VOC/LIST%20ME"},
                {u"mvdb:*/DEMO/BP", u"MY OWN", u"mvdb:*/DEMO/BP/MY%20OWN"},
                {u"mvdb:*/DEMO/BP", u"MY NEW", u"mvdb:*/DEMO/MY/NEW"},
                {u"mvdb:*/DEMO/BP", u"NO FILE", u"mvdb:*/DEMO/BP/NO%20FILE"},
                {u"mvdb:*/DEMO/BP", u"A/B", u"mvdb:*/DEMO/BP/A%2FB"},
                {u"mvdb:*/DEMO", u"BP MAIN", u"mvdb:*/DEMO/BP/MAIN"},
                {u"mvdb:*/DEMO", u"BP", u"mvdb:*/DEMO/BP"},
                {u"mvdb:*", u"DEMO BP MAIN", u"mvdb:*/DEMO/BP/MAIN"},
                {u"mvdb:*/DEMO/BP", u"/tmp/x", u"file:/tmp/x"},
                {u"", u"mvdb:*/DEMO/BP/X", u"mvdb:*/DEMO/BP/X"},
                {u"", u"~/x", u"file:/home/ada/x"},
                {u"", u"/home/../etc//x", u"file:/etc/x"},
                {local, u"a/../b.txt", local + u"/b.txt"},
                {local + u"/file.txt", u"b.txt", local + u"/b.txt"},
                {local, u"~/x", u"file:/home/ada/x"}};
    for (const auto& row : rows) EXPECT_EQ(browser.Resolve(row.place, row.typed), row.path);
    EXPECT_THROW(browser.Resolve(u"mvdb:*/DEMO", u"NONE X"), Error);
    EXPECT_THROW(browser.Resolve(u"mvdb:*/DEMO", u"  "), Error);
    EXPECT_THROW(browser.Resolve(u"", u"x"), Error);
}

TEST_F(HostBrowserTest, TenThousandItemsOpenAtOnce)
{
    for (int n = 0; n < 10000; ++n) folder.File("accounts/DEMO/BIG/ITEM" + std::to_string(n), "");
    test::Patience patience("list of items");
    EXPECT_EQ(browser.Children(u"mvdb:*/DEMO/BIG").size(), 10000U);
}

} // namespace
} // namespace nib::test
