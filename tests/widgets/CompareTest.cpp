#include "compare/QtCompareWindows.h"
#include "compare/frmCompare.h"
#include "fakes/MemorySettings.h"
#include "platform/qt/QtText.h"
#include "widgets/FrameFixture.h"

namespace nib::test::widget_compare_test {

/// Two documents side by side as a guest of the frame.
struct CompareTest : FrameFixture {
    void Open(const Text& left, const Text& right)
    {
        other = New().ViewObject();
        document = New().ViewObject();
        other->SetText(left);
        document->SetText(right);
        windows.emplace(program.Services(), settings, &frame, [this](QWidget* content) { frame.TakeGuest(content); });
        windows->Show(CompareWith::Document, *document);
        for (QWidget* widget : frame.findChildren<QWidget*>())
            if (auto* found = dynamic_cast<frmCompare*>(widget)) form = found;
        ASSERT_NE(form, nullptr);
        Await();
    }
    frmCompare* Front()
    {
        return dynamic_cast<frmCompare*>(frame.findChild<QMdiArea*>()->currentSubWindow()->widget());
    }
    void Await()
    {
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return !form->Model().IsWorking() && form->Model().CanTake(Beside::Right); }));
    }
    void TearDown() override
    {
        windows.reset();
        FrameFixture::TearDown();
    }

    MemorySettings settings;
    mvDocument* other = nullptr;
    mvDocument* document = nullptr;
    std::optional<QtCompareWindows> windows;
    frmCompare* form = nullptr;
};

TEST_F(CompareTest, KeysGoThroughChangesAndTakeThemOver)
{
    Open(u"A\r\nB\r\nC\r\nD", u"A\r\nX\r\nC\r\nY");
    QtCompareView& view = form->View();
    EXPECT_EQ(frame.ActiveForm(), nullptr) << "no command reaches a document out of sight";
    EXPECT_EQ(view.Change(), 0);
    EXPECT_TRUE(view.accessibleDescription().startsWith(QStringLiteral("Changed. Left line 2: B.")));
    QTest::keyClick(&view, Qt::Key_F8);
    EXPECT_EQ(view.Change(), 1);
    QTest::keyClick(&view, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(other->GetText(), u"A\r\nB\r\nC\r\nY");
    Await();
    QTest::keyClick(&view, Qt::Key_F8, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(document->GetText(), u"A\r\nB\r\nC\r\nY");
    Await();
    QTest::keyClick(&view, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(document->GetText(), u"A\r\nX\r\nC\r\nY");
    QTest::keyClick(&view, Qt::Key_Return);
    Settle();
    EXPECT_EQ(frame.ActiveForm()->ViewObject(), document);
}

TEST_F(CompareTest, CommandsOfTheFrameAreForTheChosenSide)
{
    Open(u"A\r\nB", u"A\r\nX");
    frame.guestDocument = [this] { return windows->DocumentInFront(); };
    EXPECT_FALSE(frame.Run(u"Undo"));
    QTest::keyClick(&form->View(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(document->GetText(), u"A\r\nB");
    EXPECT_TRUE(frame.Run(u"Undo"));
    EXPECT_EQ(document->GetText(), u"A\r\nX");
    QTest::keyClick(&form->View(), Qt::Key_Left);
    EXPECT_FALSE(frame.Run(u"Redo")) << "nothing was done on that side";
    QTest::keyClick(&form->View(), Qt::Key_Right);
    EXPECT_TRUE(frame.Run(u"Redo"));
    EXPECT_EQ(document->GetText(), u"A\r\nB");
    EXPECT_FALSE(frame.Run(u"Format")) << "not for a text out of sight";
    const QPointer<frmCompare> watched(form);
    EXPECT_TRUE(frame.Run(u"Close"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return watched.isNull(); }));
    EXPECT_EQ(program.OpenDocuments().Count(), 2);
    frame.guestDocument = nullptr;
}

TEST_F(CompareTest, WhatIsComparedAlreadyComesToTheFront)
{
    Open(u"A", u"B");
    const Text path = u"mvdb:*/DEMO/BP/MAIN";
    connection.store.items[path] = {u"one", false};
    program.OpenPath(path, false);
    mvDocument& stored = *frame.ActiveForm()->ViewObject();
    const auto tabs = [this] { return frame.Menus().Root(Band::Taskbar).tools.size(); };
    for (const CompareWith with : {CompareWith::Stored, CompareWith::Opened}) {
        const size_t before = tabs();
        for (const TextView text : {u"two", u"three"}) {
            connection.store.items[path].text = text;
            stored.Activate();
            windows->Show(with, stored);
            EXPECT_EQ(tabs(), before + 1);
            EXPECT_EQ(frame.ActiveForm(), nullptr);
        }
        const Text left = Front()->Model().Side(Beside::Left).Lines().GetText();
        EXPECT_EQ(left, with == CompareWith::Stored ? u"three" : u"one");
    }
    const size_t before = tabs();
    windows->Compare(*other, *document);
    EXPECT_EQ(tabs(), before);
    EXPECT_EQ(Front(), form);
}

TEST_F(CompareTest, TheWindowHasATabAndGoesWithItsDocument)
{
    Open(u"A", u"B");
    const auto tabs = [this] { return frame.Menus().Root(Band::Taskbar).tools.size(); };
    EXPECT_EQ(tabs(), 3U);
    frame.ActivateGuest(-1);
    EXPECT_EQ(frame.ActiveDocument(), 0);
    const QPointer<frmCompare> watched(form);
    document->FileClose(false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return watched.isNull(); }));
    EXPECT_EQ(tabs(), 1U);
    ASSERT_NE(frame.ActiveForm(), nullptr);
    EXPECT_EQ(frame.ActiveForm()->ViewObject(), other);
}

} // namespace nib::test::widget_compare_test
