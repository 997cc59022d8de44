// Findings, suggestions and panels in the real frame, with the real service behind them.
#include "fakes/Surroundings.h"
#include "language/Dialects.h"
#include "pictures/Brackets.h"
#include "platform/qt/QtDesktop.h"
#include "shell/assist/QtCompletionList.h"
#include "shell/frame/frmDocument.h"
#include "shell/frame/frmMain.h"
#include "text/widget/SourceViewWidget.h"

#include <QtTest>
#include <QtWidgets>

namespace nib::test::assist_widget_test {

struct AssistTest : testing::Test, Surroundings {
    Dialects dialects;
    frmMain frame;
    Program program{With(Around(frame, [this](mvDocument& document) -> std::unique_ptr<clsDocView> {
        return std::make_unique<frmDocument>(frame, clipboard, document);
    }))};

    ProgramPorts With(ProgramPorts ports)
    {
        const Dialect* common = dialects.Find(kCommonDialect);
        ports.dialects = &dialects;
        ports.assist = {[common] {
                            return std::make_unique<LanguageService>(ServiceOptions{common, {}});
                        },
                        CallOnWindows};
        return ports;
    }
    void SetUp() override
    {
        program.Main({});
        frame.resize(900, 600);
        frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    void TearDown() override
    {
        for (auto& document : program.OpenDocuments().All()) document->FileClose(false);
        frame.Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    template <typename Condition>
    bool Wait(Condition so)
    {
        return QTest::qWaitFor([&] { return clock.Advance(std::chrono::milliseconds(20)), so(); }, 10'000);
    }
    SourceViewWidget& Open(TextView text)
    {
        program.Files().FileNew();
        Wait([] { return true; });
        auto& pane = *frame.ActiveForm()->SubWindow()->findChild<SourceViewWidget*>();
        pane.Model().SetText(text);
        pane.Model().SetCaret(pane.Model().Document().End());
        pane.setFocus();
        return pane;
    }
    void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void Key(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, held);
    }
    /// The list of suggestions, while it is to be seen.
    QListWidget* Suggested()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* list = dynamic_cast<QtCompletionList*>(window); list && list->isVisible())
                return list->findChild<QListWidget*>();
        return nullptr;
    }
    bool WaitForList()
    {
        return Wait([&] { return Suggested() != nullptr; });
    }
};

constexpr TextView kWrong =
    u"      TOTAL.PRICE = 1\r\n      GOSUB NOWHERE\r\n      PRINT TOTAL.PRICE\r\n      STOP\r\n      ";

TEST_F(AssistTest, WhatIsWrongIsUnderlinedListedAndGoneTo)
{
    SourceViewWidget& pane = Open(kWrong);
    ASSERT_TRUE(Wait([&] { return !pane.ShownUnderlines().empty(); }));
    EXPECT_EQ(pane.ShownUnderlines().front().range.start.line, 1);
    const QImage waved = pane.viewport()->grab().toImage();
    pane.SetUnderlines({});
    EXPECT_NE(pane.viewport()->grab().toImage(), waved);

    auto* panel = frame.findChild<QDockWidget*>(QStringLiteral("Problems"));
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(frame.Run(u"Problems"));
    auto* list = panel->findChild<QTreeView*>();
    ASSERT_TRUE(Wait([&] { return list->isVisible() && list->model()->rowCount() > 0; }));
    EXPECT_TRUE(pane.hasFocus()) << "the text keeps it";
    EXPECT_TRUE(frame.Run(u"NextProblem"));
    EXPECT_EQ(pane.Model().CaretLine(), 1);
    pane.Model().SetCaret({0, 3});
    list->setFocus();
    list->setCurrentIndex(list->model()->index(0, 0));
    Key(Qt::Key_Return);
    EXPECT_EQ(pane.Model().CaretLine(), 1);
    EXPECT_TRUE(pane.hasFocus());
    panel->close();
    EXPECT_FALSE(program.EditorSettings().ProblemsShown) << "closed by the user";
}

TEST_F(AssistTest, WhatIsWrongIsSaidInTheUsersLanguage)
{
    const Bracketing brackets;
    Open(kWrong);
    EXPECT_TRUE(frame.Run(u"Problems"));
    auto* list = frame.findChild<QDockWidget*>(QStringLiteral("Problems"))->findChild<QTreeView*>();
    ASSERT_TRUE(Wait([&] { return list->model()->rowCount() > 0; }));
    const QString said = list->model()->index(0, 0).data().toString();
    EXPECT_EQ(said, QStringLiteral("[GOSUB to label NOWHERE, which does not exist.]"));
    EXPECT_TRUE(frame.Run(u"NextProblem"));
    const auto panels = frame.statusBar()->findChildren<QLabel*>();
    EXPECT_TRUE(std::ranges::any_of(panels, [&](const QLabel* panel) { return panel->accessibleName() == said; }));
}

TEST_F(AssistTest, F1HelpsOnWhatIsAtTheCaretAndElseShowsThePages)
{
    SourceViewWidget& pane = Open(kWrong);
    ASSERT_TRUE(Wait([&] { return !pane.ShownUnderlines().empty(); }));
    const auto tip = [&] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (dynamic_cast<QtTip*>(window) && window->isVisible()) return window->findChild<QLabel*>()->text();
        return QString();
    };
    const auto pages = [&] { return std::count(journal.lines.begin(), journal.lines.end(), u"help"); };
    const struct {
        Position caret;
        const char* says; ///< null: the pages come
    } kPlaces[] = {{{8, 2}, "PRINT"}, {{11, 2}, "PRINT"}, {{14, 1}, "NOWHERE"}, {{0, 0}, nullptr}};
    for (const auto& place : kPlaces) {
        pane.Model().SetCaret(place.caret);
        const auto before = pages();
        Key(Qt::Key_F1);
        EXPECT_TRUE(Wait([&] { return !tip().isEmpty() || pages() > before; }));
        EXPECT_EQ(pages() > before, !place.says) << place.caret.line;
        if (!place.says) continue;
        EXPECT_TRUE(tip().contains(QLatin1String(place.says))) << tip().toStdString();
        Key(Qt::Key_F1);
        EXPECT_EQ(pages(), before + 1) << "asked twice";
        EXPECT_TRUE(tip().isEmpty());
    }
}

TEST_F(AssistTest, TypingBringsAListThatLeavesReturnToTheText)
{
    SourceViewWidget& pane = Open(kWrong);
    const auto line = [&] { return pane.Model().Document().GetLine(4); };
    Type("TOTA");
    ASSERT_TRUE(WaitForList());
    EXPECT_TRUE(pane.hasFocus());
    EXPECT_FALSE(Suggested()->accessibleName().isEmpty());
    Key(Qt::Key_Return);
    EXPECT_EQ(line(), u"      TOTA");
    EXPECT_TRUE(Wait([&] { return !Suggested(); }));

    Type("TOTA");
    ASSERT_TRUE(WaitForList());
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_EQ(pane.Model().Document().GetLine(5), u"      TOTAL.PRICE");
    EXPECT_EQ(Suggested(), nullptr);

    Type(" = TOTA");
    ASSERT_TRUE(WaitForList());
    Key(Qt::Key_Escape);
    EXPECT_EQ(Suggested(), nullptr);
    EXPECT_TRUE(frame.Run(u"CompleteWord"));
    ASSERT_TRUE(WaitForList());
    Key(Qt::Key_Tab);
    EXPECT_EQ(pane.Model().Document().GetLine(5), u"      TOTAL.PRICE = TOTAL.PRICE");
}

TEST_F(AssistTest, TheWordThatClosesIsOfferedAndNotInserted)
{
    SourceViewWidget& pane = Open(kWrong);
    program.EditorSettings().CompleteWords = true;
    Type("IF TOTAL.PRICE THEN");
    Key(Qt::Key_Escape);
    Key(Qt::Key_Return);
    ASSERT_TRUE(WaitForList());
    EXPECT_EQ(pane.Model().Document().LineCount(), 6);
    Key(Qt::Key_Tab);
    EXPECT_EQ(pane.Model().Document().GetLine(6), u"      END");
    EXPECT_EQ(pane.Model().CaretLine(), 5);
}

TEST_F(AssistTest, TheOutlineFollowsTheText)
{
    SourceViewWidget& pane = Open(u"      GOSUB ONE\r\n      STOP\r\nONE:\r\n      RETURN\r\nTWO:\r\n      RETURN");
    EXPECT_TRUE(frame.Run(u"Outline"));
    auto* list = frame.findChild<QDockWidget*>(QStringLiteral("Outline"))->findChild<QListWidget*>();
    ASSERT_TRUE(Wait([&] { return list->count() >= 2; }));
    EXPECT_TRUE(
        Wait([&] { return list->currentItem() && list->currentItem()->text().endsWith(QStringLiteral("TWO")); }));
    const int before = list->count();
    pane.Model().Document().InsertText({0, 4}, u"THREE: RETURN\r\n");
    EXPECT_TRUE(Wait([&] { return list->count() == before + 1; }));
    list->setCurrentRow(before - 2);
    emit list->itemActivated(list->currentItem());
    EXPECT_EQ(pane.Model().CaretLine(), 2);
}

TEST_F(AssistTest, LabelsAreThereWithoutColours)
{
    Open(u"      GOSUB ONE\r\nONE: RETURN");
    EXPECT_TRUE(frame.Run(u"Highlight"));
    mvDocument& document = *frame.ActiveForm()->ViewObject();
    EXPECT_FALSE(document.Highlight());
    ASSERT_EQ(document.Labels().size(), 1U);
    EXPECT_EQ(document.Labels().front().name, u"ONE");
    EXPECT_FALSE(document.Highlight());
}

} // namespace nib::test::assist_widget_test
