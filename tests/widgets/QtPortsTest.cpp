#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"
#include "shell/QtMessageBoxes.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace nib {
namespace {

using namespace message_box;

TEST(QtMessageBoxes, AnswersByKeyAndFlags)
{
    struct Case {
        const char* why;
        int32_t flags;
        Qt::Key key;
        int32_t answer;
        QMessageBox::Icon icon;
    };
    const Case cases[] = {
        {"OK", kOk, Qt::Key_Return, kAnswerOk, QMessageBox::NoIcon},
        {"closing an OK box", kOk | kError, Qt::Key_Escape, kAnswerOk, QMessageBox::Critical},
        {"first is the default", kYesNoCancel | kQuestion, Qt::Key_Return, kAnswerYes, QMessageBox::Question},
        {"second default", kYesNoCancel | 0x100, Qt::Key_Return, kAnswerNo, QMessageBox::NoIcon},
        {"third default", kYesNoCancel | 0x200, Qt::Key_Return, kAnswerCancel, QMessageBox::NoIcon},
        {"Escape is Cancel", kYesNoCancel | kWarning, Qt::Key_Escape, kAnswerCancel, QMessageBox::Warning},
        {"Escape is No without Cancel", kYesNo | kExtended, Qt::Key_Escape, kAnswerNo, QMessageBox::NoIcon},
        {"Escape of OK and Cancel", kOkCancel | kInformation, Qt::Key_Escape, kAnswerCancel, QMessageBox::Information},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.why);
        QtMessageBoxes boxes;
        int32_t second = -1;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            second = boxes.Show(u"again", kOk, u"Nib");
            EXPECT_EQ(box->icon(), row.icon);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->text(), QStringLiteral("<b>A</b> & B\nC"));
            QTest::keyClick(box, row.key);
        });
        EXPECT_EQ(boxes.Show(u"<b>A</b> & B\r\nC", row.flags, u"Nib"), row.answer);
        EXPECT_EQ(second, 0) << "a box is up";
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

} // namespace
} // namespace nib
