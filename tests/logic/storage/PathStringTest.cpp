#include "HostFixture.h"
#include "fakes/Patience.h"

namespace nib::test::path_string_test {

const Text kHostile[] = {u"BP",           u"A/B",   u"a b",          u"50%",          u"..", u".",       u"%2F",
                         Text(300, u'x'), u"Ünï€😀", u"\xF8FD\xF8FE", u"a\xDCFFz",     u"*",  u"../../x", u"~",
                         u"a\nb\x7F",     u"..%2F", u".locks",       Text(u"a\0b", 3)};

TEST(PathStringTest, KnownForms)
{
    EXPECT_EQ(ComposeHostPath({u"mvdb", u"*", u"DEMO", u"BP", u"A/B 50%"}), u"mvdb:*/DEMO/BP/A%2FB%2050%25");
    EXPECT_EQ(ComposeHostPath({u"mvdb", u"*", u"DEMO", u"", u""}), u"mvdb:*/DEMO");
    EXPECT_EQ(ComposeHostPath({u"mvdb", u"", u"DEMO", u"", u"é"}), u"mvdb:/DEMO//%C3%A9");
    EXPECT_EQ(ComposeHostPath({u"mvdb", u"h", u"..", u"", u""}), u"mvdb:h/%2E%2E");
    EXPECT_EQ(ComposeHostPath({u"file", u"", u"", u"/tmp/a b", u""}), u"file:/tmp/a b") << "a folder to begin at";
    for (auto [file, item, path] : {std::tuple{u"/tmp", u"a b", u"file:/tmp/a b"},
                                    {u"/", u"a", u"file:/a"},
                                    {u"/tmp", u"/home/a", u"file:/home/a"}})
        EXPECT_EQ(ComposeHostPath({u"file", u"", u"", file, item}), path);
    EXPECT_EQ(ComposeFilePath(u"/tmp/a b%.txt"), u"file:/tmp/a b%.txt");
    EXPECT_EQ(ComposeFilePath(u"x/../y.txt"),
              u"file:" + FromUtf8(std::filesystem::current_path().string()) + u"/y.txt");
    EXPECT_EQ(ParsePath(u"/tmp/x"), (ItemPlace{u"file", u"", u"", u"", u"/tmp/x"}));
    EXPECT_EQ(ParsePath(u"file:/tmp/x%20"), (ItemPlace{u"file", u"", u"", u"", u"/tmp/x%20"}));
    for (TextView wrong : {u"", u"x", u"mvdb:a/b/c/d/e", u"mvdb:a/%4", u"mvdb:%zz", u"file:x", u"http://x"})
        EXPECT_THROW(ParsePath(wrong), Error) << ToUtf8(wrong);
}

TEST(PathStringTest, LinksLeadToOneFile)
{
    TempFolder folder;
    folder.File("a", "x");
    folder.File("b", "x");
    std::filesystem::create_symlink("a", folder / "link");
    std::filesystem::create_hard_link(folder / "a", folder / "hard");
    const auto same = [&](const char* a, const char* b) {
        return IsSameFile(ComposeFilePath(FromUtf8(folder / a)), ComposeFilePath(FromUtf8(folder / b)));
    };
    EXPECT_TRUE(same("a", "link") && same("link", "hard") && same("gone", "gone"));
    EXPECT_FALSE(same("a", "b") || same("a", "A") || same("gone", "lost"));
}

TEST(PathStringTest, AnyPlaceComesBack)
{
    for (const Text& a : kHostile)
        for (const Text& b : kHostile)
            for (const Text& item : {Text(), a, b}) {
                const ItemPlace place{u"mvdb", b, a, item.empty() ? Text() : b, item};
                ASSERT_EQ(ParsePath(ComposeHostPath(place)), place);
            }
}

TEST(ItemNameTest, NamesComeBackAndStayInside)
{
    for (const Text& id : kHostile) {
        const std::string name = EncodeName(id);
        EXPECT_EQ(DecodeName(name), id);
        EXPECT_EQ(name.find('/'), std::string::npos);
        EXPECT_NE(name.front(), '.');
    }
    EXPECT_EQ(EncodeName(u".a/50%"), "%2Ea%2F50%25");
    EXPECT_EQ(DecodeName("50%"), u"50%");
    EXPECT_EQ(DecodeName("%41"), u"%41");
    EXPECT_EQ(DecodeName(".hidden"), std::nullopt);
    EXPECT_NE(LockName(u"A/B", u"C"), LockName(u"A", u"B/C"));
}

TEST(ItemNameTest, APlainNameIsTakenWhenOnlyThatIsThere)
{
    TempFolder folder;
    folder.File("50%", "");
    EXPECT_EQ(FindName(folder.Path(), u"50%"), "50%");
    EXPECT_EQ(FindName(folder.Path(), u"60%"), "60%25");
    EXPECT_EQ(FindName(folder.Path(), u".."), "%2E.");
    folder.File("50%25", "");
    EXPECT_EQ(FindName(folder.Path(), u"50%"), "50%25");
    EXPECT_THROW(FindName(folder.Path(), Text(256, u'x')), Error);
    EXPECT_THROW(FindName(folder.Path(), Text(100, u'/')), Error);
}

TEST(CommandWordsTest, Splitting)
{
    const std::tuple<Text, std::vector<Text>, std::vector<Text>> rows[] = {
        {u"", {}, {}},
        {u"  BASIC  BP\tMAIN ", {u"BASIC", u"BP", u"MAIN"}, {u"BASIC", u"BP", u"MAIN"}},
        {u"X \"A B\" 'C D' ''", {u"X", u"A B", u"C D", u""}, {u"X", u"A B", u"C D", u""}},
        {u"X O'B o'c", {u"X", u"O'B", u"o'c"}, {u"X", u"OB oc"}},
        {u"X \"open", {u"X", u"\"open"}, {u"X", u"open"}},
        {u"a\\ b 'c\\d'", {u"a\\", u"b", u"c\\d"}, {u"a b", u"c\\d"}},
        {u"$(id);*", {u"$(id);*"}, {u"$(id);*"}}};
    for (const auto& [line, command, program] : rows) {
        EXPECT_EQ(SplitCommand(line), command) << ToUtf8(line);
        EXPECT_EQ(SplitProgramLine(line), program) << ToUtf8(line);
    }
}

TEST(FolderListTest, NumbersCountByValueAndCaseNot)
{
    const Text sorted[] = {u"", u"a", u"B", u"item2", u"ITEM10", u"item010x", u"Z", u"é"};
    for (size_t i = 0; i + 1 < std::size(sorted); ++i) {
        EXPECT_TRUE(ComesBefore(sorted[i], sorted[i + 1])) << i;
        EXPECT_FALSE(ComesBefore(sorted[i + 1], sorted[i])) << i;
    }
}

struct HostBrowserTest : HostFixture {
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
    const std::tuple<Text, TextView, Text> rows[] = {{u"mvdb:*/DEMO/BP", u" MAIN ", u"mvdb:*/DEMO/BP/MAIN"},
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
    for (const auto& [place, typed, path] : rows) EXPECT_EQ(browser.Resolve(place, typed), path);
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

} // namespace nib::test::path_string_test
