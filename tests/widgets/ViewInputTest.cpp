#include "widgets/ViewFixture.h"

namespace nib::widget_view_input_test {

using ViewKeys = ViewFixture;

constexpr Qt::KeyboardModifiers kNone = Qt::NoModifier;
constexpr Qt::KeyboardModifiers kCtrl = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;

TEST_F(ViewKeys, Table)
{
    const std::tuple<const char*, TextView, Position, const char*, TextView, Position> rows[] = {
        {"types", u"AB", {1, 0}, "X", u"AxB", {2, 0}},
        {"overtypes", u"AB", {0, 0}, "Ins X Ins", u"xB", {1, 0}},
        {"word right", u"AB CD", {0, 0}, "Ctrl+Right", u"AB CD", {3, 0}},
        {"deletes a word", u"AB CD", {5, 0}, "Ctrl+Backspace", u"AB ", {3, 0}},
        {"enter keeps the indent", u"  A", {3, 0}, "Return", u"  A\r\n  ", {2, 1}},
        {"tab", u"AB", {1, 0}, "Tab", u"A  B", {3, 0}},
        {"backtab", u"   A", {3, 0}, "Shift+Backtab", u"A", {0, 0}},
        {"undo", u"A", {1, 0}, "X Ctrl+Z", u"A", {1, 0}},
        {"redo", u"A", {1, 0}, "X Ctrl+Z Ctrl+Shift+Z", u"Ax", {2, 0}},
        {"cut and paste", u"AB", {0, 0}, "Shift+Right Ctrl+X End Ctrl+V", u"BA", {2, 0}},
        {"the old keys for it", u"AB", {0, 0}, "Shift+Right Shift+Del End Shift+Ins", u"BA", {2, 0}},
        {"copies", u"AB", {0, 0}, "Shift+End Ctrl+Ins Right Ctrl+V", u"ABAB", {4, 0}},
        {"selects all", u"A\r\nB", {0, 0}, "Ctrl+A X", u"x", {1, 0}},
        {"keypad", u"AB", {1, 0}, "Num+Home", u"AB", {0, 0}},
        {"Alt types nothing", u"A", {1, 0}, "Alt+X", u"A", {1, 0}}};
    for (const auto& [what, text, caret, keys, expected, expectedCaret] : rows) {
        Load(text);
        Model().SetCaret(caret);
        for (const QString& key : QString::fromLatin1(keys).split(QLatin1Char(' '))) {
            const QKeyCombination pressed = QKeySequence::fromString(key)[0];
            Key(pressed.key(), pressed.keyboardModifiers());
        }
        EXPECT_EQ(ToUtf8(Model().GetText()), ToUtf8(expected)) << what;
        EXPECT_EQ(Model().Caret(), expectedCaret) << what;
    }
}

TEST_F(ViewKeys, PagesMoveTextAndCaretTogether)
{
    Text text;
    for (int i = 0; i < 200; ++i) text += u"line\r\n";
    Load(text);
    int32_t page = Model().PageLines() - 1;
    Key(Qt::Key_Down);
    Key(Qt::Key_PageDown);
    int32_t line = 0;
    int32_t column = 0;
    Model().GetFirstVisible(line, column);
    EXPECT_EQ(line, page);
    EXPECT_EQ(Model().Caret().line, page + 1);
    Key(Qt::Key_Down, kCtrl);
    Model().GetFirstVisible(line, column);
    EXPECT_EQ(line, page + 1);
    EXPECT_EQ(Model().Caret().line, page + 1);
    Key(Qt::Key_End, kCtrl);
    EXPECT_FALSE(widget->CaretRect().isEmpty());
}

TEST_F(ViewKeys, ControlCharactersAskForMarks)
{
    QSignalSpy values(widget.get(), &SourceViewWidget::valueRequested);
    QSignalSpy subValues(widget.get(), &SourceViewWidget::subValueRequested);
    Key(Qt::Key_BracketRight, kCtrl);
    Key(Qt::Key_Backslash, kCtrl);
    QKeyEvent thirdLevel(QEvent::KeyPress, Qt::Key_unknown, kCtrl | Qt::AltModifier, QStringLiteral("\x1d"));
    QApplication::sendEvent(widget.get(), &thirdLevel);
    EXPECT_EQ(values.count(), 2);
    EXPECT_EQ(subValues.count(), 1);
}

TEST_F(ViewKeys, BothKeysAskForTheMenuAtTheCaret)
{
    QSignalSpy asked(widget.get(), &SourceViewWidget::contextMenuRequested);
    QContextMenuEvent byItsKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(widget.get(), &byItsKey);
    Key(Qt::Key_F10, kShift);
    ASSERT_EQ(asked.count(), 2);
    EXPECT_EQ(asked[0], asked[1]);
}

TEST_F(ViewKeys, MenuShortcutsGoFirstOnlyWhereTheyMay)
{
    auto taken = [&](int key, Qt::KeyboardModifiers modifiers, const char* text = "") {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, text);
        event.ignore();
        QApplication::sendEvent(widget.get(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(taken(Qt::Key_Left, kNone));
    EXPECT_TRUE(taken(Qt::Key_Delete, kNone));
    EXPECT_TRUE(taken(Qt::Key_B, kNone, "b"));
    EXPECT_FALSE(taken(Qt::Key_Z, kCtrl));
    EXPECT_FALSE(taken(Qt::Key_F3, kNone));
    EXPECT_FALSE(taken(Qt::Key_B, kCtrl));
}

TEST_F(ViewKeys, InputMethodComposesAndCommits)
{
    Load(u"A[B]C");
    Model().SetSelection({1, 0}, {4, 0});
    QInputMethodEvent compose(QStringLiteral("ni"), {{QInputMethodEvent::Cursor, 1, 1}});
    QApplication::sendEvent(widget.get(), &compose);
    EXPECT_EQ(Line(0), u"AC");
    double before = widget->CellOf({1, 0}).left();
    double width = widget->CellOf({0, 0}).width();
    EXPECT_DOUBLE_EQ(widget->CellOf({2, 0}).left() - before, 3 * width) << "the rest stands behind the composition";
    EXPECT_NEAR(widget->CaretRect().left(), before + width, 1.5);
    Grab();
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("\u4f60"));
    QApplication::sendEvent(widget.get(), &commit);
    EXPECT_EQ(Line(0), u"A\u4f60C");
    EXPECT_EQ(Model().Caret(), (Position{2, 0}));
    EXPECT_EQ(widget->inputMethodQuery(Qt::ImSurroundingText).toString(), QStringLiteral("A\u4f60C"));
    EXPECT_EQ(widget->inputMethodQuery(Qt::ImCursorPosition).toInt(), 2);
    QInputMethodEvent replace;
    replace.setCommitString(QStringLiteral("x"), -1, 1);
    QApplication::sendEvent(widget.get(), &replace);
    EXPECT_EQ(Line(0), u"AxC");
}

using ViewMouse = ViewFixture;

TEST_F(ViewMouse, SelectsByCharacterWordAndLine)
{
    Load(u"CALL SUB.1(A)\r\nX = 1\r\nY = 2");
    Drag(At(2, 0), At(1, 1));
    EXPECT_EQ(Selected(), u"LL SUB.1(A)\r\nX");
    EXPECT_EQ(clipboard.primary, Selected());

    Click(At(6, 0));
    EXPECT_EQ(Model().Caret(), (Position{6, 0}));
    Click(At(3, 1), kShift);
    EXPECT_EQ(Selected(), u"UB.1(A)\r\nX =");

    DoubleClick(At(6, 0));
    EXPECT_EQ(Selected(), u"SUB.1");
    MoveTo(At(1, 0));
    EXPECT_EQ(Selected(), u"CALL SUB.1");
    MoveTo(At(0, 1));
    EXPECT_EQ(Selected(), u"SUB.1(A)\r\nX");
    Release(At(0, 1));

    QTest::qWait(QApplication::doubleClickInterval() + 50);
    DoubleClick(At(0, 1));
    Release(At(0, 1));
    Press(At(0, 1));
    EXPECT_EQ(Selected(), u"X = 1");
    MoveTo(At(2, 2));
    EXPECT_EQ(Selected(), u"X = 1\r\nY = 2");
    Release(At(2, 2));
}

TEST_F(ViewMouse, MarginSelectsLinesFromItsAnchor)
{
    Load(u"A\r\nBB\r\nC\r\nD");
    auto margin = [&](int32_t line) { return QPoint(4, At(0, line).y()); };
    Click(margin(1));
    EXPECT_EQ(Selected(), u"BB");
    Click(margin(3), kShift);
    EXPECT_EQ(Selected(), u"BB\r\nC\r\nD");
    Click(margin(0), kShift);
    EXPECT_EQ(Selected(), u"A\r\nBB");
    EXPECT_EQ(Model().Caret(), (Position{0, 0}));
}

TEST_F(ViewMouse, MiddleButtonPastesThePrimarySelection)
{
    Load(u"ABCD");
    Model().SetSelection({0, 0}, {2, 0});
    Click(At(3, 0), kNone, Qt::MiddleButton);
    EXPECT_EQ(Line(0), u"ABCABD");
}

TEST_F(ViewMouse, FoldMarkTogglesItsBlock)
{
    Load(u"IF\r\nA\r\nEND\r\nB");
    Model().SetShowBlocks(true);
    Model().SetMarginWidth(7);
    Grab();
    Model().SetCaret({1, 1});
    QPoint mark(static_cast<int>(widget->CellOf({0, 0}).left()) - 6, At(0, 0).y());
    Click(mark);
    EXPECT_TRUE(buffer.IsHidden(1));
    EXPECT_EQ(Model().Caret().line, 0) << "the caret leaves what is hidden";
    EXPECT_TRUE(widget->CellOf({0, 1}).isEmpty());
    Grab();
    Key(Qt::Key_Down);
    EXPECT_FALSE(buffer.IsHidden(Model().Caret().line));
    Click(mark);
    EXPECT_FALSE(buffer.IsHidden(1));
}

TEST_F(ViewMouse, DragBeyondTheEdgeGoesOnScrolling)
{
    Text text;
    for (int i = 0; i < 200; ++i) text += u"line\r\n";
    Load(text);
    Press(At(0, 0));
    MoveTo({50, 310});
    Position first = Model().Caret();
    QTest::qWait(200);
    EXPECT_GT(Model().Caret().line, first.line);
    Release({50, 310});
    Position last = Model().Caret();
    QTest::qWait(100);
    EXPECT_EQ(Model().Caret(), last);
}

TEST_F(ViewMouse, TakesDroppedTextAndLeavesFilesToTheWindow)
{
    Load(u"ABCD");
    QMimeData data;
    data.setText(QStringLiteral("x\ny"));
    QDragEnterEvent enter(At(2, 0), Qt::CopyAction, &data, Qt::LeftButton, kNone);
    QApplication::sendEvent(widget->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(At(2, 0), Qt::CopyAction, &data, Qt::LeftButton, kNone);
    QApplication::sendEvent(widget->viewport(), &drop);
    EXPECT_EQ(Model().GetText(), u"ABx\r\nyCD");
    EXPECT_EQ(Selected(), u"x\r\ny");
    Key(Qt::Key_Z, kCtrl);
    EXPECT_EQ(Model().GetText(), u"ABCD");

    Model().SetReadOnly(true);
    QDropEvent refused(At(2, 0), Qt::MoveAction, &data, Qt::LeftButton, kNone);
    QApplication::sendEvent(widget->viewport(), &refused);
    EXPECT_FALSE(refused.isAccepted()) << "else it would be gone where it came from";
    EXPECT_EQ(Model().GetText(), u"ABCD");

    data.setUrls({QUrl(QStringLiteral("file:///tmp/a"))});
    QDragEnterEvent files(At(2, 0), Qt::CopyAction, &data, Qt::LeftButton, kNone);
    QApplication::sendEvent(widget->viewport(), &files);
    EXPECT_FALSE(files.isAccepted());
}

TEST_F(ViewMouse, WheelScrollsPixelsAndZooms)
{
    Text text;
    for (int i = 0; i < 200; ++i) text += u"line\r\n";
    Load(text);
    double top = widget->CellOf({0, 5}).top();
    Wheel({0, -7}, {0, -15});
    EXPECT_DOUBLE_EQ(widget->CellOf({0, 5}).top(), top - 7);
    Wheel({0, 7}, {0, 15});
    EXPECT_DOUBLE_EQ(widget->CellOf({0, 5}).top(), top);

    double width = widget->CellOf({0, 5}).width();
    QSignalSpy zoomed(widget.get(), &SourceViewWidget::zoomChanged);
    Wheel({}, {0, 240}, kCtrl);
    EXPECT_EQ(widget->Zoom(), 2);
    EXPECT_GT(widget->CellOf({0, 5}).width(), width);
    Key(Qt::Key_Minus, kCtrl);
    Key(Qt::Key_0, kCtrl);
    EXPECT_EQ(widget->Zoom(), 0);
    EXPECT_EQ(zoomed.count(), 3);
    EXPECT_DOUBLE_EQ(widget->CellOf({0, 5}).width(), width);
}

} // namespace nib::widget_view_input_test
