#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtWaitNotice.h"

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

namespace nib::test::widget_qt_desktop_test {

using namespace std::chrono_literals;

QDialog* Shown()
{
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

TEST(QtWaitNotice, AsksAfterASecond)
{
    QWidget owner;
    owner.show();
    QtWaitNotice notice(&owner);
    ASSERT_TRUE(notice.Started(u"BASIC <b>BP MAIN"));
    EXPECT_FALSE(notice.Started(u"BASIC BP OTHER")) << "one at a time";
    EXPECT_TRUE(notice.GoOn(950ms));
    EXPECT_FALSE(Shown());
    EXPECT_TRUE(notice.GoOn(1000ms));
    EXPECT_TRUE(notice.GoOn(65'900ms));
    QDialog* dialog = Shown();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->parentWidget(), &owner);
    QStringList texts;
    for (const QLabel* label : dialog->findChildren<QLabel*>()) texts += label->text();
    EXPECT_EQ(texts.join(u'|'), QStringLiteral("The host is running BASIC <b>BP MAIN|Elapsed time 1:05"));
    notice.Ended();
    EXPECT_FALSE(Shown());
}

TEST(QtWaitNotice, AServerThatIsWaitedForCanBeReset)
{
    QtWaitNotice notice;
    ASSERT_TRUE(notice.Started(u"Saving BP MAIN"));
    notice.Tell(WaitStage::Busy, -1);
    EXPECT_TRUE(notice.GoOn(2s));
    EXPECT_TRUE(Shown()->findChild<QLabel*>()->text().startsWith(
        QStringLiteral("The MultiValue database server is busy. Please try again.")));
    notice.Tell(WaitStage::Pending, 40);
    EXPECT_TRUE(notice.GoOn(2s));
    EXPECT_EQ(Shown()->windowTitle(), QStringLiteral("Busy"));
    EXPECT_EQ(Shown()->findChild<QProgressBar*>()->value(), 40);
    for (QPushButton* button : Shown()->findChildren<QPushButton*>())
        if (button->text().contains(QStringLiteral("Reset"))) button->click();
    EXPECT_FALSE(notice.GoOn(2s));
    EXPECT_TRUE(notice.ResetWanted());
    notice.Ended();
    notice.StopAll();
    ASSERT_TRUE(notice.Started(u"Saving BP OTHER"));
    EXPECT_FALSE(notice.GoOn(0s)) << "the program ends";
}

TEST(QtWaitNotice, EveryWayToCancelStopsTheCommand)
{
    using Way = void (*)(QDialog&);
    const Way ways[] = {[](QDialog& dialog) { dialog.findChild<QPushButton*>()->click(); },
                        [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
                        [](QDialog& dialog) { dialog.close(); }};
    for (Way cancel : ways) {
        QtWaitNotice notice;
        ASSERT_TRUE(notice.Started(u"BASIC BP MAIN"));
        EXPECT_TRUE(notice.GoOn(2s));
        ASSERT_TRUE(Shown());
        cancel(*Shown());
        EXPECT_TRUE(Shown()) << "until the command has ended";
        EXPECT_FALSE(notice.GoOn(2100ms));
        notice.Ended();
        EXPECT_FALSE(Shown());
        EXPECT_FALSE(QGuiApplication::overrideCursor());
        ASSERT_TRUE(notice.Started(u"again"));
        EXPECT_TRUE(notice.GoOn(1s)) << "a new command is not cancelled";
        notice.Ended();
    }
}

TEST(QtClipboard, KeepsTextAsItIs)
{
    QtClipboard clipboard;
    const Text text = u"A\uF8FDB\r\n\u00e4\U0001F600";
    clipboard.SetText(text);
    EXPECT_TRUE(clipboard.HasText());
    EXPECT_EQ(clipboard.GetText(), text);
    clipboard.SetPrimary(u"primary");
    EXPECT_EQ(clipboard.GetText(), text) << "the two are apart";
}

TEST(QtFonts, OnlyWhatWasAddedIsAFont)
{
    QtFonts fonts(u"/folder");
    EXPECT_FALSE(fonts.Add(u"/nowhere/Font.ttf"));
    fonts.Remove(u"/nowhere/Font.ttf");
    EXPECT_EQ(fonts.ProgramFolder(), u"/folder");
}

} // namespace nib::test::widget_qt_desktop_test
