#include "../logic/storage/TempFolder.h"
#include "ViewFixture.h"
#include "compare/history/QtHistory.h"
#include "fakes/Surroundings.h"
#include "platform/qt/QtDesktop.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"

namespace nib::test::history_panel_test {

using MarginNotesTest = ViewFixture;

/// A letter a line: that of its note.
std::string NotesOf(const SourceViewWidget& widget, int32_t count)
{
    std::string lines(static_cast<size_t>(count), '.');
    for (const MarginNote& note : widget.Notes().All())
        for (int32_t line = note.first; line <= note.last; ++line)
            lines[static_cast<size_t>(line)] = note.text[0].toLatin1();
    return lines;
}

TEST_F(MarginNotesTest, MoveWithTheTextAndLeaveWhatIsEdited)
{
    Load(u"0\r\n1\r\n2\r\n3\r\n4\r\n5");
    const QRectF before = widget->CellOf({0, 0});
    widget->SetNotes({{0, 2, QStringLiteral("anna")}, {3, 5, QStringLiteral("bo")}});
    EXPECT_GT(widget->CellOf({0, 0}).left(), before.left() + 4 * before.width()) << "room for the longest";
    const struct {
        Position start;
        Position end;
        TextView text;
        const char* notes;
    } kEdits[] = {
        {{0, 1}, {0, 1}, u"x", "a.abbb"}, {{1, 3}, {1, 3}, u"\r\n", "a.a..bb"}, {{0, 0}, {0, 2}, u"", "...bb"}};
    for (const auto& edit : kEdits) {
        buffer.DeleteRange(edit.start, edit.end);
        if (!edit.text.empty()) buffer.InsertText(edit.start, edit.text);
        EXPECT_EQ(NotesOf(*widget, buffer.LineCount()), edit.notes);
        EXPECT_TRUE(widget->Notes().AreOld());
    }
    widget->SetNotes({});
    EXPECT_EQ(widget->CellOf({0, 0}), before);
}

struct HistoryPanelTest : testing::Test {
    TempFolder folder;
    Surroundings around{folder.Path()};
    frmMain frame;
    Program program{With(around.Around(frame, [this](mvDocument& made) -> std::unique_ptr<clsDocView> {
        return std::make_unique<frmDocument>(frame, around.clipboard, made);
    }))};
    std::unique_ptr<QtCompareWindows> compare;
    std::unique_ptr<QtHistory> shown;
    std::shared_ptr<mvDocument> document;

    static ProgramPorts With(ProgramPorts ports)
    {
        ports.assist.toWindows = CallOnWindows;
        return ports;
    }
    void SetUp() override
    {
        program.Main({});
        compare = std::make_unique<QtCompareWindows>(program.Services(), around.store, &frame,
                                                     [this](QWidget* content) { frame.TakeGuest(content); });
        shown = std::make_unique<QtHistory>(program.Versions(), program.Services(), *compare, frame, [] {});
        around.connection.store.items[u"mvdb:*/DEMO/BP/MAIN"] = {u"one\r\ntwo", false};
        program.OpenPath(u"mvdb:*/DEMO/BP/MAIN", false);
        document = program.OpenDocuments().Item(1);
        document->ReplaceText(u"one\r\nTWO");
        document->FileSave();
        program.EditorSettings().HistoryShown = program.EditorSettings().AuthorsShown = true;
        ASSERT_TRUE(QTest::qWaitFor([&] { return !program.Versions().Last(*document).empty(); }, 10'000));
        program.Versions().LookAgain();
    }
    void TearDown() override
    {
        shown.reset();
        compare.reset();
        document->FileClose(false);
        frame.Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(HistoryPanelTest, ListsBringsBackAndTellsOfAuthors)
{
    auto* panel = frame.findChild<QDockWidget*>(QStringLiteral("History"));
    auto* list = panel->findChild<QTreeView*>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount() == 2; }, 10'000));
    const auto cell = [&](int row, int column) { return list->model()->index(row, column).data().toString(); };
    EXPECT_EQ(cell(1, 1) + u' ' + cell(0, 2) + u' ' + cell(1, 3),
              QStringLiteral("server1 +1 \u22121 as it was first read"));
    list->setCurrentIndex(list->model()->index(0, 0));
    QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_F2, Qt::NoModifier);
    asked.ignore();
    QApplication::sendEvent(list, &asked);
    EXPECT_TRUE(asked.isAccepted()) << "the frame has another use for the key";
    QTest::keyClick(list, Qt::Key_F2);
    auto* message = list->findChild<QLineEdit*>();
    ASSERT_NE(message, nullptr);
    QTest::keyClicks(message, QStringLiteral("louder"));
    QTest::keyClick(message, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(program.Versions().List(*document, program.Versions().Last(*document), 1)[0].message, u"louder");

    auto* pane = frame.ActiveForm()->SubWindow()->findChild<SourceViewWidget*>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return pane->Notes().All().size() == 2; }, 10'000)) << "a line of each";

    list->setCurrentIndex(list->model()->index(1, 0));
    panel->findChildren<QPushButton*>()[0]->click();
    EXPECT_EQ(document->GetText(), u"one\r\ntwo");
    document->Undo();
    EXPECT_FALSE(document->IsDirty());
    const auto windows = frame.findChildren<QMdiSubWindow*>().size();
    panel->findChildren<QPushButton*>()[1]->click();
    EXPECT_EQ(frame.findChildren<QMdiSubWindow*>().size(), windows + 1) << "the version beside the document";
    QApplication::processEvents();
    EXPECT_EQ(list->model()->rowCount(), 2) << "of the document that is compared";
    list->selectAll();
    panel->findChildren<QPushButton*>()[1]->click();
    EXPECT_EQ(frame.findChildren<QMdiSubWindow*>().size(), windows + 2) << "two versions";
    QTest::keyClick(list, Qt::Key_Escape);
}

} // namespace nib::test::history_panel_test
