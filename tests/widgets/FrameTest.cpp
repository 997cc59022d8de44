#include "fakes/Failure.h"
#include "widgets/FrameFixture.h"

#include <future>

namespace nib::test::widget_frame_test {

struct FrameTest : FrameFixture {
    QPoint At(frmDocument& form, int32_t col, int32_t line)
    {
        QRectF cell = TextOf(form).CellOf({col, line});
        return QPointF(cell.left() + cell.width() / 4, cell.center().y()).toPoint();
    }
    void Click(frmDocument& form, QPoint at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(TextOf(form).viewport(), button, modifiers, at);
        Settle();
    }
    void Drop(const QList<QUrl>& urls)
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({50, 200}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&frame, &enter);
        EXPECT_TRUE(enter.isAccepted());
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        QDropEvent drop({50, 200}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&frame, &drop);
        Settle();
    }
    std::pair<Position, Position> Selection(frmDocument& form)
    {
        Position start;
        Position end;
        form.txtText().GetSelection(start, end);
        return {start, end};
    }
};

TEST_F(FrameTest, TabWithControlStepsThroughTheDocuments)
{
    New();
    Key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Title(frame.ActiveForm()), "NewItem1 (New)");
    New(2);
    const std::tuple<int, Qt::KeyboardModifiers, const char*> steps[] = {
        {Qt::Key_Tab, Qt::ControlModifier, "NewItem2 (New)"},
        {Qt::Key_Tab, Qt::ControlModifier, "NewItem1 (New)"},
        {Qt::Key_F6, Qt::ControlModifier, "NewItem3 (New)"},
        {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, "NewItem1 (New)"},
        {Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier, "NewItem2 (New)"}};
    for (const auto& [key, modifiers, title] : steps) {
        Key(key, modifiers);
        EXPECT_EQ(Title(frame.ActiveForm()), title);
        EXPECT_EQ(Caption(), std::string("Nib - [") + title + "]");
        EXPECT_TRUE(frame.ActiveForm()->TextHasFocus());
    }
    // After stepping, what lies behind comes to the front.
    frame.ActiveForm()->ViewObject()->FileClose(false);
    Settle();
    EXPECT_EQ(Title(frame.ActiveForm()), "NewItem1 (New)");
    EXPECT_TRUE(frame.ActiveForm()->TextHasFocus());
}

TEST_F(FrameTest, AWindowFollowsItsNeighbour)
{
    frmDocument& first = New();
    EXPECT_EQ(first.WindowState(), 2);
    frmDocument& second = New();
    second.SetWindowState(0);
    Settle();
    EXPECT_EQ(Caption(), "Nib - NewItem2 (New)");
    EXPECT_EQ(New().WindowState(), 0);
    first.SetWindowState(1);
    first.Activate();
    Settle();
    EXPECT_EQ(first.WindowState(), 0);
    EXPECT_TRUE(first.IsActive() && first.TextHasFocus());
}

TEST_F(FrameTest, PanesHaveOneTextAndTwoCarets)
{
    frmDocument& form = New();
    Load(form, u"one\r\ntwo\r\nthree");
    form.txtText().SetCaret({3, 2});
    Key(Qt::Key_F7);
    auto panes = form.SubWindow()->findChildren<SourceViewWidget*>();
    ASSERT_EQ(panes.size(), 2);
    if (panes[0]->y() > panes[1]->y()) panes.swapItemsAt(0, 1);
    SourceViewWidget& upper = *panes[0];
    SourceViewWidget& lower = *panes[1];
    EXPECT_GT(upper.height(), 50);
    EXPECT_EQ(upper.height(), lower.height());
    EXPECT_TRUE(upper.hasFocus());
    EXPECT_EQ(lower.Model().Caret(), (Position{3, 2}));

    Key(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_TRUE(lower.hasFocus());
    EXPECT_EQ(&form.txtText(), &lower.Model());
    QTest::mouseClick(lower.viewport(), Qt::LeftButton, Qt::NoModifier,
                      lower.CellOf({0, 0}).topLeft().toPoint() + QPoint(1, 3));
    Key(Qt::Key_Return);
    EXPECT_EQ(upper.Model().Caret(), (Position{3, 3})) << "goes with its text";
    frame.Run(u"Undo");
    Settle();
    EXPECT_EQ(upper.Model().Caret(), (Position{3, 2})) << "and undo does not call it";
    EXPECT_EQ(lower.Model().Caret(), (Position{0, 0}));

    program.EditorSettings().FontSize = u"17";
    form.ViewObject()->ApplySettings();
    EXPECT_EQ(upper.LineHeight(), lower.LineHeight());
    form.txtText().SetReadOnly(true);
    EXPECT_TRUE(upper.Model().ReadOnly());
    form.txtText().SetReadOnly(false);

    Key(Qt::Key_F7);
    EXPECT_EQ(form.SubWindow()->findChildren<SourceViewWidget*>().size(), 1);
    EXPECT_TRUE(form.TextHasFocus());
    Key(Qt::Key_A);
    EXPECT_EQ(form.txtText().Document().GetLine(0), u"aone");
}

TEST_F(FrameTest, ButtonsAreChosenWhenTheWindowIsMade)
{
    constexpr Qt::WindowFlags buttons =
        Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
    frmDocument& without = New();
    program.EditorSettings().MinMaxClose = true;
    frmDocument& with = New();
    EXPECT_FALSE(without.SubWindow()->windowFlags() & buttons);
    EXPECT_EQ(with.SubWindow()->windowFlags() & buttons, buttons);
}

TEST_F(FrameTest, TabsStandForTheDocuments)
{
    auto tabs = [&] {
        Text all;
        for (auto& tab : frame.Menus().Root(Band::Taskbar).tools)
            all += (tab->checked ? u"[" + tab->caption + u"]" : tab->caption) + u" ";
        return ToUtf8(all);
    };
    auto forms = New(3);
    EXPECT_EQ(tabs(), "NewItem1 NewItem2 [NewItem3] ");
    Key(Qt::Key_Tab, Qt::ControlModifier);
    forms[1]->txtText().TypeText(u"X");
    Settle();
    EXPECT_EQ(tabs(), "NewItem1 [*NewItem2] NewItem3 ");
    EXPECT_EQ(Caption(), "Nib - [*NewItem2 (New)]");
    forms[0]->QueryUnload();
    EXPECT_EQ(tabs(), "[*NewItem2] NewItem3 ");
}

TEST_F(FrameTest, WindowsStayInsideTheScreen)
{
    const QRect screen = frame.screen()->availableGeometry();
    const auto inside = [&](QWidget& window) { return screen.contains(window.frameGeometry()); };
    QDialog dialog(&frame);
    for (const QRect& left : {QRect(screen.right() - 50, screen.bottom() - 50, 400, 300), QRect(-4000, -4000, 300, 200),
                              screen.adjusted(100, 100, 500, 500)}) {
        dialog.setGeometry(left);
        dialog.show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return inside(dialog); }));
        dialog.hide();
    }
    auto* column = new QVBoxLayout(&dialog);
    auto* tall = new QLineEdit(&dialog);
    tall->setMinimumHeight(screen.height() * 2);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    for (QWidget* widget : {static_cast<QWidget*>(tall), static_cast<QWidget*>(buttons)}) column->addWidget(widget);
    dialog.show();
    tall->setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return inside(dialog) && dialog.focusWidget() == tall; })) << "it scrolls";
    EXPECT_TRUE(dialog.rect().contains(buttons->geometry()));
    dialog.hide();
    frame.move(screen.width() * 2, 10); // as when the monitor that it stood on has gone
    emit qApp->screenRemoved(frame.screen());
    EXPECT_TRUE(QTest::qWaitFor([&] { return inside(frame); }));
}

TEST_F(FrameTest, TabsHaveTheColourOfTheirAccount)
{
    connection.colors[u"LIVE"] = u"red";
    const Text path = u"mvdb:*/LIVE/BP/MAIN";
    connection.store.items[path] = {u"x"};
    ASSERT_TRUE(program.OpenPath(path, false));
    Settle();
    const auto tab = [&]() -> const MenuTool& { return *frame.Menus().Root(Band::Taskbar).tools[0]; };
    EXPECT_EQ(tab().color, u"red");
    EXPECT_EQ(tab().tip, u"BP MAIN on server1, account LIVE");
    EXPECT_EQ(tab().tag, u"3") << "where the item's name begins";
    frame.ActiveForm()->txtText().TypeText(u"y");
    Settle();
    EXPECT_EQ(tab().tag, u"4");
    EXPECT_EQ(Caption(), "Nib - [*BP MAIN on server1, account LIVE]");
}

TEST_F(FrameTest, AHiddenFrameComesBackForAQuestion)
{
    frmDocument& form = New();
    frame.SetVisible(false);
    boxes.whileShown = [&] { EXPECT_TRUE(frame.isVisible()); };
    program.ShowMessage(u"text", 0);
    frame.SetVisible(false);
    form.ViewObject()->Activate();
    EXPECT_TRUE(frame.isVisible());
    frame.Unload();
    boxes.whileShown = [&] { EXPECT_FALSE(frame.isVisible()) << "it has gone"; };
    program.ShowMessage(u"text", 0);
    EXPECT_EQ(boxes.Take().size(), 2U);
}

TEST_F(FrameTest, TheEndThatIsComingWaitsForADocumentOfTheUser)
{
    frame.ArmShutdownTimer();
    frmDocument& form = New();
    QTest::qWait(100); // twice what the timer takes
    EXPECT_TRUE(frame.isVisible());
    form.ViewObject()->FileClose(false);
    frame.ArmShutdownTimer();
    EXPECT_TRUE(QTest::qWaitFor([&] { return program.IsShuttingDown(); }));
}

TEST_F(FrameTest, WhileWorkIsAwaitedTheTextIsTypedInAndAllElseComesAfter)
{
    frmDocument& form = New();
    const int32_t id = form.DocumentID();
    std::promise<void> end;
    QTimer::singleShot(30, &frame, [&] {
        EXPECT_TRUE(frame.IsModal());
        Key(Qt::Key_X);
        EXPECT_EQ(form.txtText().GetText(), u"x");
        form.txtText().Document().SetModified(false);
        EXPECT_FALSE(frame.Run(u"SelectAll"));
        form.SubWindow()->close();
        frame.close();
        Settle();
        EXPECT_FALSE(form.txtText().HasSelection());
        EXPECT_TRUE(program.OpenDocuments().ById(id));
        end.set_value();
    });
    const auto fails = [&] {
        end.get_future().wait();
        throw Error(error_number::kStorage, u"why");
    };
    frame.LetType(true);
    EXPECT_EQ(ErrorOf([&] { frame.Await(fails); }).description, u"why");
    EXPECT_TRUE(program.OpenDocuments().ById(id)) << "whoever awaited it comes first";
    EXPECT_FALSE(frame.IsModal());
    QApplication::processEvents();
    EXPECT_FALSE(program.OpenDocuments().ById(id));
    EXPECT_TRUE(program.IsShuttingDown());
}

TEST_F(FrameTest, MarksAreTypedByTheirKeys)
{
    frmDocument& form = New();
    Key(Qt::Key_BracketRight, Qt::ControlModifier);
    Key(Qt::Key_Backslash, Qt::ControlModifier);
    EXPECT_EQ(form.txtText().GetText(), u"\uF8FD\uF8FC");
}

TEST_F(FrameTest, AReadOnlyTextTakesNothingFromTheUserAndSaysWhy)
{
    const Text path = u"mvdb:*/DEMO/BP/MAIN";
    connection.store.items[path] = {u"one two"};
    ASSERT_TRUE(program.OpenPath(path, true));
    Settle();
    frmDocument& form = *frame.ActiveForm();
    clipboard.text = u"pasted";
    form.ViewObject()->SetSelText(u"by a client ");
    const Text text = form.txtText().GetText();
    EXPECT_EQ(text, u"by a client one two");
    const auto reason = [&] { return frame.Menus().Tool(Band::StatusBar, u"panel1").caption; };
    const std::function<void()> edits[] = {[&] { Key(Qt::Key_X); },
                                           [&] { Key(Qt::Key_Return); },
                                           [&] { Key(Qt::Key_Tab); },
                                           [&] { Key(Qt::Key_Delete); },
                                           [&] { Key(Qt::Key_V, Qt::ControlModifier); },
                                           [&] { Key(Qt::Key_Z, Qt::ControlModifier); },
                                           [&] { Key(Qt::Key_BracketRight, Qt::ControlModifier); },
                                           [&] { frame.Run(u"DeleteLine"); },
                                           [&] { frame.Run(u"CommentBlock"); }};
    for (const auto& edit : edits) {
        boxes.beeps = 0;
        edit();
        EXPECT_EQ(form.txtText().GetText(), text);
        EXPECT_EQ(reason(), u"BP MAIN is read-only. Save it under another name to change it.");
        EXPECT_EQ(boxes.beeps, 1);
        Key(Qt::Key_Left);
        EXPECT_EQ(reason(), u"");
    }
    EXPECT_TRUE(frame.Run(u"Save")) << "offers another name";
    EXPECT_EQ(connection.requests.size(), 1u);
}

TEST_F(FrameTest, ComingBackToTheFrameLooksForChangesOutside)
{
    const Text path = u"mvdb:*/DEMO/BP/MAIN";
    connection.store.items[path] = {u"mine"};
    ASSERT_TRUE(program.OpenPath(path, false));
    Settle();
    connection.store.items[path] = {u"theirs"};
    connection.store.states[path] = StoredState::Changed;
    boxes.Answer({message_box::kAnswerReload});
    QEvent activated(QEvent::ActivationChange); // as no other window of this platform takes it away
    QApplication::sendEvent(&frame, &activated);
    EXPECT_TRUE(boxes.Take().empty()) << "not within the event";
    Settle();
    EXPECT_EQ(boxes.Take().size(), 1u);
    EXPECT_EQ(frame.ActiveForm()->txtText().GetText(), u"theirs");
}

TEST_F(FrameTest, FocusThatFallsOnTheFrameGoesToTheText)
{
    frmDocument& form = New();
    frame.setFocus();
    ASSERT_FALSE(form.TextHasFocus());
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.TextHasFocus(); }, 2000));
}

TEST_F(FrameTest, ARightClickMovesTheCaretOnlyWithoutASelection)
{
    frmDocument& form = New();
    Load(form, u"GOSUB DONE\nDONE:");
    Click(form, At(form, 7, 0), Qt::RightButton);
    EXPECT_EQ(form.txtText().Caret(), (Position{7, 0}));
    EXPECT_EQ(program.Target().Target, u"DONE");
    EXPECT_EQ(program.Target().TargetLine, 1);
    form.txtText().SetSelection({0, 0}, {5, 0});
    Click(form, At(form, 1, 1), Qt::RightButton);
    EXPECT_TRUE(form.txtText().HasSelection());
    EXPECT_EQ(program.Target().TargetLine, 2);
    Click(form, At(form, 1, 1));
    EXPECT_EQ(program.Target().TargetLine, 0);
    form.txtText().Document().SetLexer(nullptr);
}

TEST_F(FrameTest, TheMarginGrowsWithTheTextAndDoesNotShrink)
{
    frmDocument& form = New();
    int32_t before = form.txtText().MarginWidth();
    Load(form, Text(9998, u'\n'));
    EXPECT_EQ(form.txtText().MarginWidth(), before);
    form.txtText().Document().InsertText({0, 0}, u"\n");
    EXPECT_EQ(form.txtText().MarginWidth(), 6);
    form.txtText().Document().DeleteRange({0, 0}, {0, 5});
    EXPECT_EQ(form.txtText().MarginWidth(), 6);
    Load(form, Text(99'999, u'\n'));
    EXPECT_EQ(form.txtText().MarginWidth(), 7) << "no digit is cut off";
}

TEST_F(FrameTest, DroppedFilesOpenAndTheRestIsToldOf)
{
    QTemporaryDir folder;
    Text path = folder.filePath(QStringLiteral("a.bas")).toStdU16String();
    connection.store.items[u"file:" + path] = {u"PRINT", false};
    connection.store.items[connection.ComposeFilePath(u"/x/caf\xDCE9")] = {u"PRINT", false};
    Drop({QUrl::fromLocalFile(QString::fromStdU16String(path)), QUrl::fromLocalFile(folder.path()),
          QUrl(QStringLiteral("http://host/b.bas")), QUrl(), QUrl::fromEncoded("file:///x/caf%E9")});
    EXPECT_EQ(program.OpenDocuments().Count(), 2) << "also one whose name is no UTF-8";
    auto shown = boxes.Take();
    ASSERT_EQ(shown.size(), 1U);
    EXPECT_NE(shown[0].text.find(folder.path().toStdU16String()), Text::npos);
    EXPECT_NE(shown[0].text.find(u"http://host/b.bas"), Text::npos);
    // Text is for the texts.
    QMimeData data;
    data.setText(QStringLiteral("X"));
    QDragEnterEvent enter({50, 200}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&frame, &enter);
    EXPECT_FALSE(enter.isAccepted());
}

} // namespace nib::test::widget_frame_test
