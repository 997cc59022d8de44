// The forms of search, driven by keys as a user would.

#include "fakes/FakeSearch.h"
#include "fakes/Patience.h"
#include "platform/qt/QtText.h"
#include "printing/QtPrintingSurface.h"
#include "search/frmFind.h"
#include "search/frmResults.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

#include <map>

namespace nib::test {
namespace {

struct MapStore final : SettingsStore {
    Text Get(TextView name, TextView fallback) override
    {
        auto found = values.find(Text(name));
        return found == values.end() ? Text(fallback) : found->second;
    }
    void Save(TextView name, TextView value, TextView) override { values[Text(name)] = value; }
    std::map<Text, Text> values;
};

template <typename Widget>
Widget* ByText(const QWidget& form, const char* text)
{
    for (Widget* widget : form.findChildren<Widget*>())
        if (widget->text() == QLatin1String(text)) return widget;
    return nullptr;
}

void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void Type(const char* text)
{
    QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(text));
}

/// An access key; the button shows that it is pressed before it acts.
void Alt(Qt::Key key)
{
    Key(key, Qt::AltModifier);
    QTest::qWait(150);
}

/// Every button and label has the room that its text needs.
void ExpectNothingClipped(const QWidget& form)
{
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        if (!widget->isVisible() ||
            (!qobject_cast<const QAbstractButton*>(widget) && !qobject_cast<const QLabel*>(widget)))
            continue;
        const QSize need = widget->minimumSizeHint();
        EXPECT_GE(widget->width(), need.width()) << qPrintable(widget->objectName());
        EXPECT_GE(widget->height(), need.height());
        EXPECT_TRUE(form.rect().contains(QRect(widget->mapTo(&form, QPoint()), widget->size())));
    }
}

class FindFormTest : public testing::Test {
protected:
    void Open(TextView text, bool replace = false)
    {
        document = &search.Add(text);
        form = std::make_unique<frmFind>(search.engine);
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
    Alt(Qt::Key_C);
    EXPECT_TRUE(search.Dialog().matchCase);
    Alt(Qt::Key_W);
    EXPECT_TRUE(search.Dialog().wholeWord);
    Alt(Qt::Key_U);
    EXPECT_TRUE(search.Dialog().up);
    Alt(Qt::Key_N);
    EXPECT_TRUE(Combo()->lineEdit()->hasFocus());
    EXPECT_EQ(Combo()->count(), 1);
    EXPECT_EQ(Combo()->currentText(), QStringLiteral("two"));
    Alt(Qt::Key_A);
    EXPECT_FALSE(form->isVisible()) << "Find All hides the dialog";
    EXPECT_EQ(search.results.lines.back(), u"0001 one [two]");
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

TEST_F(FindFormTest, EmptyTextDoesNothing)
{
    Open(u"x");
    Key(Qt::Key_Return);
    Alt(Qt::Key_M);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(search.Said().empty());
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
    Alt(Qt::Key_A);
    EXPECT_EQ(search.Line(*document, 0), u"c c");
    EXPECT_EQ(search.Said(), std::vector<Text>{u"2 occurrences replaced."});
    EXPECT_TRUE(form->isVisible());
    form->Find();
    EXPECT_TRUE(ByText<QAbstractButton>(*form, "&Up")->isEnabled());
    EXPECT_FALSE(ByText<QPushButton>(*form, "&Replace")->isVisible());
}

TEST_F(FindFormTest, NamesDefaultAndTabOrder)
{
    Open(u"ab", true);
    EXPECT_TRUE(ByText<QPushButton>(*form, "&Find Next")->isDefault());
    QSet<QWidget*> reached;
    for (int i = 0; i < 30; ++i) {
        QWidget* focus = QApplication::focusWidget();
        auto* button = qobject_cast<QAbstractButton*>(focus);
        EXPECT_FALSE(focus->accessibleName().isEmpty() && (!button || button->text().isEmpty()));
        reached.insert(focus);
        Key(Qt::Key_Tab);
    }
    EXPECT_EQ(reached.size(), 10) << "two fields, two groups, two boxes, four buttons";
}

TEST_F(FindFormTest, LargeFontHasRoom)
{
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(14);
    QApplication::setFont(large);
    for (const bool replace : {false, true}) {
        Open(u"ab", replace);
        ExpectNothingClipped(*form);
    }
    QApplication::setFont(before);
}

TEST_F(FindFormTest, FieldsTakeTheEditorsFont)
{
    search.Settings().FontName = u"DejaVu Sans Mono";
    search.Settings().FontSize = u"20";
    Open(u"ab");
    EXPECT_EQ(Combo()->font().family(), QStringLiteral("DejaVu Sans Mono"));
    EXPECT_EQ(Combo()->font().pointSizeF(), 12);
}

class ResultsFormTest : public testing::Test {
protected:
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
    MapStore store;
    QWidget owner;
    std::unique_ptr<frmResults> form;
};

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
    Key(Qt::Key_Return);
    EXPECT_FALSE(Form().isVisible());
    Form().ShowResults(u"");
    EXPECT_EQ(Box()->document()->blockCount(), 4) << "hidden, not lost";
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(ResultsFormTest, SizeIsKept)
{
    store.values = {{u"ResultsWidth", u"7500"}, {u"ResultsHeight", u"3000"}};
    List();
    EXPECT_EQ(Form().size(), QSize(7500 * Form().logicalDpiX() / 1440, 3000 * Form().logicalDpiX() / 1440));
    EXPECT_EQ(Form().pos() + QPoint(Form().width() + 8, Form().height() + 8),
              owner.frameGeometry().bottomRight() + QPoint(1, 1));
    Form().resize(600, 300);
    Form().Unload();
    EXPECT_EQ(store.values[u"ResultsWidth"], Decimal(600 * 1440 / Form().logicalDpiX()));
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

TEST_F(ResultsFormTest, FontAndPrint)
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
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("list.pdf"));
    {
        QPdfWriter pdf(file);
        pdf.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
        Form().PrintTo(Paper{pdf, true});
    }
    QProcess reader;
    reader.start(QStringLiteral("pdftoppm"),
                 {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-png"), QStringLiteral("-singlefile"),
                  file, folder.filePath(QStringLiteral("page"))});
    ASSERT_TRUE(reader.waitForFinished());
    const QImage page(folder.filePath(QStringLiteral("page.png")));
    int left = page.width();
    for (int y = 0; y < page.height() * 3 / 4; ++y) {
        for (int x = 0; x < page.width(); ++x) {
            const QRgb pixel = page.pixel(x, y);
            ASSERT_TRUE(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel)) << "grey was chosen";
            if (qGray(pixel) < 128) left = std::min(left, x);
        }
    }
    EXPECT_NEAR(left, 15 / 25.4 * 72, 4) << "no margins but the sheet's";
}

TEST_F(ResultsFormTest, LongListsStayQuick)
{
    Patience patience("list");
    Form().ResetResults(u"Search Results");
    for (int i = 0; i < 100000; ++i) Form().AddResultLine(u"0001 some line of text with a hit in it", 26, 3, false);
    Form().ShowResults(u"");
    QTest::qWait(1);
    Box()->verticalScrollBar()->setValue(Box()->verticalScrollBar()->maximum());
    Form().grab();
}

} // namespace
} // namespace nib::test
