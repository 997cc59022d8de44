// The link over a server:
//
//     nib_network_tests HOST PORT USER PASSWORD USER2 PASSWORD2 ACCOUNT [ROUNDS] [options of the test framework]
//
// The account has a directory file BP and a hashed file ITEMS; both users may write there.

#include "network/Desk.h"

#include <chrono>
#include <iostream>
#include <random>

namespace nib::test {

Arguments given;

namespace {

/// Lines, marks, and what else a text may hold; line feeds within lines in hashed files alone.
std::string RandomItem(std::mt19937& random, bool hashed, size_t longest)
{
    static constexpr std::string_view kPieces[] = {"\xFE",     "\xFD",         "\xFC", "\xFF",      "\r",  "\t",
                                                   "X = 1",    "\xC3\xA9",     "",     "\xE9t\xE9", "   ", "\r\xFE",
                                                   "\xFE\xFE", "\xEF\xA3\xBE", "\n"};
    const size_t size = random() % 4 == 0 ? random() % longest : random() % 200;
    std::string item;
    while (item.size() < size) item += kPieces[random() % (std::size(kPieces) - (hashed ? 0 : 1))];
    return item;
}

} // namespace

TEST_F(ServerTest, AnyItemIsTheSameAfterOpenAndSave)
{
    Desk desk(0);
    std::mt19937 random(7);
    for (int round = 0; round < given.rounds; ++round) {
        const bool hashed = round % 2 == 0;
        const Text file = hashed ? u"ITEMS" : u"BP";
        const std::string bytes = RandomItem(random, hashed, 64 << 10);
        behind.Put(ToUtf8(file), "ROUND", bytes);
        const auto item = desk.Open(file, u"ROUND");
        const Text text = ReadAll(*item);
        std::vector<OddEnd> odd = item->Form()->OddEnds();
        item->Form()->SetOddEnds(odd);
        WriteAll(*item, text);
        const std::string stored = behind.Get(ToUtf8(file), "ROUND");
        ASSERT_TRUE(stored == bytes) << round << ": " << testing::PrintToString(bytes.substr(0, 400)) << "\n"
                                     << testing::PrintToString(stored.substr(0, 400));
    }
}

TEST_F(ServerTest, LinesAreFieldsAndMarksAreMarks)
{
    behind.Put("ITEMS", "SHOWN",
               "A\xFE\xFE"
               "B\xFD"
               "C\xFE");
    Desk desk(0);
    const auto item = desk.Open(u"ITEMS", u"SHOWN");
    EXPECT_EQ(ReadAll(*item), u"A\r\n\r\nB\uF8FDC\r\n");
    WriteAll(*item, u"A\r\nB\uF8FEC");
    EXPECT_EQ(behind.Get("ITEMS", "SHOWN"), "A\xFE"
                                            "B\nC")
        << "a line feed within a field";
    const auto program = desk.Open(u"BP", u"SHOWN2");
    EXPECT_EQ(ErrorOf([&] { WriteAll(*program, u"A\r\nB\uF8FEC"); }).description,
              given.account + u" BP SHOWN2 cannot be saved: line 2 holds a line feed, and a directory file would make "
                              u"two lines of it.");
    EXPECT_FALSE(ErrorOf([&] { WriteAll(*program, Text(u"A\0B", 3)); }).description.empty());
}

TEST_F(ServerTest, OneHasTheLockAndTheOtherHearsWho)
{
    Desk first(0), second(1);
    behind.Put("BP", "HELD", "X");
    auto held = first.Open(u"BP", u"HELD");
    const auto began = std::chrono::steady_clock::now();
    const Error error = ErrorOf([&] { second.Open(u"BP", u"HELD"); });
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(1));
    EXPECT_EQ(error.number, error_number::kLocked);
    EXPECT_NE(error.description.find(given.users[0]), Text::npos) << ToUtf8(error.description);
    EXPECT_EQ(ReadAll(*second.Open(u"BP", u"HELD", false)), u"X") << "reading takes no lock";
    EXPECT_EQ(ErrorOf([&] { first.Open(u"BP", u"HELD"); }).number, error_number::kLocked) << "nor twice here";
    held.reset();
    EXPECT_NO_THROW(second.Open(u"BP", u"HELD"));
    // The lock of an item that is not there holds too, and goes with the wish to make it.
    auto fresh = first.Open(u"BP", u"NOTTHERE");
    EXPECT_FALSE(fresh->Exists());
    EXPECT_EQ(ErrorOf([&] { second.Open(u"BP", u"NOTTHERE"); }).number, error_number::kLocked);
    fresh.reset();
    EXPECT_NO_THROW(second.Open(u"BP", u"NOTTHERE"));
}

TEST_F(ServerTest, TenDesksWantOneItem)
{
    behind.Put("BP", "WANTED", "X");
    std::vector<std::unique_ptr<Desk>> desks;
    std::vector<std::shared_ptr<mvItem>> held;
    for (int i = 0; i < 10; ++i) {
        desks.push_back(std::make_unique<Desk>(i % 2));
        if (auto item = OrDefault([&] { return desks.back()->Open(u"BP", u"WANTED"); }, std::shared_ptr<mvItem>()))
            held.push_back(item);
    }
    EXPECT_EQ(held.size(), 1u);
    held.clear();
    EXPECT_NO_THROW(desks.back()->Open(u"BP", u"WANTED"));
}

TEST_F(ServerTest, AnIdOfAnyByteIsStoredOrRefusedInWords)
{
    Desk desk(0);
    for (const TextView file : {u"BP", u"ITEMS"}) {
        for (int byte = 1; byte < 256; ++byte) {
            const std::string id = {'I', static_cast<char>(byte), 'D'};
            const std::string name = ToUtf8(file);
            std::optional<Error> failure = FailureOf([&] { WriteAll(*desk.Open(file, FromFileName(id)), u"X"); });
            const std::string stored = behind.Get(name, id);
            const bool fits = file == u"BP" ? byte >= 0x20 && byte < 0x7F : byte < 0xFB;
            EXPECT_EQ(stored == "X", fits) << name << ' ' << byte;
            EXPECT_EQ(failure.has_value(), !fits) << name << ' ' << byte;
            if (failure) {
                EXPECT_NE(failure->description.find(u"the item id is not allowed there"), Text::npos)
                    << ToUtf8(failure->description);
            }
        }
    }
}

TEST_F(ServerTest, WhatAnotherWroteIsNotOverwrittenUnseen)
{
    Desk desk(0);
    for (const bool lock : {true, false}) {
        behind.Put("BP", "SHARED", "old");
        const auto item = desk.Open(u"BP", u"SHARED", lock);
        ReadAll(*item);
        if (lock) item->LockItem(false); // the server's own editor may write all the same; then it is without a lock
        behind.Put("BP", "SHARED", "theirs");
        if (lock) item->LockItem(true);
        EXPECT_EQ(item->StateToSave(), StoredState::Changed);
        EXPECT_NE(ErrorOf([&] { WriteAll(*item, u"ours"); }).description.find(u"was changed"), Text::npos);
        EXPECT_EQ(behind.Get("BP", "SHARED"), "theirs");
        WriteAll(*item, u"ours");
        EXPECT_EQ(behind.Get("BP", "SHARED"), "ours") << "by now the user knows";
        behind.Put("BP", "SHARED", "theirs again");
        const auto beside = desk.Open(u"BP", u"SHARED", false);
        EXPECT_FALSE(item->AcceptVersion(item->Version()));
        ReadAll(*beside);
        EXPECT_TRUE(item->AcceptVersion(beside->Version()));
        WriteAll(*item, u"both");
        EXPECT_EQ(behind.Get("BP", "SHARED"), "both");
    }
}

TEST_F(ServerTest, ALostConnectionIsToldAndTheNextSaveConnectsAgain)
{
    for (const bool theirs : {false, true}) {
        Desk desk(0);
        behind.Put("BP", "LOST", "old");
        const auto item = desk.Open(u"BP", u"LOST");
        const auto beside = desk.Open(u"ITEMS", u"BESIDE");
        ReadAll(*item);
        bool prompted = false;
        auto& server = static_cast<ServerCommands&>(*item->Session()).Shared().items;
        IgnoringErrors([&] { server.Execute("OFF", {}, prompted); }); // the server hangs up
        desk.Link().Look();
        ASSERT_FALSE(desk.News().empty());
        EXPECT_NE(desk.News().back().find(u"was lost"), Text::npos);
        if (theirs) behind.Put("BP", "LOST", "theirs");
        const Text failure = FailureOf([&] { WriteAll(*item, u"ours"); }).value_or(Error(0, u"")).description;
        EXPECT_EQ(failure.empty(), !theirs) << ToUtf8(failure);
        EXPECT_EQ(behind.Get("BP", "LOST"), theirs ? "theirs" : "ours");
        EXPECT_EQ(ErrorOf([&] { Desk(1).Open(u"BP", u"LOST"); }).number, error_number::kLocked) << "and locked again";
        desk.Link().Look();
        EXPECT_EQ(ErrorOf([&] { Desk(1).Open(u"ITEMS", u"BESIDE"); }).number, error_number::kLocked) << "this too";
    }
}

TEST_F(ServerTest, ListsForPickers)
{
    Desk desk(0);
    behind.Put("ITEMS", "A/B C", "1");
    const ItemPlace account{Text(kHostProvider), u"*", given.account, {}, {}};
    const auto names = [&](const ItemPlace& place) {
        std::vector<Text> found;
        for (const BrowseEntry& entry : desk.Link().Children(place)) found.push_back(entry.name);
        return found;
    };
    const auto has = [](const std::vector<Text>& all, TextView name) {
        return std::find(all.begin(), all.end(), name) != all.end();
    };
    const std::vector<Text> files = names(account);
    for (const TextView name : {u"BP", u"ITEMS", u"VOC", u"DICT ITEMS"}) EXPECT_TRUE(has(files, name)) << ToUtf8(name);
    ItemPlace file = account;
    file.folder = u"ITEMS";
    EXPECT_TRUE(has(names(file), u"A/B C"));
    EXPECT_TRUE(desk.Link().FileExists(given.account, u"DICT ITEMS"));
    EXPECT_FALSE(desk.Link().FileExists(given.account, u"NOSUCHFILE"));
}

TEST_F(ServerTest, ASearchReadsOnAConnectionOfItsOwn)
{
    Desk desk(0);
    const ItemPlace account{Text(kHostProvider), u"*", given.account, {}, {}};
    behind.Put("ITEMS", "TEXT",
               "A\xFE"
               "B");
    behind.Put("ITEMS", "OBJECT", std::string("A\0B", 3));
    const auto reader = desk.Link().Reader(account);
    const std::vector<Text> files = reader->Files();
    EXPECT_NE(std::find(files.begin(), files.end(), u"BP"), files.end());
    const std::vector<Text> ids = reader->Ids(u"ITEMS");
    EXPECT_NE(std::find(ids.begin(), ids.end(), u"OBJECT"), ids.end());
    EXPECT_EQ(reader->Read(u"ITEMS", u"TEXT"), u"A\r\nB");
    EXPECT_EQ(reader->Read(u"ITEMS", u"OBJECT"), std::nullopt);
    EXPECT_NE(ErrorOf([&] { reader->Read(u"ITEMS", u"NOSUCHITEM"); }).description.find(u"no such item"), Text::npos);
    EXPECT_NE(ErrorOf([&] { reader->Ids(u"NOSUCHFILE"); }).number, error_number::kDeviceUnavailable);
    reader->Stop();
    EXPECT_NE(ErrorOf([&] { reader->Read(u"ITEMS", u"TEXT"); }).number, 0);
}

TEST_F(ServerTest, CommandsRunBesideTheLocks)
{
    Desk desk(0);
    behind.Put("BP", "ASKS",
               "INPUT A\xFE"
               "CRT 'GOT ':A\xFE"
               "END");
    const auto item = desk.Open(u"BP", u"ASKS");
    mvSession& session = *item->Session();
    EXPECT_NE(session.Execute(u"BASIC BP ASKS", u"", 0).find(u"0 error(s)"), Text::npos);
    EXPECT_NE(session.Execute(u"RUN BP ASKS", u"", 0).find(u"was ended"), Text::npos);
    EXPECT_NE(session.Execute(u"RUN BP ASKS", u"seven", 0).find(u"GOT seven"), Text::npos);
    EXPECT_NE(session.Execute(u"NOSUCHVERB", u"", 0).find(u"NOSUCHVERB"), Text::npos);
    EXPECT_EQ(ErrorOf([&] { Desk(1).Open(u"BP", u"ASKS"); }).number, error_number::kLocked);
    EXPECT_EQ(session.GetConfiguration(u"NOSUCHRECORD", 1), u"");
    EXPECT_TRUE(session.GetConfiguration(u"BP", 1).starts_with(u"F"));
}

TEST_F(ServerTest, WhoMayNotComeInIsTold)
{
    const Text wrong = ErrorOf([] { Desk(0, "wrong").Link().Test(); }).description;
    EXPECT_NE(wrong.find(u"refused the user or the password"), Text::npos) << ToUtf8(wrong);
    const Text unknown = ErrorOf([] { Desk(0, {}, u"NOSUCHACCOUNT").Link().Test(); }).description;
    EXPECT_NE(unknown.find(u"NOSUCHACCOUNT cannot be entered"), Text::npos) << ToUtf8(unknown);
    EXPECT_NE(Desk(0).Link().Test().find(u"lets user"), Text::npos);
    const Text missing = ErrorOf([&] { Desk(0).Open(u"NOSUCHFILE", u"X"); }).description;
    EXPECT_EQ(missing,
              u"File NOSUCHFILE of account " + given.account + u" cannot be opened: the VOC has no such name.");
    const Text odd = ErrorOf([&] { Desk(0).Open(u"BP", u"A\u0001B"); }).description;
    EXPECT_NE(odd.find(u"the item id is not allowed there"), Text::npos) << ToUtf8(odd);
}

} // namespace nib::test

int main(int argc, char** argv)
{
    using nib::FromUtf8;
    testing::InitGoogleTest(&argc, argv);
    if (argc < 8) {
        std::cerr << "HOST PORT USER PASSWORD USER2 PASSWORD2 ACCOUNT [ROUNDS]\n";
        return EXIT_FAILURE;
    }
    auto& given = nib::test::given;
    given = {FromUtf8(argv[1]),
             FromUtf8(argv[2]),
             {FromUtf8(argv[3]), FromUtf8(argv[5])},
             FromUtf8(argv[7]),
             {argv[4], argv[6]}};
    if (argc > 8) given.rounds = std::atoi(argv[8]);
    return RUN_ALL_TESTS();
}
