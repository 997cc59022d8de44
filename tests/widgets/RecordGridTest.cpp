#include "FrameFixture.h"
#include "fakes/MemoryReader.h"
#include "records/frmRecord.h"

namespace nib::test {

/// An order of DEMO in the grid.
struct RecordGridTest : FrameFixture {
    static inline const Text kOrder = u"mvdb:*/DEMO/DATA/O1";

    void SetUp() override
    {
        FrameFixture::SetUp();
        connection.reader = [this](const ItemPlace&) -> std::unique_ptr<MemoryReader> {
            ++readers;
            if (down) throw Error(error_number::kDeviceUnavailable, u"Nobody answers.");
            return std::make_unique<MemoryReader>(dictionary);
        };
        form = &Open(kOrder, u"C1\r\n21137\r\nP1\uF8FDP2\r\n12\uF8FD100\r\nO");
        EXPECT_TRUE(form->txtText().Document().LineCount() == 5);
        frame.Run(u"RecordGrid");
        Settle();
    }
    frmDocument& Open(const Text& path, const Text& text)
    {
        connection.store.items[path] = {text, false};
        program.OpenPath(path, false);
        Settle();
        Settle();
        return *frame.ActiveForm();
    }
    QtGridView& Table(QString name)
    {
        for (auto* table : form->SubWindow()->findChildren<QTableView*>())
            if (table->accessibleName() == name) return static_cast<QtGridView&>(*table);
        throw std::runtime_error("no such table");
    }
    QtGridView& List() { return Table(QStringLiteral("Attributes")); }
    QtGridView& Lines() { return Table(QStringLiteral("LINES")); }
    void Type(QtGridView& table, int row, int column, const char* text)
    {
        table.setFocus();
        table.setCurrentIndex(table.model()->index(row, column));
        QTest::keyClicks(&table, QStringLiteral(" "));
        Editor()->selectAll();
        QTest::keyClicks(Editor(), QString::fromLatin1(text));
    }
    QLineEdit* Editor() { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }
    std::string Line(int32_t attribute) { return ToUtf8(form->txtText().Document().GetLine(attribute - 1)); }
    QString Refusal()
    {
        for (QLabel* label : form->SubWindow()->findChildren<QLabel*>())
            if (label->isVisible() && label->text().startsWith(u'\'')) return label->text();
        return {};
    }

    MemoryItems dictionary{{u"DATA.DIC",
                            {{u"DATE", u"D\n2\nD4-YMD\nDate\n10R\nS"},
                             {u"PART", u"D\n3\n\nPart\n6L\nM\nLINES"},
                             {u"QTY", u"D\n4\nMD0\nQuantity\n6R\nM\nLINES"}}}};
    frmDocument* form = nullptr;
    int readers = 0;
    bool down = false;
};

TEST_F(RecordGridTest, ACellIsTypedIntoTheText)
{
    ASSERT_TRUE(form->IsGrid());
    EXPECT_TRUE(List().hasFocus());
    EXPECT_FALSE(TextOf(*form).isVisible());
    Type(List(), 1, 0, "2025-11-14");
    Key(Qt::Key_Return);
    EXPECT_EQ(Line(2), "21138");
    EXPECT_EQ(form->txtText().Caret(), (Position{0, 1})) << "commands go by what is seen";
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Line(2), "21137");
    EXPECT_EQ(List().model()->index(1, 0).data().toString(), QStringLiteral("2025-11-13"));
    Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Line(2), "21138") << "and no line is deleted that is not seen";
    frame.Run(u"RecordGrid");
    EXPECT_FALSE(form->IsGrid());
    EXPECT_TRUE(TextOf(*form).isVisible());
    EXPECT_TRUE(TextOf(*form).hasFocus());
}

TEST_F(RecordGridTest, ATextThatMeansNothingStaysToBeMended)
{
    QWidget* cells = Lines().viewport();
    const std::function<void()> ways[] = {
        [&] { Key(Qt::Key_Return); },
        [&] { Key(Qt::Key_F4, Qt::ControlModifier); },
        [&] { Key(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier); },
        [&] { Key(Qt::Key_Up); },
        [&] {
            QTest::mouseClick(cells, Qt::LeftButton, {}, Lines().visualRect(Lines().model()->index(0, 0)).center());
        },
        [&] { form->SubWindow()->findChild<QLineEdit*>()->setFocus(); },
        [&] {
            form->txtText().SetCaret({0, 0});
        },
        [&] { frame.ActivateChild(New()), Settle(), frame.ActivateChild(*form); },
        [&] { frame.close(); },
    };
    Type(Lines(), 1, 1, "many");
    for (const auto& go : ways) {
        SCOPED_TRACE(&go - ways);
        go();
        Settle();
        ASSERT_TRUE(form->IsGrid() && Editor() && cells->isAncestorOf(Editor()));
        EXPECT_EQ(Editor()->text(), QStringLiteral("many"));
        EXPECT_EQ(Refusal(), QStringLiteral("'many' is no number."));
    }
    EXPECT_EQ(boxes.Take(), std::vector{Warning(u"'many' is no number.")}) << "as the program ends";
    Key(Qt::Key_Escape);
    EXPECT_EQ(Refusal(), QString());
    Type(Lines(), 1, 1, "many");
    Key(Qt::Key_Return);
    Editor()->setText({});
    QTest::keyClicks(Editor(), QStringLiteral("13"));
    boxes.Answer({message_box::kAnswerYes});
    frame.Run(u"CloseAll");
    EXPECT_EQ(boxes.Take().size(), 1U);
    EXPECT_EQ(ToUtf8(connection.store.items[kOrder].text), "C1\r\n21137\r\nP1\uF8FDP2\r\n12\uF8FD13\r\nO");
}

TEST_F(RecordGridTest, WhatIsTypedGoesIntoNoOtherValueThanIsSeen)
{
    Type(List(), 0, 0, "C2");
    form->txtText().Document().InsertText({0, 0}, u"new\r\n");
    Settle();
    Key(Qt::Key_Return);
    EXPECT_EQ(Line(1) + Line(2), "newC1");
    ASSERT_TRUE(Editor());
    EXPECT_EQ(Editor()->text(), QStringLiteral("C2"));
    Key(Qt::Key_Escape);
}

TEST_F(RecordGridTest, AColumnGrowsWithWhatIsTyped)
{
    Type(List(), 0, 0, std::string(300, 'm').c_str());
    Key(Qt::Key_Return);
    EXPECT_EQ(List().columnWidth(0), 44 * List().fontMetrics().averageCharWidth());
}

TEST_F(RecordGridTest, RowsAreTypedOneAfterTheOther)
{
    Type(Lines(), 2, 0, "P3");
    Key(Qt::Key_Tab);
    ASSERT_NE(Editor(), nullptr) << "the next cell of the new row";
    EXPECT_EQ(Lines().currentIndex(), Lines().model()->index(2, 1));
    QTest::keyClicks(Editor(), QStringLiteral("7"));
    Key(Qt::Key_Return);
    EXPECT_EQ(Line(3) + " " + Line(4), "P1\uF8FDP2\uF8FDP3 12\uF8FD100\uF8FD7");
    EXPECT_EQ(Lines().model()->rowCount(), 4);
    EXPECT_EQ(Lines().currentIndex(), Lines().model()->index(2, 1));
    Lines().setCurrentIndex(Lines().model()->index(0, 0));
    Key(Qt::Key_Insert);
    Key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Line(3) + " " + Line(4), "P1\uF8FD\uF8FDP2\uF8FDP3 12\uF8FD\uF8FD100\uF8FD7");
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(Line(3) + " " + Line(4), "P1\uF8FDP2\uF8FDP3 12\uF8FD100\uF8FD7");
}

TEST_F(RecordGridTest, AnOpenCellIsSavedWithTheRest)
{
    Type(List(), 0, 0, "C2");
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ToUtf8(connection.store.items[kOrder].text).substr(0, 2), "C2");
}

TEST_F(RecordGridTest, EscapeGivesUpWhateverKeysWereHeld)
{
    for (const Qt::Key key : {Qt::Key_Control, Qt::Key_Alt, Qt::Key_Shift, Qt::Key_AltGr, Qt::Key_Dead_Acute}) {
        Type(List(), 0, 0, "C2");
        const auto held = key == Qt::Key_Control ? Qt::ControlModifier
                          : key == Qt::Key_Alt   ? Qt::AltModifier
                                                 : Qt::NoModifier;
        QKeyEvent asked(QEvent::ShortcutOverride, key, held);
        QApplication::sendEvent(Editor(), &asked);
        Key(Qt::Key_Escape);
        EXPECT_EQ(Line(1), "C1") << key;
    }
}

TEST_F(RecordGridTest, ASuddenEndKeepsACellThatIsOpen)
{
    Type(List(), 0, 0, "C2");
    program.KeepAll();
    EXPECT_EQ(Line(1), "C2");
}

TEST_F(RecordGridTest, RecordsOfTheFileOpenSoFromThenOn)
{
    EXPECT_TRUE(Open(u"mvdb:*/DEMO/DATA/O2", u"C2").IsGrid());
    EXPECT_FALSE(Open(u"mvdb:*/DEMO/BP/P", u"PRINT").IsGrid());
    boxes.whileShown = [] { QApplication::processEvents(); };
    boxes.Answer({message_box::kAnswerYes});
    program.OpenPath(u"mvdb:*/DEMO/DATA/NEW", false);
    Settle();
    EXPECT_TRUE(frame.ActiveForm()->IsGrid());
    EXPECT_EQ(boxes.Take().size(), 1U);
    frame.ActivateChild(*form);
    frame.Run(u"RecordGrid");
    EXPECT_FALSE(Open(u"mvdb:*/DEMO/DATA/O3", u"C3").IsGrid());
}

TEST_F(RecordGridTest, ArrowsLeadFromTableToTable)
{
    List().setCurrentIndex(List().model()->index(3, 0));
    Key(Qt::Key_Down);
    EXPECT_TRUE(Lines().hasFocus());
    EXPECT_EQ(form->txtText().Caret(), (Position{0, 2}));
    Key(Qt::Key_Up);
    EXPECT_TRUE(List().hasFocus());
    List().setCurrentIndex(List().model()->index(0, 0));
    Key(Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Filter"));
    form->txtText().SetCaret({0, 3});
    Settle();
    EXPECT_EQ(Lines().currentIndex(), Lines().model()->index(0, 1)) << "the cell at the caret";
}

TEST_F(RecordGridTest, WhatMayOnlyBeReadIsNotTypedInto)
{
    form->txtText().SetReadOnly(true);
    List().setCurrentIndex(List().model()->index(0, 0));
    QTest::keyClicks(&List(), QStringLiteral("x"));
    Key(Qt::Key_Delete);
    Key(Qt::Key_Insert);
    EXPECT_EQ(Line(1), "C1");
}

TEST_F(RecordGridTest, WithoutItsHostTheGridSaysSo)
{
    down = true;
    frmDocument& other = Open(u"mvdb:*/DEMO/DATA/O2", u"C2");
    ASSERT_TRUE(other.IsGrid());
    QStringList texts;
    for (const auto* label : other.SubWindow()->findChildren<QLabel*>()) texts += label->text();
    EXPECT_TRUE(texts.contains(QStringLiteral("The dictionary could not be read: Nobody answers.")));
}

TEST_F(RecordGridTest, AnotherTextInTheWindowMakesAnotherGrid)
{
    Load(*form, u"C9\r\n21139");
    Settle();
    ASSERT_TRUE(form->IsGrid());
    EXPECT_EQ(readers, 1) << "the names are known";
    EXPECT_EQ(List().model()->index(1, 0).data().toString(), QStringLiteral("2025-11-15"));
    program.OpenDocuments().Item(1)->FileClose(false);
    Settle();
}

} // namespace nib::test
