#include "hosts/HostsFile.h"

#include "HostFixture.h"
#include "hosts/ConnectionEdits.h"
#include "hosts/network/NetworkLink.h"

namespace nib::test {
namespace {

/// With all that an edit must leave alone.
constexpr TextView kFull = u"; ours\n[*]\nroot=~/a\n\n# stock\n[Stock] \r\nkind = network\nodd line\n\tPort=1 \nx.y=z\n"
                           u"\n# west\n[west]\nroot=/w\nROOT=/v\n[stock]\nuser=ada";

TEST(HostConfigTest, AnAccountsColourComesBeforeThatOfItsConnection)
{
    const HostConfig config = HostConfig::Parse(u"[*]\ncolor.live=red\n[Stock]\nCOLOR=#00f\nColor.Demo=\n", "/", "/");
    const std::tuple<Text, Text, Text> rows[] = {{u"*", u"LIVE", u"red"},  {u"", u"Live", u"red"},
                                                 {u"*", u"DEMO", u""},     {u"stock", u"LIVE", u"#00f"},
                                                 {u"stock", u"demo", u""}, {u"nowhere", u"LIVE", u""}};
    for (const auto& [host, account, color] : rows)
        EXPECT_EQ(config.ColorOf(host, account), color) << ToUtf8(host + u" " + account);
}

struct EditRow {
    const char* what;
    TextView before;
    void (*change)(HostsFile&);
    TextView after;
};

const EditRow kEdits[] = {
    {"nothing", kFull, [](HostsFile&) {}, kFull},
    {"a value is replaced where it stands", u"#\n[a]\r\nPort = 1 \r\nx=y\r\n",
     [](HostsFile& file) { file.Set(u"A", u"port", u" 22 "); }, u"#\n[a]\r\nPort = 22 \r\nx=y\r\n"},
    {"the last of several counts", u"[a]\nroot=/w\nROOT=/v\n", [](HostsFile& file) { file.Set(u"a", u"root", u"/x"); },
     u"[a]\nroot=/w\nROOT=/x\n"},
    {"a new key goes behind the last", u"[a]\nx=1\n\n# b\n[b]\n",
     [](HostsFile& file) { file.Set(u"a", u"user", u"ada"); }, u"[a]\nx=1\nuser=ada\n\n# b\n[b]\n"},
    {"a last line without an end gets one", u"[a]\r\nx=1", [](HostsFile& file) { file.Set(u"a", u"y", u"[2]"); },
     u"[a]\r\nx=1\r\ny=[2]\r\n"},
    {"an empty value takes the key out", u"[a]\nx=1\nX=2\n#x=3\n", [](HostsFile& file) { file.Set(u"a", u"x", u""); },
     u"[a]\n#x=3\n"},
    {"the default needs no section", u"[a]\nx=1\n", [](HostsFile& file) { file.Set(u"*", u"root", u"/r"); },
     u"[a]\nx=1\n\n[*]\nroot=/r\n"},
    {"add", u"", [](HostsFile& file) { file.Set(file.Add(u" new one "), u"kind", u"network"); },
     u"[new one]\nkind=network\n"},
    {"all sections of the name are renamed", u" [a] \nx=1\n[b]\n[A]\ny=2",
     [](HostsFile& file) { file.Rename(u"a", u"c"); }, u" [c] \nx=1\n[b]\n[c]\ny=2"},
    {"in capitals", u"[a]\n", [](HostsFile& file) { file.Rename(u"a", u"A"); }, u"[A]\n"},
    {"remove", kFull, [](HostsFile& file) { file.Remove(u"STOCK"); },
     u"; ours\n[*]\nroot=~/a\n\n# stock\n# west\n[west]\nroot=/w\nROOT=/v\n"},
};

TEST(HostsFileTest, EveryOtherLineStays)
{
    for (const EditRow& row : kEdits) {
        HostsFile file(row.before);
        row.change(file);
        EXPECT_EQ(ToUtf8(file.Content()), ToUtf8(row.after)) << row.what;
    }
    const HostsFile file(kFull);
    EXPECT_EQ(file.Names(), (std::vector<Text>{u"*", u"Stock", u"west"}));
    EXPECT_EQ(file.Value(u"stock", u"KIND") + file.Value(u"STOCK", u"user"), u"networkada");
    EXPECT_EQ(file.Value(u"stock", u"root") + file.Value(u"nobody", u"root"), u"");
}

TEST(HostsFileTest, WhatALineCannotHoldIsRefused)
{
    const struct {
        void (*change)(HostsFile&);
        TextView words;
    } rows[] = {
        {[](HostsFile& file) { file.Set(u"a", u"root", u"/x\n[b]"); }, u"line breaks"},
        {[](HostsFile& file) { file.Set(u"a", u"root", u"/x\ry"); }, u"line breaks"},
        {[](HostsFile& file) { file.Set(u"a", u"root", TextView(u"/x\xDC80", 3)); }, u"no text"},
        {[](HostsFile& file) { file.Rename(u"a", u"x]"); }, u"\"]\""},
        {[](HostsFile& file) { file.Rename(u"a", u" "); }, u"needs a name"},
        {[](HostsFile& file) { file.Rename(u"a", u"B"); }, u"There is a connection named \"B\""},
        {[](HostsFile& file) { file.Add(u"*"); }, u"There is a connection named \"*\""},
        {[](HostsFile& file) { file.Add(u"x\ny"); }, u"line breaks"},
        {[](HostsFile& file) { file.Rename(u"*", u"c"); }, u"keeps its name"},
        {[](HostsFile& file) { file.Remove(u"*"); }, u"cannot be removed"},
    };
    for (const auto& row : rows) {
        HostsFile file(u"[*]\n[a]\nroot=/a\n[b]\n");
        const Text why = ErrorOf([&] { row.change(file); }).description;
        EXPECT_NE(why.find(row.words), Text::npos) << ToUtf8(why) << " / " << ToUtf8(row.words);
        EXPECT_EQ(file.Content(), u"[*]\n[a]\nroot=/a\n[b]\n");
    }
}

TEST(HostsFileTest, AnotherProgramsChangeIsNotOverwritten)
{
    const TempFolder folder;
    const FileSaver saver(folder / "backup");
    HostsFile file = HostsFile::Read(folder / "new/hosts.conf");
    file.Save(saver);
    EXPECT_FALSE(std::filesystem::exists(folder / "new")) << "nothing to write";
    file.Add(u"a");
    file.Save(saver);
    file.Set(u"a", u"root", u"/ü");
    file.Save(saver);
    EXPECT_EQ(BytesOf(file.Path()), "[a]\nroot=/ü\n");
    folder.File("new/hosts.conf", "[theirs]\n");
    file.Add(u"b");
    EXPECT_NE(ErrorOf([&] { file.Save(saver); }).description.find(u"changed by another program"), Text::npos);
    EXPECT_EQ(BytesOf(file.Path()), "[theirs]\n");
    folder.File("latin", "[a]\nname=\xFC\n");
    EXPECT_NE(ErrorOf([&] { HostsFile::Read(folder / "latin"); }).description.find(u"is no UTF-8"), Text::npos);
    folder.Folder("hosts.conf");
    EXPECT_NE(ErrorOf([&] { HostsFile::Read(folder / "hosts.conf"); }).number, 0) << "a folder";
}

struct ConnectionEditsTest : HostFixture {
    /// The links of servers never get anywhere.
    HostLinkKinds Kinds() const
    {
        HostLinkKinds kinds = AccountLinks(FromUtf8(folder / "programs"));
        kinds.merge(NetworkLinks({}));
        return kinds;
    }
    HostConfig Configured(const Text& more) const
    {
        const Text root = u"\nroot=" + FromUtf8(folder / "accounts") + u"\n";
        return HostConfig::Parse(u"[*]" + root + u"[east]" + root + more, folder.Path());
    }
    static constexpr TextView kServer = u"[s]\nkind=network\naddress=db\nuser=ada\n";
};

TEST_F(ConnectionEditsTest, LinksWhoseSettingsStayAreKept)
{
    HostLinks taking(Configured(u"[west]\n"), Kinds());
    HostLink* const kept = &taking.Find(u"*");
    const auto item = taking.Find(u"east").Open(ParsePath(u"mvdb:east/DEMO/BP/INVOICE"), false, true);
    taking.Take(Configured(u"name=Other\n"));
    EXPECT_EQ(&taking.Find(u"*"), kept);
    EXPECT_EQ(taking.Find(u"east").HostName(), u"Other");
    EXPECT_EQ(ErrorOf([&] { taking.Find(u"west"); }).number, error_number::kPathNotFound);
    item->WriteItem(0, 0, 0, u"NEW");
    EXPECT_EQ(BytesOf(folder / "accounts/DEMO/BP/INVOICE"), "NEW\n");
    EXPECT_FALSE(taking.Find(u"*").LockHolder(ParsePath(u"mvdb:*/DEMO/BP/INVOICE")).empty()) << "still locked";
}

TEST_F(ConnectionEditsTest, OnlyWhatWasChangedHasToWork)
{
    const struct {
        TextView key, value, words;
    } rows[] = {{u"port", u"4243", u""},        {u"port", u"0", u"no port"},        {u"port", u"65536", u"no port"},
                {u"port", u"12x", u"no port"},  {u"charset", u"x-none", u"x-none"}, {u"address", u"", u"no address"},
                {u"kind", u"pigeon", u"pigeon"}};
    HostLinks taking(Configured({}), Kinds());
    for (const auto& row : rows) {
        ConnectionEdits edits(HostsFile(Text(kServer) + u"[odd]\nkind=x\n"), taking);
        EXPECT_FALSE(edits.FirstFault());
        edits.Set(u"s", row.key, row.value);
        const auto fault = edits.FirstFault();
        ASSERT_EQ(fault.has_value(), !row.words.empty()) << ToUtf8(row.value);
        if (fault) EXPECT_NE(fault->why.find(row.words), Text::npos) << ToUtf8(fault->why);
    }
}

TEST_F(ConnectionEditsTest, LoginsThatNobodyHasAnyMoreAreForgotten)
{
    const std::string path =
        folder.File("hosts.conf", ToUtf8(kServer) + "[twin]\nkind=network\naddress=db\nuser=ada\n");
    HostLinks taking(HostConfig::Parse(FromUtf8(BytesOf(path)), folder.Path()), Kinds());
    const std::pair<Text, Text> rows[] = {{u"s", u""}, {u"twin", u"ada@db"}};
    for (const auto& row : rows) {
        ConnectionEdits edits(HostsFile::Read(path), taking);
        edits.Remove(row.first);
        Text told;
        edits.Accept([&](const HostSettings& host) { told += host.user + u"@" + host.address; });
        EXPECT_EQ(told, row.second);
        EXPECT_NE(ErrorOf([&] { taking.Find(row.first); }).number, 0);
    }
    EXPECT_EQ(BytesOf(path), "");
}

TEST_F(ConnectionEditsTest, ATestSaysWhatIsWrong)
{
    HostLinks taking(Configured({}), Kinds());
    const Text root = u"root=" + FromUtf8(folder / "accounts") + u"\n";
    const std::pair<Text, TextView> rows[] = {
        {root, u" It holds one account."},
        {root + u"account=GONE\n", u"holds one account, and GONE is none of them."},
        {u"root=/no/such/folder\n", u"/no/such/folder"},
        {u"kind=network\naddress=127.0.0.1\nport=1\naccount=A\n", u"127.0.0.1 port 1 refuses connections"},
        {u"kind=network\naddress=127.0.0.1\n", u"No account of 127.0.0.1 is named."},
        {u"kind=network\naddress=db.invalid\naccount=A\n", u"there is no machine db.invalid"},
        {u"kind=network\naddress=x\naccount=A\ntunnel=sh -c 'echo closed %h >&2'\n", u"cannot be reached: closed x"},
    };
    for (const auto& [keys, words] : rows) {
        const ConnectionEdits edits(HostsFile(u"[t]\n" + keys), taking);
        Text said;
        if (const auto failure = FailureOf([&] { said = edits.Test(u"t"); })) said = failure->description;
        EXPECT_NE(said.find(words), Text::npos) << ToUtf8(said);
    }
}

} // namespace
} // namespace nib::test
