// The settings and the recovery dialog by keyboard alone.

#include "fakes/FakeSettingsApplied.h"
#include "fakes/TestRecovery.h"
#include "persistence/recovery/frmAutoRecover.h"
#include "persistence/settings/frmSettings.h"
#include "platform/qt/QtText.h"
#include "widgets/Keys.h"

namespace nib::test::widget_stored_forms_test {

using namespace message_box;

constexpr int32_t kUser = keyword_class::kUser;

struct SettingsFormTest : testing::Test {
    TestProgram test;
    MemorySettings store;
    FakeSettingsApplied applied;
    MvEdit& live = test.program.EditorSettings();
    std::unique_ptr<SettingsModel> model;
    std::unique_ptr<frmSettings> form;

    void Open(int32_t page = 1)
    {
        form.reset();
        model = std::make_unique<SettingsModel>(test.program.Services(), store, applied);
        form = std::make_unique<frmSettings>(*model);
        form->ShowPage(page);
        form->show();
        QApplication::setActiveWindow(form.get());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
        form->setFocus();
    }
    template <typename Widget>
    Widget& Get(const char* name) const
    {
        return *form->findChild<Widget*>(QLatin1String(name));
    }
    /// Turns to a control by the tabulator.
    void TabTo(const QWidget& target)
    {
        for (int steps = 0; steps < 60 && !target.hasFocus(); ++steps) Key(Qt::Key_Tab);
        ASSERT_TRUE(target.hasFocus()) << qPrintable(target.objectName());
    }
    Text UserWords() { return model->Clone().Keywords.GetKeywordList(kUser, u"|"); }
};

TEST_F(SettingsFormTest, OkAppliesAndCancelLeavesEverything)
{
    for (bool agreed : {false, true}) {
        Open(3);
        TabTo(Get<QSpinBox>("txtTabSize"));
        Key(Qt::Key_A, Qt::ControlModifier);
        Type("8");
        Key(Qt::Key_Up);
        Key(Qt::Key_Tab, Qt::ControlModifier); // to the next page
        Key(agreed ? Qt::Key_Return : Qt::Key_Escape);
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(form->result() == QDialog::Accepted, agreed);
        EXPECT_EQ(live.TabSize, agreed ? 9 : 3);
        EXPECT_EQ(store.values.empty(), !agreed);
        EXPECT_EQ(applied.fontChanges, agreed ? 1 : 0);
    }
}

TEST_F(SettingsFormTest, ColorsByKeys)
{
    live.CommentColor = 0x123456;
    Open(2);
    auto& combo = Get<QComboBox>("cbColor3");
    EXPECT_EQ(combo.currentText(), QStringLiteral("Custom Color >>"));
    TabTo(combo);
    Type("Mag");
    EXPECT_EQ(model->Clone().CommentColor, 0xFF00FF);
    EXPECT_EQ(Get<QLabel>("lblColor3").toolTip(), QStringLiteral("Magenta (standard color) R=255 G=0 B=255"));
    auto& swatch = Get<QLabel>("lblColor3");
    EXPECT_EQ(swatch.palette().color(QPalette::Window), QColor(Qt::magenta));
    EXPECT_FALSE(Get<QLabel>("lblHard3").isVisible());
    Key(Qt::Key_Down); // yellow
    EXPECT_EQ(swatch.palette().color(QPalette::Window), QColor(Qt::yellow));
    EXPECT_TRUE(Get<QLabel>("lblHard3").isVisible());
    Key(Qt::Key_End);
    EXPECT_EQ(combo.currentText(), QStringLiteral("Window Text")) << "the dialog is not opened by walking";
    Key(Qt::Key_Home);
    EXPECT_EQ(combo.currentText(), QStringLiteral("Black")) << "headings cannot be chosen";
    TabTo(Get<QCheckBox>("chkBold3"));
    Key(Qt::Key_Space);
    EXPECT_EQ(model->Clone().CommentStyle, 1);
    TabTo(Get<QPushButton>("cmdDefaultColors"));
    Key(Qt::Key_Space);
    EXPECT_EQ(model->Clone().CommentColor, MvEdit().CommentColor);
    EXPECT_FALSE(Get<QCheckBox>("chkBold3").isChecked());
}

TEST_F(SettingsFormTest, KeywordsByKeys)
{
    Open(5);
    AccessKey(Qt::Key_K);
    Type("FOO");
    TabTo(Get<QRadioButton>("optNone"));
    Key(Qt::Key_Down);
    EXPECT_TRUE(Get<QRadioButton>("optBegin").isChecked());
    EXPECT_TRUE(Get<QRadioButton>("optLast").isEnabled());
    AccessKey(Qt::Key_K);
    Key(Qt::Key_Return);
    EXPECT_TRUE(form->isVisible()) << "Return adds the word";
    EXPECT_EQ(UserWords(), u"FOO+");
    auto& list = Get<QListView>("lstKeywords");
    EXPECT_EQ(list.currentIndex().data().toString(), QStringLiteral("FOO"));
    Type("WHILE");
    EXPECT_EQ(Get<QWidget>("frBlock").property("title").toString(),
              QStringLiteral("Block indent for reserved keyword"));
    EXPECT_TRUE(Get<QRadioButton>("optMid").isChecked());
    EXPECT_FALSE(Get<QRadioButton>("optNone").isEnabled());
    AccessKey(Qt::Key_W);
    Key(Qt::Key_Home);
    EXPECT_EQ(Get<QLineEdit>("txtKeyword").text(), QStringLiteral("FOO"));
    Key(Qt::Key_Delete);
    EXPECT_EQ(UserWords(), u"");
    EXPECT_EQ(list.model()->rowCount(), 0);
}

struct RecoveryFormTest : RecoveryTest {
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
            frmAutoRecover dialog(session->recovery, {});
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

} // namespace nib::test::widget_stored_forms_test
