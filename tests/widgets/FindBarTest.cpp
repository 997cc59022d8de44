// The bar that finds while one types, and what the dialog and the view show of a search.

#include "fakes/FakeSearch.h"
#include "search/frmFind.h"
#include "search/frmFindBar.h"
#include "widgets/Keys.h"
#include "widgets/ViewFixture.h"

namespace nib::test::widget_find_bar_test {

struct FindBarTest : testing::Test {
    FindBarTest()
    {
        window.addToolBar(Qt::BottomToolBarArea, &bar);
        window.resize(1000, 200);
        window.show();
        bar.onLeave = [this] { ++left; };
        bar.ShowBar();
        QApplication::setActiveWindow(&window);
        QTest::qWait(1);
    }
    bool Says(const char* text) const
    {
        for (const QLabel* label : bar.findChildren<QLabel*>())
            if (label->isVisible() && label->text() == QLatin1String(text)) return true;
        return false;
    }
    Position Caret() { return search.View(document).Caret(); }

    TestSearch search;
    mvDocument& document = search.Add(u"ab\r\nAB\r\nabc", {0, 1});
    TypedFind find{search.program.program.Services(), search.engine};
    QMainWindow window;
    frmFindBar bar{find, search.engine, search.lights, &window};
    int left = 0;
};

TEST_F(FindBarTest, KeysAlone)
{
    Type("ab");
    EXPECT_EQ(Caret(), (Position{2, 1}));
    EXPECT_TRUE(Says("2 of 3"));
    Key(Qt::Key_Return);
    EXPECT_TRUE(Says("3 of 3"));
    Key(Qt::Key_F3);
    EXPECT_TRUE(Says("1 of 3"));
    EXPECT_TRUE(Says("Round the end of the text"));
    Key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(Says("3 of 3"));
    Key(Qt::Key_Tab);
    Key(Qt::Key_Tab);
    Key(Qt::Key_Tab);
    Key(Qt::Key_Space);
    EXPECT_TRUE(search.Dialog().matchCase);
    EXPECT_TRUE(Says("2 of 2"));
    bar.findChild<QLineEdit*>()->setFocus();
    Type("x");
    EXPECT_TRUE(Says("No hits"));
    Key(Qt::Key_Backspace);
    Key(Qt::Key_Tab);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(left, 1);
    EXPECT_FALSE(search.View(document).Document().Lit().pattern);
    EXPECT_EQ(search.View(document).SelectedText(), u"ab") << "the caret stays at the hit";
}

TEST_F(FindBarTest, SharesTextAndRulesWithTheDialog)
{
    search.Dialog().regex = true;
    Type("b.");
    EXPECT_TRUE(Says("1 of 1"));
    Type("(");
    EXPECT_TRUE(Says("Character 3: A parenthesis has no partner."));
    Key(Qt::Key_Backspace);
    bar.hide();
    frmFind dialog(search.engine, search.lights);
    dialog.matchPlace = [&] { return dialog.frameGeometry(); };
    const QRect before = dialog.frameGeometry();
    dialog.Find();
    EXPECT_FALSE(dialog.frameGeometry().intersects(before)) << "it lay on its match";
    EXPECT_EQ(dialog.findChild<QComboBox*>()->currentText(), QStringLiteral("bc"));
    for (const QCheckBox* box : dialog.findChildren<QCheckBox*>())
        EXPECT_EQ(box->isChecked(), box->text() == QLatin1String("Regular e&xpression"));
    bool counted = false;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) counted |= label->text() == QLatin1String("1 of 1");
    EXPECT_TRUE(counted);
}

} // namespace nib::test::widget_find_bar_test

namespace nib::widget_find_bar_test {

using LitViewTest = ViewFixture;

TEST_F(LitViewTest, HitsAreLitAndMarked)
{
    Load(u"ab xab\r\nx" + Text(200, u'\n') + u"ab");
    const QImage dark = Grab();
    auto pattern = std::make_shared<TextPattern>(u"a.", FindOptions{.regex = true});
    Model().Document().Light({pattern, TextRange{{1, 0}, {0, 3}}, {0, 201}});
    const QImage lit = Grab();
    const auto changed = [&](int32_t col, int32_t line) {
        const QRect cell = widget->CellOf({col, line}).toAlignedRect();
        return dark.copy(cell) != lit.copy(cell);
    };
    EXPECT_TRUE(changed(4, 0));
    EXPECT_FALSE(changed(2, 0));
    EXPECT_FALSE(changed(0, 0)) << "out of the range";
    const auto found = 1U << static_cast<unsigned>(ScrollMarks::Kind::Found);
    EXPECT_TRUE(QTest::qWaitFor([&] { return (widget->Marks().At(0) & found) != 0; }, 2000));
    EXPECT_FALSE(widget->Marks().At(20) & found);
}

TEST_F(LitViewTest, AHitLooksTheSameInOtherPlacesOfTheName)
{
    Load(u"xab xab yab");
    Model().SetMarks({.matches = true});
    Model().SetCaret({1, 0});
    const auto above = [&](int32_t col) {
        const QRect cell = widget->CellOf({col, 0}).toAlignedRect();
        return Grab().pixelColor(cell.center().x(), cell.top() + 1);
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return above(5) != above(9); })) << "a place of the name, and none";
    Model().Document().Light({std::make_shared<TextPattern>(u"ab", FindOptions{}), TextRange{{0, 0}, {11, 0}}, {0, 0}});
    EXPECT_EQ(above(5), above(9));
    EXPECT_NE(above(5), above(4)) << "the rest of the name";
}

} // namespace nib::widget_find_bar_test
