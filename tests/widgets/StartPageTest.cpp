#include "shell/frame/frmStart.h"
#include "widgets/FrameFixture.h"

namespace nib::test::widget_start_page_test {

struct WidgetStartPage : FrameFixture {
    frmStart* Page()
    {
        for (QWidget* widget : frame.findChildren<QWidget*>())
            if (auto* page = dynamic_cast<frmStart*>(widget)) return page;
        return nullptr;
    }
    void SetUp() override
    {
        connection.store.items[u"mvdb:*/DEMO/BP/MAIN"] = {u"text", false};
        connection.hosts = {{u"vm", u"mvdb:*", {u"DEMO"}}};
        FrameFixture::SetUp();
        ASSERT_TRUE(QTest::qWaitFor([this] { return Page() != nullptr; }));
    }
    static std::string FocusName() { return QApplication::focusWidget()->accessibleName().toStdString(); }
    static std::string Current()
    {
        auto* list = dynamic_cast<QListWidget*>(QApplication::focusWidget());
        if (!list || !list->currentItem()) return "none";
        return list->currentItem()->data(Qt::AccessibleTextRole).toString().toStdString();
    }
};

TEST_F(WidgetStartPage, StandsOnlyInAnEmptyFrameAndHasTheKeys)
{
    EXPECT_TRUE(Page()->isVisible());
    EXPECT_EQ(FocusName(), "Start and first steps");
    EXPECT_EQ(Current(), "Open an item or a file, Ctrl+O");
    for (int i = 0; i < 3; ++i) Key(Qt::Key_Down);
    EXPECT_EQ(Current(), "Open a program, change it, save it, Ctrl+O, Ctrl+S") << "no heading takes the keys";
    Key(Qt::Key_Right);
    EXPECT_EQ(FocusName(), "Recent items, connections and accounts");
    EXPECT_EQ(Current(), "vm");

    ASSERT_TRUE(program.OpenPath(u"mvdb:*/DEMO/BP/MAIN", false));
    Settle();
    EXPECT_FALSE(Page()->isVisible());
    EXPECT_TRUE(frame.ActiveForm()->TextHasFocus());
    frame.ActiveForm()->ViewObject()->FileClose(false);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Page()->isVisible(); }));
    ASSERT_TRUE(QTest::qWaitFor([] { return Current() == "BP MAIN, DEMO"; })) << Current();
    Key(Qt::Key_Return);
    ASSERT_NE(frame.ActiveForm(), nullptr);
    EXPECT_EQ(frame.ActiveForm()->ViewObject()->Path(), u"mvdb:*/DEMO/BP/MAIN");
    EXPECT_TRUE(frame.ActiveForm()->TextHasFocus());
}

TEST_F(WidgetStartPage, AClickRunsARowAndHeadingsDoNothing)
{
    auto* list = Page()->findChildren<QListWidget*>().first();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    Settle();
    EXPECT_EQ(program.OpenDocuments().Count(), 0);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
    Settle();
    EXPECT_EQ(Title(frame.ActiveForm()), "NewItem1 (New)");
}

} // namespace nib::test::widget_start_page_test
