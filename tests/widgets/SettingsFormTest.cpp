// The settings dialog by keyboard alone.

#include "fakes/FakeSettingsApplied.h"
#include "fakes/MemorySettings.h"
#include "fakes/TestProgram.h"
#include "persistence/settings/frmSettings.h"
#include "platform/qt/QtText.h"
#include "widgets/Keys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

namespace nib::test {
namespace {

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

} // namespace
} // namespace nib::test
