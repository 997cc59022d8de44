#include "hosts/accounts/ServerAccounts.h"
#include "HostFixture.h"

#include <sys/stat.h>

namespace nib::test::server_accounts_test {

/// An account TEST of a server in the same root: VOC and ITEMS are hashed, BP holds items.
struct ServerAccountsTest : HostFixture {
    ServerAccountsTest()
    {
        for (const char* file : {"VOC", "ITEMS"}) {
            folder.File("accounts/TEST/" + std::string(file) + "/~0", std::string("\x9a \0\x08", 4));
            folder.File("accounts/TEST/" + std::string(file) + "/~1", "");
        }
        folder.File("accounts/TEST/BP/PROG", "X=1\n");
    }
    void Connect(const HostConfig& config, VerbPrograms programs = {})
    {
        const auto opened = [this](TextView account, const std::string& place) { notice.Opened(account, place); };
        connection = std::make_unique<HostConnection>(config, picker, boxes, AccountLinks(programs, opened));
    }
    HostConfig ConfigWith(TextView keys) const
    {
        return HostConfig::Parse(u"[*]\nroot=" + FromUtf8(folder / "accounts") + u"\n" + Text(keys), folder.Path());
    }

    ServerNotice notice{boxes};
};

TEST_F(ServerAccountsTest, AHashedFileIsShownAndNeitherReadNorWritten)
{
    const Text refusal = u" of account TEST is a hashed file, which only its server can read and write: use a "
                         u"connection with kind=network in hosts.conf.";
    for (const Text file : {u"ITEMS", u"VOC"}) {
        for (const Text item : {u"", u"/C1", u"/~0", u"/%7E0"})
            EXPECT_EQ(ErrorOf([&] { Open(u"mvdb:*/TEST/" + file + item); }).description, u"File " + file + refusal);
        EXPECT_EQ(ErrorOf([&] { browser.Children(u"mvdb:*/TEST/" + file); }).description, u"File " + file + refusal);
    }
    Text seen;
    for (const BrowseEntry& entry : browser.Children(u"mvdb:*/TEST"))
        seen += entry.name + (entry.isHashed ? u"# " : u" ");
    EXPECT_EQ(seen, u"BP ITEMS# VOC# ");
    const auto reader = links.Find(u"*").Reader({u"mvdb", u"*", u"TEST", {}, {}});
    EXPECT_EQ(reader->Files(), std::vector<Text>{u"BP"}) << "a search leaves them out";
    EXPECT_EQ(browser.Resolve(u"mvdb:*/TEST", u"ITEMS C1"), u"mvdb:*/TEST/ITEMS/C1") << "it is there";
    folder.File("accounts/TEST/VOC/NIB", "what another program left");
    folder.File("accounts/TEST/VOC/SAY", "V\necho no\n");
    const auto account = Open(u"mvdb:*/TEST");
    EXPECT_FALSE(account->Supports(kSupportsExecute) || account->Supports(kSupportsConfiguration));
    EXPECT_EQ(account->Session()->GetConfiguration(u"NIB", 1), u"");
    EXPECT_EQ(ErrorOf([&] { account->Session()->Execute(u"SAY", u"", 0); }).description,
              u"SAY is not in the VOC of account TEST.");
    Open(u"mvdb:*/DEMO/BP/~0")->WriteItem(0, 0, 0, u"an item of ours");
    EXPECT_EQ(Open(u"mvdb:*/DEMO/BP/~0")->ReadItem(0, 0, 0), u"an item of ours") << "makes no hashed file";
    EXPECT_EQ(Open(u"mvdb:*/DEMO/BP/INVOICE")->ReadItem(0, 0, 0), u"A=1\r\nPRINT A");
}

TEST_F(ServerAccountsTest, OpeningSaysOnceThatLocksDoNotReachHere)
{
    Connect(Config());
    Open(u"mvdb:*/TEST");
    Open(u"mvdb:*/TEST/BP/PROG", true, false);
    Open(u"mvdb:*/DEMO/BP/INVOICE", false, true);
    EXPECT_TRUE(boxes.shown.empty());
    for (TextView path : {u"mvdb:*/TEST/BP/PROG", u"mvdb:*/TEST/BP/NEW", u"mvdb:west/TEST/BP/PROG"})
        Open(path, false, true);
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_TRUE(boxes.shown[0].starts_with(u"The account TEST belongs to a MultiValue server, whose locks do not"));
    EXPECT_NE(boxes.shown[0].find(u"kind=network"), Text::npos);
}

TEST_F(ServerAccountsTest, IdsFollowTheirRuleBothWays)
{
    const struct {
        TextView keys, account, id;
        const char* name;
    } rows[] = {{u"", u"TEST", u"N/1", "N%S1"},
                {u"", u"TEST", u".a.~", "%da.~"},
                {u"", u"TEST", u"~0", "%t0"},
                {u"", u"TEST", u"\\%*?:;\",=+<>", "%B%P%A%Z%X%Y%Q%C%E%V%L%G"},
                {u"", u"TEST", u" |&'-!@#$()[]^_`{}", " |&'-!@#$()[]^_`{}"},
                {u"", u"DEMO", u"N/1", "N%2F1"},
                {u"ids=Escaped", u"DEMO", u"N/1", "N%S1"},
                {u"ids=plain", u"TEST", u"N/1", "N%2F1"},
                {u"", u"DEMO", u"~0", "%7E0"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Connect(ConfigWith(row.keys));
        HostLinks rowLinks(ConfigWith(row.keys), AccountLinks({}));
        const ItemPlace place{u"mvdb", u"*", Text(row.account), u"BP", Text(row.id)};
        Open(ComposeHostPath(place))->WriteItem(0, 0, 0, u"x");
        const std::string file = folder / ("accounts/" + ToUtf8(row.account) + "/BP/" + row.name);
        EXPECT_EQ(BytesOf(file), "x\n");
        EXPECT_TRUE(rowLinks.Find(u"*").ItemExists(place));
        const auto entries =
            HostBrowser(rowLinks).Children(ComposeHostPath({u"mvdb", u"*", place.database, u"BP", {}}));
        const auto reader = rowLinks.Find(u"*").Reader(place);
        EXPECT_EQ(reader->Ids(u"BP").empty() ? std::nullopt : reader->Read(u"BP", row.id), u"x");
        EXPECT_TRUE(std::any_of(entries.begin(), entries.end(), [&](const auto& e) { return e.name == row.id; }));
        std::filesystem::remove(file);
    }
    for (TextView id : {u"a%01", u"a%7F", u"%C3%A9"}) {
        const Error error = ErrorOf([&] { Open(u"mvdb:*/TEST/BP/" + Text(id)); });
        EXPECT_EQ(error.number, error_number::kBadFileName);
        EXPECT_NE(error.description.find(u"cannot be the id of an item of this file"), Text::npos);
    }
    folder.File("accounts/TEST/BP/N%2F1", "left by another program\n");
    EXPECT_EQ(Open(u"mvdb:*/TEST/BP/N%252F1")->ReadItem(0, 0, 0), u"left by another program");
    Connect(ConfigWith(u"ids=odd"));
    EXPECT_EQ(ErrorOf([&] { Open(u"mvdb:*/TEST"); }).description,
              u"ids=odd in hosts.conf is neither ids=plain nor ids=escaped.");
}

TEST_F(ServerAccountsTest, VerbsOfTheConnectionComeFirstAndNobodyIsAsked)
{
    const auto never = [](TextView, TextView) { return false; };
    folder.File("accounts/DEMO/VOC/SAY", "V\necho voc\n");
    chmod((folder / "accounts/DEMO").c_str(), 0777);
    Connect(ConfigWith(u"verb.Say=sh -c 'echo \"own=$1\"' say"), {{}, nullptr, never});
    for (TextView account : {u"TEST", u"DEMO"}) {
        const auto item = Open(u"mvdb:*/" + Text(account));
        EXPECT_TRUE(item->Supports(kSupportsExecute));
        EXPECT_EQ(item->Session()->Execute(u"say 'a b'", u"", 0), u"own=a b");
    }
}

TEST_F(ServerAccountsTest, ANewItemIsLikeItsFile)
{
    const mode_t before = umask(022);
    const std::pair<mode_t, mode_t> rows[] = {{0775, 0664}, {02775, 0664}, {0755, 0644}, {0700, 0600}, {0777, 0666}};
    const std::string bp = folder / "accounts/TEST/BP";
    const gid_t group = geteuid() == 0 ? 12345 : getegid();
    for (const auto& [folder, item] : rows) {
        ASSERT_EQ(chown(bp.c_str(), static_cast<uid_t>(-1), group), 0);
        chmod(bp.c_str(), folder);
        Open(u"mvdb:*/TEST/BP/NEW")->WriteItem(0, 0, 0, u"x");
        struct stat status {};
        ASSERT_EQ(stat((bp + "/NEW").c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, item) << std::oct << folder;
        EXPECT_EQ(status.st_gid, group);
        std::filesystem::remove(bp + "/NEW");
        Open(FromUtf8(bp + "/local"))->WriteItem(0, 0, 0, u"x");
        ASSERT_EQ(stat((bp + "/local").c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0644U) << "a local file keeps to the user's mask";
        std::filesystem::remove(bp + "/local");
    }
    umask(before);
}

} // namespace nib::test::server_accounts_test
