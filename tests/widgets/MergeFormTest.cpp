#include "compare/frmMerge.h"
#include "widgets/Keys.h"

namespace nib::test::widget_merge_form_test {

struct MergeFormTest : testing::Test {
    MergeFormTest()
    {
        form.show();
        QApplication::setActiveWindow(&form);
        QTest::qWait(1);
    }
    template <typename Widget>
    Widget& Find(const std::function<bool(const Widget&)>& isIt)
    {
        const auto all = form.findChildren<Widget*>();
        return **std::find_if(all.begin(), all.end(), [&](const Widget* widget) { return isIt(*widget); });
    }
    QTableView& Table(const char* name)
    {
        return Find<QTableView>([&](auto& table) { return table.accessibleName() == QLatin1String(name); });
    }
    QString Outcome(int row) { return Table("Outcome").model()->index(row, OutcomeTable::kText).data().toString(); }
    QString State()
    {
        return Find<QLabel>([](auto& label) { return label.text().startsWith(QLatin1String("Conflict")); }).text();
    }
    QPushButton& Merge()
    {
        return Find<QPushButton>([](auto& button) { return button.text() == QLatin1String("Me&rge"); });
    }

    MergeModel merge{u"a\r\n-\r\nb\r\n-\r\nc\r\n", u"a1\r\n-\r\nb1\r\n-\r\nc1\r\n", u"a2\r\n-\r\nb2\r\n-\r\nc\r\n"};
    frmMerge form{merge, u"BP INVOICE", {}, nullptr};
};

TEST_F(MergeFormTest, ConflictsAreGoneThroughAndChosenByKey)
{
    EXPECT_EQ(State(), QStringLiteral("Conflict 1 of 2: nothing is chosen yet"));
    EXPECT_EQ(Outcome(4), QStringLiteral("c1")) << "theirs, which overlaps nothing of mine";
    Key(Qt::Key_F8);
    EXPECT_EQ(State(), QStringLiteral("Conflict 2 of 2: nothing is chosen yet"));
    Key(Qt::Key_F8, Qt::ShiftModifier);
    Key(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible()) << "not before all is chosen";
    AccessKey(Qt::Key_M);
    EXPECT_EQ(Outcome(0), QStringLiteral("a2"));
    EXPECT_EQ(State(), QStringLiteral("Conflict 2 of 2: nothing is chosen yet"));
    EXPECT_FALSE(Merge().isEnabled());
    AccessKey(Qt::Key_H);
    EXPECT_EQ(Outcome(2) + Outcome(3), QStringLiteral("b1b2"));
    EXPECT_EQ(State(), QStringLiteral("Conflict 2 of 2: theirs is taken, then mine"));
    EXPECT_TRUE(Merge().hasFocus());
    Key(Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(MergeFormTest, TheTextsThemselvesLeadToAConflictAndChoose)
{
    QTableView& sides = Table("The three texts");
    for (int row = 0; row < 2; ++row) Key(Qt::Key_Down);
    EXPECT_TRUE(State().startsWith(QLatin1String("Conflict 2"))) << State().toStdString();
    const QPoint theirs = sides.visualRect(sides.model()->index(2, 0)).center();
    QTest::mouseClick(sides.viewport(), Qt::LeftButton, {}, theirs);
    QTest::mouseDClick(sides.viewport(), Qt::LeftButton, {}, theirs);
    EXPECT_EQ(merge.ChoiceOf(1), MergeChoice::Theirs);
    EXPECT_EQ(sides.model()->index(2, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Conflict 2: b1"));
    EXPECT_EQ(State(), QStringLiteral("Conflict 1 of 2: nothing is chosen yet"));
}

} // namespace nib::test::widget_merge_form_test
