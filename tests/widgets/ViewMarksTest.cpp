#include "widgets/ViewFixture.h"

namespace nib::widget_view_marks_test {

struct ViewMarksTest : ViewFixture {
    void SetUp() override
    {
        ViewFixture::SetUp();
        Load(Text(u"IF A\r\n\r\n      AB B\r\nEND\r\nAB") + Text(200, u'\n'));
        Model().SetCaret({0, 0});
    }
    void Turn(bool ViewMarks::*mark, bool on)
    {
        ViewMarks marks = Model().Marks();
        marks.*mark = on;
        Model().SetMarks(marks);
    }
    QRectF Cell(int32_t col, int32_t line) { return widget->CellOf({col, line}); }
    QRectF Margin(int32_t /*col*/, int32_t line)
    {
        const QRectF cell = Cell(0, line);
        return {0, cell.top(), cell.left(), cell.height()};
    }
    int TopLine()
    {
        int32_t line = 0;
        int32_t column = 0;
        Model().GetFirstVisible(line, column);
        return line;
    }
};

using Area = QRectF (ViewMarksTest::*)(int32_t col, int32_t line);

struct Row {
    bool ViewMarks::*mark;
    Position caret;
    Area area;
    Position lit;
    Position same;
};

const Row kRows[] = {
    {&ViewMarks::currentLine, {0, 1}, &ViewMarksTest::Cell, {20, 1}, {20, 2}},
    {&ViewMarks::matches, {1, 0}, &ViewMarksTest::Cell, {0, 3}, {9, 2}},
    {&ViewMarks::matches, {7, 2}, &ViewMarksTest::Cell, {0, 4}, {9, 2}},
    {&ViewMarks::changeBars, {2, 3}, &ViewMarksTest::Margin, {0, 3}, {0, 2}},
    {&ViewMarks::indentGuides, {0, 3}, &ViewMarksTest::Cell, {3, 2}, {3, 3}},
    {&ViewMarks::visibleBlanks, {0, 3}, &ViewMarksTest::Cell, {8, 2}, {9, 2}},
};

TEST_F(ViewMarksTest, EachSwitchLightsWhatItIsFor)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::to_string(&row - kRows));
        Model().SetCaret(row.caret);
        if (row.mark == &ViewMarks::changeBars) Type("C");
        Turn(row.mark, false);
        const QImage dark = Grab();
        Turn(row.mark, true);
        const auto differ = [&](Position p) {
            const QRect area = (this->*row.area)(p.col, p.line).toRect();
            Grab(); // what is looked up before a paint may light lines beyond it
            return Grab().copy(area) != dark.copy(area);
        };
        EXPECT_TRUE(QTest::qWaitFor([&] { return differ(row.lit); }));
        EXPECT_FALSE(differ(row.same));
        Turn(row.mark, false);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !differ(row.lit); }));
        if (row.mark == &ViewMarks::changeBars) Key(Qt::Key_Z, Qt::ControlModifier);
    }
}

TEST_F(ViewMarksTest, AMarkedLineIsFramedBesideItsBookmarkAndFollowed)
{
    const auto look = [&](int32_t line) { return widget->viewport()->grab(Margin(0, line).toRect()).toImage(); };
    const QImage plain = look(2);
    buffer.ToggleBookmark(2);
    const QImage bookmark = look(2);
    widget->SetMarkedLines({2});
    EXPECT_TRUE(look(2) != plain && look(2) != bookmark);
    buffer.ToggleBookmark(2);
    EXPECT_TRUE(look(2) != plain && look(2) != bookmark);
    buffer.InsertText({0, 1}, u"\r\n");
    EXPECT_TRUE(widget->IsMarked(3) && !widget->IsMarked(2));
    buffer.Undo();
    widget->SetMarkedLines({});
    EXPECT_EQ(look(2), plain);
}

TEST_F(ViewMarksTest, TheScrollBarShowsTheWholeText)
{
    ViewMarks marks;
    marks.matches = marks.changeBars = true;
    Model().SetMarks(marks);
    buffer.ToggleBookmark(100);
    Model().SetCaret({0, 150});
    Type("A = AB");
    buffer.SetModified(false);
    Type(" + ");
    widget->SetMarkedLines({50});
    const auto has = [&](int32_t line, ScrollMarks::Kind kind) {
        const int row = line * widget->verticalScrollBar()->height() / buffer.LineCount();
        uint32_t kinds = 0; // the groove is somewhat shorter than the bar
        for (int near = std::max(row - 25, 0); near < row + 5; ++near) kinds |= widget->Marks().At(near);
        return (kinds >> static_cast<int>(kind) & 1) != 0;
    };
    using Kind = ScrollMarks::Kind;
    EXPECT_TRUE(QTest::qWaitFor([&] { return has(100, Kind::Bookmark) && has(150, Kind::Unsaved); }));
    EXPECT_TRUE(has(50, Kind::Error) && has(150, Kind::Saved));
    EXPECT_FALSE(has(50, Kind::Bookmark) || has(100, Kind::Unsaved));
    Model().SetCaret({1, 2 + 4});
    Model().SetCaret({5, 150});
    EXPECT_TRUE(QTest::qWaitFor([&] { return has(150, Kind::Hit) && has(4, Kind::Hit); }));
    EXPECT_FALSE(has(100, Kind::Hit));
}

TEST_F(ViewMarksTest, AGlideEndsWhereItWouldHaveJumped)
{
    Wheel({}, {0, -120});
    const int goal = TopLine();
    ASSERT_GT(goal, 0);
    Turn(&ViewMarks::smoothScrolling, true);
    ASSERT_TRUE(Glide::IsWelcome(*widget));
    const int before = widget->verticalScrollBar()->value();
    Wheel({}, {0, -120});
    EXPECT_EQ(widget->verticalScrollBar()->value(), before) << "on its way";
    EXPECT_TRUE(QTest::qWaitFor([&] { return widget->verticalScrollBar()->value() == 2 * goal; }));
    Model().SetCaret({0, 2 * goal + 1});
    Key(Qt::Key_PageDown);
    EXPECT_EQ(widget->verticalScrollBar()->value(), 2 * goal);
    Type("x");
    EXPECT_EQ(TopLine(), 2 * goal + widget->Model().PageLines() - 1) << "a key ends it";
}

} // namespace nib::widget_view_marks_test
