#include "widgets/ViewFixture.h"

namespace nib::widget_view_carets_test {

struct ViewCarets : ViewFixture {
    size_t Count() { return Model().CaretSpans().size(); }
    /// Whether Escape is taken before any shortcut can have it.
    bool TakesEscape()
    {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(widget.get(), &event);
        return event.isAccepted();
    }
};

TEST_F(ViewCarets, AltDragsAColumn)
{
    Load(u"ABCDE\r\n\r\nABCDE");
    Drag(At(1, 0), At(3, 2), Qt::AltModifier);
    const QImage image = Grab();
    const QRectF cell = widget->CellOf({1, 0});
    auto colour = [&](int32_t column, int32_t line) {
        const QPointF at(cell.left() + (column - 1) * cell.width() + 3, cell.top() + line * cell.height() + 1);
        return image.pixelColor((at * image.devicePixelRatio()).toPoint());
    };
    const QPalette& palette = widget->palette();
    for (int32_t line = 0; line < 3; ++line) {
        for (int32_t column = 0; column < 5; ++column) {
            const bool selected = column == 1 || column == 2;
            EXPECT_EQ(colour(column, line), palette.color(selected ? QPalette::Highlight : QPalette::Base))
                << column << "," << line;
        }
    }
    Type("X");
    EXPECT_EQ(ToUtf8(Model().GetText()), "AXDE\r\n X\r\nAXDE");
    const QImage typed = Grab();
    for (Position at : {Position{2, 0}, {2, 1}, {2, 2}}) {
        QRectF left = widget->CellOf({2, 0}).translated(-1, at.line * cell.height());
        left.setWidth(2);
        EXPECT_EQ(Inked(typed, left, palette.color(QPalette::Base)), 2 * static_cast<int>(cell.height())) << at.line;
    }
    Click(At(1, 0), Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(Selected(), u"X");
}

TEST_F(ViewCarets, CtrlAddsAndTakesAway)
{
    Load(u"AB CD EF\r\nGH");
    Click(At(0, 0));
    Click(At(1, 1), Qt::ControlModifier);
    Drag(At(3, 0), At(5, 0), Qt::ControlModifier);
    EXPECT_EQ(Selected(), u"CD");
    Type("X");
    EXPECT_EQ(ToUtf8(Model().GetText()), "XAB X EF\r\nGXH");
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("Y"), -1, 1);
    QApplication::sendEvent(widget.get(), &commit);
    EXPECT_EQ(ToUtf8(Model().GetText()), "YAB Y EF\r\nGYH");
    Click(At(2, 1), Qt::ControlModifier);
    EXPECT_EQ(Count(), 2u);
    EXPECT_TRUE(TakesEscape());
    Key(Qt::Key_Escape);
    EXPECT_EQ(Count(), 1u);
    EXPECT_FALSE(TakesEscape());
}

TEST_F(ViewCarets, KeysMakeAColumn)
{
    Load(u"AB\r\n\r\nAB");
    for (int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Right})
        Key(key, Qt::AltModifier | Qt::ShiftModifier);
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.text, u"AB\r\n\r\nAB");
}

} // namespace nib::widget_view_carets_test
