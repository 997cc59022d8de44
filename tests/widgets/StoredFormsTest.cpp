// The recovery dialog by keyboard alone: what the keys reach and what they do.

#include "fakes/TestRecovery.h"
#include "persistence/recovery/frmAutoRecover.h"
#include "platform/qt/QtText.h"
#include "widgets/Keys.h"

#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

namespace nib::test {
namespace {

class RecoveryFormTest : public RecoveryTest {
protected:
    RecoveryFormTest()
    {
        File("1.001", "INVOICE\r\none\r\ntwo");
        File("1.002", "\r\nnew");
        File("1.003", "MENU\r\nthree");
    }
    ~RecoveryFormTest() override { EXPECT_TRUE(steps_.empty()) << "showings that did not come"; }

    /// Each step sees one showing of the dialog and must end it.
    void Run(std::vector<std::function<void()>> steps)
    {
        steps_ = std::move(steps);
        session->onOffer = [this](TextView place, const DynamicArray& names) {
            frmAutoRecover dialog(session->recovery);
            form = &dialog;
            Step();
            dialog.ShowDialog(place, names, nullptr);
        };
        session->recovery.CheckAutoRecover();
        session->onOffer = nullptr;
    }
    template <typename Widget>
    Widget* Find() const
    {
        return form->findChild<Widget*>();
    }
    QTreeWidget* List() const { return Find<QTreeWidget>(); }
    QPushButton* Button(const char* text) const
    {
        for (QPushButton* button : form->findChildren<QPushButton*>())
            if (button->text() == QLatin1String(text)) return button;
        ADD_FAILURE() << "no button " << text;
        return nullptr;
    }
    void TabTo(const char* text) const
    {
        for (int i = 0; i < 10 && !Button(text)->hasFocus(); ++i) Key(Qt::Key_Tab);
        EXPECT_TRUE(Button(text)->hasFocus());
    }
    QString Checks() const
    {
        QString checks;
        for (int row = 0; row < List()->topLevelItemCount(); ++row)
            checks += QLatin1Char(List()->topLevelItem(row)->checkState(0) == Qt::Checked ? 'x' : '-');
        return checks;
    }

    frmAutoRecover* form = nullptr;

private:
    void Step()
    {
        QTimer::singleShot(0, form, [this] {
            if (!form->isVisible()) return Step(); // between two showings
            QApplication::setActiveWindow(form);
            auto step = std::move(steps_.front());
            steps_.erase(steps_.begin());
            step();
            if (!steps_.empty()) Step();
        });
    }

    std::vector<std::function<void()>> steps_;
};

TEST_F(RecoveryFormTest, RecoversByKeysAlone)
{
    Run({[&] {
             EXPECT_EQ(form->windowTitle(), QStringLiteral("Nib Auto Recover"));
             EXPECT_TRUE(List()->hasFocus());
             EXPECT_EQ(Checks(), QStringLiteral("xxx"));
             Key(Qt::Key_Down);
             Key(Qt::Key_Space);
             EXPECT_EQ(Checks(), QStringLiteral("x-x"));
             Key(Qt::Key_Return);
         },
         [&] {
             EXPECT_EQ(List()->topLevelItemCount(), 1);
             EXPECT_EQ(Checks(), QStringLiteral("-"));
             EXPECT_FALSE(Button("Recover")->isEnabled());
             Key(Qt::Key_Return);
             EXPECT_TRUE(form->isVisible()) << "nothing is checked";
             Key(Qt::Key_Escape);
         }});
    ASSERT_EQ(session->t.Documents().Count(), 2);
    EXPECT_EQ(session->t.Documents().Item(2)->GetText(), u"*---> Recovered document: MENU\r\nthree");
    EXPECT_EQ(session->Offered(), std::vector<Text>{u"1.002"});
}

TEST_F(RecoveryFormTest, ChecksAndDeletesAll)
{
    session->t.boxes.Answer({message_box::kAnswerNo, message_box::kAnswerYes});
    Run({[&] {
        TabTo("Check all");
        Key(Qt::Key_Space);
        EXPECT_EQ(Checks(), QStringLiteral("xxx"));
        TabTo("Uncheck all");
        Key(Qt::Key_Return);
        EXPECT_EQ(Checks(), QStringLiteral("---")) << "Return presses the button that has the focus";
        EXPECT_TRUE(form->isVisible());
        TabTo("Delete all");
        Key(Qt::Key_Space);
        EXPECT_TRUE(form->isVisible()) << "answered No";
        Key(Qt::Key_Space);
    }});
    EXPECT_EQ(session->t.boxes.Take().size(), 2U);
    EXPECT_EQ(session->t.Documents().Count(), 0);
    EXPECT_EQ(Names(), (std::vector<std::string>{"0012AB34.001", "0012AB34.002", "0012AB34.003"}));
}

TEST_F(RecoveryFormTest, TipsAndTheKeyOfCancel)
{
    File("1.004", "A_VERY_LONG_NAME_" + std::string(200, 'X') + "\r\n");
    Run({[&] {
        EXPECT_TRUE(List()->topLevelItem(3)->toolTip(2).startsWith(List()->topLevelItem(3)->text(0)))
            << "the whole row, however narrow the list";
        for (const char* next : {"Check all", "Uncheck all", "Recover", "Delete all", "Cancel"}) {
            Key(Qt::Key_Tab);
            EXPECT_TRUE(Button(next)->hasFocus()) << next;
        }
        Key(Qt::Key_Return);
    }});
    EXPECT_EQ(session->t.Documents().Count(), 0) << "Return on Cancel cancels";
}

} // namespace
} // namespace nib::test
