#include "fakes/FakeReader.h"
#include "fakes/Patience.h"
#include "platform/qt/QtText.h"
#include "printing/QtPrintingSurface.h"
#include "search/QtResultsPanel.h"
#include "search/frmFind.h"
#include "search/frmFindAccount.h"
#include "widgets/Keys.h"

namespace nib::test::widget_search_forms_test {

template <typename Widget>
Widget* ByText(const QWidget& form, const char* text)
{
    for (Widget* widget : form.findChildren<Widget*>())
        if (widget->text() == QLatin1String(text)) return widget;
    return nullptr;
}

struct FindFormTest : testing::Test {
    void Open(TextView text, bool replace = false)
    {
        document = &search.Add(text);
        form = std::make_unique<frmFind>(search.engine, search.lights);
        replace ? form->Replace() : form->Find();
        QApplication::setActiveWindow(form.get());
        QTest::qWait(1);
    }
    QComboBox* Combo() const { return form->findChild<QComboBox*>(); }

    TestSearch search;
    mvDocument* document = nullptr;
    std::unique_ptr<frmFind> form;
};

TEST_F(FindFormTest, KeysAlone)
{
    Open(u"one two\r\nTWO one");
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Find"));
    EXPECT_TRUE(Combo()->lineEdit()->hasFocus());
    Type("two");
    Key(Qt::Key_Return);
    EXPECT_EQ(search.View(*document).Caret(), (Position{7, 0}));
    EXPECT_TRUE(form->isVisible());
    Key(Qt::Key_F3);
    EXPECT_EQ(search.View(*document).Caret(), (Position{3, 1}));
    AccessKey(Qt::Key_C);
    EXPECT_TRUE(search.Dialog().matchCase);
    AccessKey(Qt::Key_W);
    EXPECT_TRUE(search.Dialog().wholeWord);
    AccessKey(Qt::Key_U);
    EXPECT_TRUE(search.Dialog().up);
    AccessKey(Qt::Key_N);
    EXPECT_TRUE(Combo()->lineEdit()->hasFocus());
    EXPECT_EQ(Combo()->count(), 1);
    EXPECT_EQ(Combo()->currentText(), QStringLiteral("two"));
    AccessKey(Qt::Key_A);
    EXPECT_FALSE(form->isVisible()) << "Find All hides the dialog";
    EXPECT_EQ(search.results.lines.back(), u"0001 one [two]");
}

TEST_F(FindFormTest, EveryButtonDoesItsPart)
{
    search.Add(u"other");
    Open(u"ab\r\nab\r\nab", true);
    Type("ab");
    Key(Qt::Key_Tab);
    Type("c");
    const auto press = [&](const char* caption) { ByText<QAbstractButton>(*form, caption)->click(); };
    press("&Replace");
    press("&Replace");
    EXPECT_EQ(search.View(*document).GetText(), u"c\r\nab\r\nab");
    form->Find();
    press("Curr&ent document");
    press("Book&mark All");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(search.Said(), std::vector<Text>{u"2 occurrences found and bookmarked."});
    search.Select(*document, {0, 1}, {1, 2});
    form->Find();
    press("&Selected text");
    press("&Down");
    press("&Find Next");
    EXPECT_EQ(search.Dialog().lookIn, LookIn::Selection);
    EXPECT_FALSE(search.Dialog().up);
    EXPECT_EQ(search.View(*document).Caret(), (Position{2, 1}));
    form->Find();
    press("All &open documents");
    EXPECT_EQ(search.Dialog().lookIn, LookIn::AllDocuments);
    press("Cancel");
    EXPECT_FALSE(form->isVisible());
}

/// A hit beyond the megabyte would be of another text than was meant.
TEST_F(FindFormTest, WhatIsPastedIsNotCutShort)
{
    const Text megabyte(size_t{1} << 20, u'x');
    Open(megabyte);
    Patience patience("a pasted text");
    QApplication::clipboard()->setText(ToQString(megabyte + u"y"));
    Key(Qt::Key_V, Qt::ControlModifier);
    Key(Qt::Key_Return);
    EXPECT_EQ(search.Said().size(), 1U);
    search.View(*document).SetText(megabyte + u"y");
    Key(Qt::Key_Return);
    EXPECT_TRUE(search.View(*document).HasSelection());
}

TEST_F(FindFormTest, EscapeHidesAndClearsTheStatus)
{
    Open(u"x");
    search.program.window.status[1] = u"Searched past end of document";
    Key(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(search.program.window.status[1], u"");
    form->Find();
    search.program.window.status[1] = u"old";
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(search.program.window.status[1], u"");
}

TEST_F(FindFormTest, ReplaceMode)
{
    Open(u"ab ab", true);
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Replace"));
    EXPECT_FALSE(ByText<QAbstractButton>(*form, "&Up")->isEnabled());
    EXPECT_FALSE(ByText<QPushButton>(*form, "Find &All")->isVisible());
    EXPECT_FALSE(ByText<QPushButton>(*form, "Book&mark All")->isVisible());
    Type("ab");
    Key(Qt::Key_Tab);
    Type("c");
    AccessKey(Qt::Key_A);
    EXPECT_EQ(search.Line(*document, 0), u"c c");
    EXPECT_EQ(search.Said(), std::vector<Text>{u"2 occurrences replaced."});
    EXPECT_TRUE(form->isVisible());
    form->Find();
    EXPECT_TRUE(ByText<QAbstractButton>(*form, "&Up")->isEnabled());
    EXPECT_FALSE(ByText<QPushButton>(*form, "&Replace")->isVisible());
}

struct ResultsFormTest : testing::Test {
    ResultsFormTest()
    {
        owner.setGeometry(0, 0, 1000, 700);
        owner.show();
    }
    frmResults& Form()
    {
        if (!form) form = std::make_unique<frmResults>(model, store, &owner);
        return *form;
    }
    QPlainTextEdit* Box() { return Form().findChild<QPlainTextEdit*>(); }
    void List()
    {
        Form().ResetResults(u"Search Results");
        Form().AddResultLine(u"", 0, 0, false);
        Form().AddResultLine(document.ListName(), 0, 0, true);
        Form().AddResultLine(u"0002 two 3", 5, 3, false);
        Form().ShowResults(u"");
        QApplication::setActiveWindow(&Form());
        QTest::qWait(1);
    }
    /// As a double click does on the word there.
    void DoubleClick(int line, int column)
    {
        QTextCursor cursor(Box()->document()->findBlockByNumber(line));
        cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, column);
        QTest::mouseDClick(Box()->viewport(), Qt::LeftButton, {}, Box()->cursorRect(cursor).center() + QPoint(2, 0));
    }

    TestSearch search;
    mvDocument& document = search.Add(u"one\r\ntwo 3\r\nthree");
    ResultsModel model{search.program.program.Services()};
    MemorySettings store;
    QWidget owner;
    std::unique_ptr<frmResults> form;
};

TEST_F(ResultsFormTest, WhatTheProgramSaysIsTranslatedAndWhatItFoundIsNot)
{
    const Translations translations{QLocale(QStringLiteral("de_DE"))};
    Form().ResetResults(u"References to Stopped.");
    Form().AddResultLine(u"Stopped.", 0, 0, false);
    Form().AddNote({u"gone", u"Hits: 2. Items with hits: 1 of 3. Files: 1. Time: 0.1 s.", u"Not readable: 1."});
    EXPECT_EQ(model.Contents(), u"Verwendungen von Stopped.\nStopped. \ngone Treffer: 2. Items mit Treffern: 1 von 3. "
                                u"Dateien: 1. Zeit: 0.1 s. Nicht lesbar: 1. ");
}

TEST_F(ResultsFormTest, DoubleClickGoesToTheSource)
{
    List();
    EXPECT_EQ(Box()->toPlainText(), QStringLiteral("Search Results\n \n") + ToQString(document.ListName()) +
                                        QStringLiteral(" \n0002 two 3 "));
    DoubleClick(3, 1);
    EXPECT_EQ(search.View(document).CaretLine(), 0) << "not before the word is selected";
    EXPECT_TRUE(QTest::qWaitFor([&] { return search.View(document).CaretLine() == 1; }, 1000));
    DoubleClick(3, 9);
    EXPECT_TRUE(QTest::qWaitFor([&] { return search.View(document).CaretLine() == 2; }, 1000))
        << "a number in the text";
}

TEST_F(ResultsFormTest, Keys)
{
    List();
    EXPECT_TRUE(Box()->hasFocus());
    EXPECT_FALSE(Box()->accessibleName().isEmpty());
    Key(Qt::Key_End, Qt::ControlModifier);
    Key(Qt::Key_Home);
    Key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(search.View(document).CaretLine(), 1);
    Key(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("0002 "));
    Form().findChild<QAction*>(QStringLiteral("SelectAll"))->trigger();
    Form().findChild<QAction*>(QStringLiteral("Copy"))->trigger();
    EXPECT_EQ(ViewOf(QApplication::clipboard()->text()), model.Contents());
    Form().findChild<QAction*>(QStringLiteral("SelectNone"))->trigger();
    EXPECT_FALSE(Box()->textCursor().hasSelection());
    search.View(document).SetCaret({});
    Key(Qt::Key_End, Qt::ControlModifier);
    Key(Qt::Key_Home);
    Key(Qt::Key_Return);
    EXPECT_EQ(search.View(document).CaretLine(), 1) << "as the double click";
    Form().reject();
    EXPECT_FALSE(Form().isVisible());
    Form().ShowResults(u"");
    EXPECT_EQ(Box()->document()->blockCount(), 4) << "hidden, not lost";
    QApplication::setActiveWindow(&Form());
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(ResultsFormTest, AListGrowsUnderTheReader)
{
    List();
    Key(Qt::Key_A, Qt::ControlModifier);
    Form().AddResultLine(u"0003 three", 5, 3, false);
    QTest::qWait(1);
    EXPECT_EQ(ViewOf(Box()->toPlainText()), model.Contents());
    EXPECT_EQ(Box()->textCursor().selectionEnd() + 13, Box()->document()->characterCount()) << "what was selected";
}

TEST_F(ResultsFormTest, SeparatorsInALineDoNotBreakIt)
{
    Form().ResetResults(u"T");
    Form().AddResultLine(u"0001 a\u2029b", 5, 1, false);
    Form().AddResultLine(u"0002 c", 5, 1, false);
    Form().ShowResults(u"");
    EXPECT_EQ(Box()->document()->blockCount(), 3);
    Form().findChild<QAction*>(QStringLiteral("SelectAll"))->trigger();
    Form().findChild<QAction*>(QStringLiteral("Copy"))->trigger();
    EXPECT_EQ(ViewOf(QApplication::clipboard()->text()), model.Contents());
}

TEST_F(ResultsFormTest, Font)
{
    List();
    Form().chooseFont = [](QFont& font) {
        font.setPointSizeF(14);
        return true;
    };
    Form().findChild<QAction*>(QStringLiteral("Font"))->trigger();
    EXPECT_EQ(search.Settings().ResultsFontSize, u"14");
    EXPECT_EQ(Box()->font().pointSizeF(), 14);
    EXPECT_FALSE(Form().findChild<QAction*>(QStringLiteral("Print"))->isEnabled()) << "nobody to print";
}

TEST_F(ResultsFormTest, LiesInThePanelUntilItIsTakenOut)
{
    QMainWindow window;
    auto* text = new QPlainTextEdit;
    window.setCentralWidget(text);
    auto* problems = new QDockWidget(&window);
    window.addDockWidget(Qt::BottomDockWidgetArea, problems);
    window.show();
    QtResultsPanel panel(Form(), store, window);
    const auto dock = [&] { return Form().findChild<QMenuBar*>()->actions()[0]->menu()->actions().back(); };
    QApplication::setActiveWindow(&window);
    text->setFocus();
    EXPECT_FALSE(panel.isVisible());
    Form().ShowResults(u"12 x");
    EXPECT_TRUE(panel.isVisible() && Box()->isVisible());
    EXPECT_EQ(window.tabifiedDockWidgets(problems), QList<QDockWidget*>{&panel});
    EXPECT_TRUE(text->hasFocus()) << "the text keeps the keys";
    Form().ShowResults(u"done\r\nLine 2: wrong");
    EXPECT_TRUE(Form().GoToError(false) && text->hasFocus());
    EXPECT_EQ(ViewOf(Box()->textCursor().selectedText()), u"Line 2: wrong");
    EXPECT_FALSE(Form().GoToError(false));
    Form().TakeFocus();
    Key(Qt::Key_Escape);
    EXPECT_FALSE(panel.isVisible());
    EXPECT_FALSE(Form().GoToError(true)) << "closed";

    Form().AddOutput(u"one\r\ntwo", true);
    EXPECT_FALSE(panel.isVisible()) << "it may be through in no time";
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel.isVisible(); }));
    Form().AddOutput(u"three", false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Box()->toPlainText() == QLatin1String("one\ntwo\nthree"); }));
    Form().KeepResults(u"clean");
    EXPECT_FALSE(panel.isVisible()) << "nothing to look at";
    Form().ShowResults(u"2 x");
    Form().KeepResults(u"clean");
    EXPECT_TRUE(panel.isVisible()) << "the user has it open";
    EXPECT_TRUE(QTest::qWaitFor([&] { return Box()->toPlainText() == QLatin1String("clean"); }));
    panel.hide();

    dock()->trigger();
    EXPECT_TRUE(Form().isWindow() && Form().isVisible());
    EXPECT_EQ(store.Get(u"ResultsFloating", u""), u"True");
    Key(Qt::Key_Escape);
    Form().ShowResults(u"13 x");
    EXPECT_TRUE(Form().isVisible() && !panel.isVisible()) << "it stays out";
    dock()->trigger();
    EXPECT_TRUE(panel.isVisible() && !Form().isWindow());
    EXPECT_EQ(store.Get(u"ResultsFloating", u""), u"False");
    form.reset();
}

struct FindAccountFormTest : testing::Test, TestAccountFind {
    FindAccountFormTest()
    {
        Item(u"BP/A", u"one\r\nx = 1");
        Item(u"DATA/D", u"x");
        form.ShowDialog();
        QApplication::setActiveWindow(&form);
        QTest::qWait(1);
        EXPECT_TRUE(Until([this] { return !find.Dialog().readsFiles; }));
    }
    QPushButton& By(const char* text) { return *ByText<QPushButton>(form, text); }

    frmFindAccount form{find};
};

TEST_F(FindAccountFormTest, KeysAlone)
{
    EXPECT_FALSE(By("&Find").isEnabled()) << "for nothing";
    Type("X");
    AccessKey(Qt::Key_M);
    EXPECT_TRUE(find.Dialog().matchCase);
    AccessKey(Qt::Key_M);
    AccessKey(Qt::Key_W);
    EXPECT_TRUE(find.Dialog().wholeWord);
    AccessKey(Qt::Key_L);
    Key(Qt::Key_Down);
    Key(Qt::Key_Space);
    EXPECT_FALSE(find.Dialog().files[1].chosen);
    AccessKey(Qt::Key_I);
    Key(Qt::Key_A, Qt::ControlModifier);
    Type("a*");
    EXPECT_EQ(find.Dialog().pattern, u"a*");
    Key(Qt::Key_Return);
    EXPECT_TRUE(Until([this] { return IsIdle(); }));
    EXPECT_TRUE(Listed(u"0002 [x] = 1"));
    EXPECT_FALSE(Listed(u"# DATA D"));
    EXPECT_FALSE(form.isVisible()) << "the list is what is wanted now";
    EXPECT_EQ(results.shown, 1);
}

TEST_F(FindAccountFormTest, EscapeStopsThenCloses)
{
    hooks[{u"DATA", u"D"}] = [this] { last->stopped.Wait(); };
    Type("x");
    AccessKey(Qt::Key_F);
    EXPECT_TRUE(Until([this] { return find.Dialog().listed; }));
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(By("&Replace...").isEnabled());
    EXPECT_TRUE(By("&Stop").isEnabled());
    Key(Qt::Key_Escape);
    EXPECT_TRUE(IsIdle());
    EXPECT_TRUE(form.isVisible()) << "with how far it came";
    AccessKey(Qt::Key_E);
    EXPECT_FALSE(By("&Find").isEnabled());
    AccessKey(Qt::Key_C);
    Type("NONE");
    Key(Qt::Key_Tab);
    EXPECT_TRUE(Until([this] { return !find.Dialog().readsFiles; }));
    EXPECT_EQ(form.findChild<QListWidget*>()->count(), 0);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

} // namespace nib::test::widget_search_forms_test
