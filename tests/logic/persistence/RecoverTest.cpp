// What an earlier session left: which files are offered, and what becomes of them.

#include "fakes/TestRecovery.h"
#include "platform/posix/FileName.h"

namespace nib::test::recover_test {

using Lines = std::vector<Text>;
using Strings = std::vector<std::string>;
constexpr TextView kHeader = u"*---> Recovered document: ";

TEST_F(RecoveryTest, FilesOfRunningCopiesAreLeftAlone)
{
    EXPECT_EQ(session->Offered(), Lines());
    EXPECT_FALSE(std::filesystem::exists(folder / "data")) << "looking makes no folder";
    token.alive.insert(0xABC);
    for (const char* name : {"00000ABC.001", "00000abc.2", "ABC", "00000ABD.001", "notes", "notes.txt", ".hidden",
                             "FFFFFFFFFF.001", "sub/00000001.001"})
        File(name, "X\r\ntext");
    EXPECT_EQ(session->Offered(), (Lines{u"00000ABD.001", u"FFFFFFFFFF.001", u"notes", u"notes.txt"}));
}

TEST_F(RecoveryTest, ANumberWithFilesIsNobodysAgain)
{
    File("0012AB34.001", "X\r\ntext");
    session->Changed(u"mine");
    EXPECT_TRUE(session->recovery.AutoSaveDocuments());
    EXPECT_EQ(Names(), (Strings{"0012AB34.001", "0012AB35.001"}));
    EXPECT_EQ(session->Offered(), Lines{u"0012AB34.001"});
    session->recovery.EndAutoSaveSession();
    EXPECT_EQ(Names(), Strings{"0012AB34.001"});
}

TEST_F(RecoveryTest, RowsTellItemLinesAndDate)
{
    setenv("TZ", "UTC", 1);
    File("1.001", "MAIN\r\none\r\ntwo\r\n");
    File("1.002", "\r\nx");
    File("1.003", "");
    File("1.004", std::string(1000, 'n') + "\nfoot");
    const auto& rows = session->List().Rows();
    ASSERT_EQ(rows.size(), 4U);
    const char16_t* lines[] = {u"2 lines", u"1 lines", u"0 lines", u"0 lines"};
    for (size_t i = 0; i < 4; ++i) EXPECT_EQ(rows[i].lines, lines[i]);
    EXPECT_EQ(rows[0].document, u"MAIN");
    EXPECT_EQ(rows[1].document, u"New document");
    EXPECT_GT(rows[0].saved.size(), 10U);
    EXPECT_LT(rows[3].document.size(), 300U);
    EXPECT_EQ(rows[3].document.find(u'\n'), Text::npos);
}

TEST_F(RecoveryTest, WhatIsNotCheckedStaysAnOrphan)
{
    const Text wide = u"wide \u65E5\U0001F600\uF8FD\r\nlast";
    session->Changed(wide, kMain);
    session->Changed(u"new");
    session->Changed(u"kept", kOther);
    EXPECT_TRUE(session->recovery.AutoSaveDocuments());
    Crash();

    RecoveryList& list = session->List();
    ASSERT_EQ(list.Rows().size(), 3U);
    EXPECT_TRUE(list.AnyChecked()) << "whoever had a crash wants his work back";
    int shown = 0;
    list.Run([&] {
        ++shown;
        if (shown > 1) return RecoveryChoice::Cancel;
        list.CheckAll(true);
        list.SetChecked(2, false);
        return RecoveryChoice::Recover;
    });
    EXPECT_EQ(shown, 2);
    ASSERT_EQ(list.Rows().size(), 1U);
    EXPECT_EQ(list.Rows()[0].document, u"OTHER");
    auto& documents = session->t.Documents();
    ASSERT_EQ(documents.Count(), 2);
    EXPECT_EQ(documents.Item(1)->GetText(), Text(kHeader) + u"MAIN\r\n" + wide);
    EXPECT_EQ(documents.Item(2)->GetText(), Text(kHeader) + u"\r\nnew");
    EXPECT_TRUE(documents.Item(1)->IsDirty() && !documents.Item(1)->ItemObject());
    EXPECT_FALSE(session->t.window.waiting);
    EXPECT_EQ(Names(), (Strings{"0012AB34.003", "0012AB44.001", "0012AB44.002"}));
    EndCleanly();
    EXPECT_EQ(session->Offered(), Lines{u"0012AB34.003"});
}

TEST_F(RecoveryTest, DeletedOnesGoAtTheCleanEndAndNotBefore)
{
    File("1.001", "A\r\n");
    File("1.002", "B\r\n");
    const auto deleteAll = [&] {
        RecoveryList& list = session->List();
        list.Run([] { return RecoveryChoice::Delete; });
        EXPECT_TRUE(list.Rows().empty());
    };
    deleteAll();
    EXPECT_EQ(Names(), (Strings{"0012AB34.001", "0012AB34.002"}));
    Crash();
    EXPECT_EQ(session->Offered().size(), 2U) << "a crash brings them back";
    deleteAll();
    EndCleanly();
    EXPECT_EQ(Names(), Strings());
}

TEST_F(RecoveryTest, TheQuestionBeforeDeleting)
{
    using namespace message_box;
    File("1.001", "A\r\n");
    const Text tail = u"\r\n\r\nOnce the recoverable copies are deleted, they can no longer be retrieved.";
    const auto asks = [&](const Text& what, int32_t answer) {
        session->t.boxes.Answer({answer});
        EXPECT_EQ(session->List().ConfirmDelete(), answer == kAnswerYes);
        EXPECT_EQ(session->t.boxes.Take(), (Boxes{{u"Are you sure you want to delete the recoverable " + what + tail,
                                                   kYesNo | kWarning | kSecondDefault}}));
    };
    asks(u"copy of this document?", kAnswerNo);
    File("1.002", "B\r\n");
    asks(u"copies of these 2 documents?", kAnswerYes);
}

TEST_F(RecoveryTest, FilesThatCannotBeRead)
{
    File("1.002", "B\r\n");
    File("1.003", "C\r\n");
    File("1.004", "D\r\n");
    for (const char* name : {"1.001", "1.005"}) {
        File(name, "");
        std::filesystem::resize_file(Place() + "/" + name, 2147483648U);
    }
    RecoveryList& list = session->List();
    ASSERT_EQ(list.Rows().size(), 3U) << "neither file of 2 GB";
    list.CheckAll(false);
    list.SetChecked(2, true);
    list.RecoverChecked();
    ASSERT_EQ(session->t.Documents().Count(), 1);
    EXPECT_EQ(session->t.Documents().Item(1)->GetText(), Text(kHeader) + u"D\r\n") << "the one that was checked";
    EXPECT_EQ(list.Rows().size(), 2U);
}

TEST_F(RecoveryTest, FilesThatGoBetweenTheScanAndTheReading)
{
    for (const char* name : {"1.001", "1.002", "1.003"}) File(name, std::string(name) + "\r\n");
    session->onOffer = [this](TextView place, const DynamicArray& names) {
        EXPECT_EQ(names.Count(), 3);
        std::filesystem::remove(Place() + "/1.001");
        std::filesystem::remove(Place() + "/1.003");
        std::filesystem::create_directory(Place() + "/1.003");
        session->list.Load(place, names);
        EXPECT_EQ(session->list.Rows().size(), 1U);
        std::filesystem::remove_all(Place());
        session->list.CheckAll(true);
        session->list.RecoverChecked();
        EXPECT_EQ(session->list.Rows().size(), 1U) << "it cannot be read any more and stays";
        session->list.DeleteListed();
    };
    session->recovery.CheckAutoRecover();
    EXPECT_EQ(session->t.Documents().Count(), 0);
    EXPECT_TRUE(session->t.boxes.Take().empty()) << "all of it in silence";
    EXPECT_FALSE(session->t.window.waiting);
}

TEST_F(RecoveryTest, ADeletionThatFailsIsToldAndTheRowStays)
{
    File("1.001", "A\r\n");
    File("1.002", "B\r\n");
    RecoveryList& list = session->List();
    std::filesystem::rename(Place(), Place() + ".away");
    folder.File("data/Orlin/Nib/AutoRecover", "a file in the way");
    list.DeleteListed();
    EXPECT_EQ(list.Rows().size(), 2U);
    ASSERT_EQ(session->t.boxes.Take().size(), 1U);
}

TEST_F(RecoveryTest, AFileWhoseSaveWasCutShortGetsItsOldContentBack)
{
    const std::string file = folder.File("item", "torn\0\0\0");
    const std::string copies = session->t.copies.BackupFolder();
    const auto interrupted = [&] {
        folder.Folder("backups");
        CopyKeeper keeper(copies, file);
        ASSERT_EQ(keeper.Keep("old\ntext\n", "new\ntext\n"), 0);
        keeper.Leave();
    };
    interrupted();
    RecoveryList& list = session->List();
    ASSERT_EQ(list.Rows().size(), 1U);
    EXPECT_EQ(list.Rows()[0].document, u"item as it was before a save that was cut short");
    EXPECT_FALSE(list.Rows()[0].checked) << "somebody may have mended the file";
    session->t.Store(ComposeFilePath(FromFileName(file)), u"torn");
    session->t.Store(ComposeFilePath(FromFileName(list.Rows()[0].kept->copy)), u"old");
    EXPECT_EQ(Compared(list), u"torn, as stored | item | old, as it was before a save that was cut short");
    list.CheckAll(true);
    list.RecoverChecked();
    EXPECT_EQ(ReadWholeFile(file).Bytes(), "old\ntext\n");
    EXPECT_TRUE(std::filesystem::is_empty(copies));
    interrupted();
    EXPECT_TRUE(session->List().Rows().empty()) << "the file is whole";
    EXPECT_TRUE(std::filesystem::is_empty(copies)) << "and the copy settled";
}

TEST_F(RecoveryTest, RecoveryThatFailsLeavesTheRow)
{
    File("1.001", "A\r\n");
    File("1.002", "B\r\n");
    RecoveryList& list = session->List();
    list.CheckAll(true);
    session->t.views.failure = Error{7, u"no window"};
    list.RecoverChecked();
    EXPECT_EQ(list.Rows().size(), 2U);
    EXPECT_EQ(session->t.Documents().Count(), 0);
    session->t.views.failure.reset();
    session->t.boxes.Take();
    std::filesystem::remove(Place() + "/1.001"); // somebody else was quicker
    list.RecoverChecked();
    EXPECT_EQ(list.Rows().size(), 1U);
    EXPECT_EQ(session->t.Documents().Count(), 1);
}

} // namespace nib::test::recover_test
