// Every form by its names, its Tab order and its access keys, and the frame as a screen reader is told of it.

#include "compare/frmMerge.h"
#include "fakes/FakeBrowser.h"
#include "fakes/FakeReader.h"
#include "fakes/FakeSettingsApplied.h"
#include "fakes/TestRecovery.h"
#include "hosts/picker/frmItemPicker.h"
#include "persistence/recovery/frmAutoRecover.h"
#include "persistence/settings/frmSettings.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWaitNotice.h"
#include "search/frmFind.h"
#include "search/frmFindAccount.h"
#include "search/frmFindBar.h"
#include "search/frmResults.h"
#include "shell/QtMessageBoxes.h"
#include "shell/frame/frmProperties.h"
#include "shell/help/QtHelpWindow.h"
#include "shell/navigation/frmGoto.h"
#include "widgets/FormAccess.h"
#include "widgets/FrameFixture.h"

namespace nib::test::widget_access_test {

/// Looks at the dialog that `show` runs, and closes it.
template <typename Show>
void WhileShown(Show show, const std::set<std::string>& shared = {})
{
    bool seen = false;
    QTimer::singleShot(0, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_TRUE(dialog);
        seen = true;
        ExpectAccessible(*dialog, shared);
        dialog->close();
    });
    show();
    EXPECT_TRUE(seen);
}

enum class Speaks { English, German, Brackets };

/// In force while it lives.
struct Language {
    explicit Language(Speaks language)
    {
        if (language == Speaks::German) german.emplace(QLocale(QStringLiteral("de_DE")));
        if (language == Speaks::Brackets) brackets.emplace();
    }
    std::optional<Translations> german;
    std::optional<Bracketing> brackets;
};

struct Look {
    const char* name;
    int points;
    Speaks language;
};

std::string NameOfLook(const testing::TestParamInfo<Look>& info)
{
    return info.param.name;
}

/// Each form at the usual size of letters and at a large one, and in other languages.
class FormAccessTest : public RecoveryTest, public testing::WithParamInterface<Look> {
protected:
    FormAccessTest()
    {
        QFont font = usual_;
        font.setPointSize(GetParam().points);
        QApplication::setFont(font);
    }
    ~FormAccessTest() override { QApplication::setFont(usual_); }

private:
    const QFont usual_ = QApplication::font();
    const Language language_{GetParam().language};
};

INSTANTIATE_TEST_SUITE_P(Looks, FormAccessTest,
                         testing::Values(Look{"Usual", 10, Speaks::English}, Look{"Large", 14, Speaks::English},
                                         Look{"German", 10, Speaks::German}, Look{"Brackets", 10, Speaks::Brackets}),
                         NameOfLook);

TEST_P(FormAccessTest, SettingsPages)
{
    TestProgram test;
    MemorySettings store;
    FakeSettingsApplied applied;
    test.program.EditorSettings().Keywords.SetKeywordList(keyword_class::kUser, u" ", u"ONE TWO+");
    // The captions of the pages are given, and so are those of the tabs: pressed again, such a key goes on to the next.
    const std::set<std::string> shared[] = {{"Alt+L"}, {}, {"Alt+U"}, {"Alt+I", "Alt+L"}, {"Alt+I", "Alt+L"}};
    for (int32_t page = 1; page <= 5; ++page) {
        SCOPED_TRACE(page);
        SettingsModel model(test.program.Services(), store, applied);
        frmSettings form(model, nullptr, [](QWidget*) {});
        form.ShowPage(page);
        form.show();
        const bool german = GetParam().language == Speaks::German;
        ExpectAccessible(form, german ? std::set<std::string>() : shared[page - 1]);
    }
}

TEST_P(FormAccessTest, RecoveryDialog)
{
    File("1.001", "INVOICE\r\none");
    session->onOffer = [this](TextView place, const DynamicArray& names) {
        frmAutoRecover form(session->recovery, {});
        WhileShown([&] { form.ShowDialog(place, names, nullptr); });
    };
    session->recovery.CheckAutoRecover();
}

TEST_P(FormAccessTest, MergeDialog)
{
    MergeModel merge(u"a\r\n-\r\nz\r\n", u"b\r\n-\r\ny\r\n", u"c\r\n-\r\nz\r\n");
    frmMerge form(merge, u"BP INVOICE", {}, nullptr);
    WhileShown([&] { EXPECT_EQ(form.ShowDialog(), MergeAnswer::Cancel); });
}

TEST_P(FormAccessTest, SearchForms)
{
    for (bool replace : {false, true}) {
        TestSearch search;
        search.Add(u"one two");
        frmFind form(search.engine, search.lights);
        replace ? form.Replace() : form.Find();
        ExpectAccessible(form);
    }
    TestSearch search;
    search.Add(u"one two");
    TypedFind typed(search.program.program.Services(), search.engine);
    QMainWindow window;
    frmFindBar bar(typed, search.engine, search.lights, &window);
    window.addToolBar(Qt::BottomToolBarArea, &bar);
    window.show();
    bar.ShowBar();
    ExpectAccessible(bar);
    TestAccountFind account;
    account.Item(u"BP/A", u"x");
    frmFindAccount form(account.find);
    form.ShowDialog();
    ASSERT_TRUE(account.Until([&] { return !account.find.Dialog().readsFiles; }));
    account.find.Dialog().findText = u"x";
    form.ShowDialog();
    ASSERT_TRUE(account.Until([&] { return !account.find.Dialog().readsFiles; }));
    ExpectAccessible(form);
}

TEST_P(FormAccessTest, ItemPicker)
{
    FakeBrowser browser;
    FillWithSample(browser);
    for (const char16_t* mode : {u"Open", u"Save", u"Import", u"Export"}) {
        SelectRequest request;
        request.mode = mode;
        request.offerReadOnly = true;
        PickerModel model(request, browser);
        model.Start(u"mvdb:LIVE/SALES/BP");
        frmItemPicker form(model, browser, nullptr, [](QWidget*) { return false; });
        form.show();
        ExpectAccessible(form);
    }
}

TEST_P(FormAccessTest, SmallDialogs)
{
    TestProgram t;
    auto document = t.New();
    document->SetText(u"START:\r\nX = 1");
    document->Activate();
    Text target = u"START";
    frmGoto jump(t.program.Services());
    WhileShown([&] { jump.ShowGoto(target, nullptr); });
    frmProperties properties;
    WhileShown([&] { properties.ShowDialog(*document, t.program.Place().now); });
    WhileShown([] { ShowAboutBox(nullptr); });
    using namespace message_box;
    for (int32_t flags : {kOk, kOkCancel, kYesNo | kCheckBox, kYesNoCancel, kYesAllNo, kYesAllNoCancel | kCheckBox,
                          kAbortRetryIgnore}) {
        QtMessageBoxes boxes;
        WhileShown([&] { boxes.Show(u"No document is open.", flags | kExtended, u""); });
    }
    HelpWindow help;
    help.ShowHelp();
    ExpectAccessible(help);
    QtWaitNotice notice;
    ASSERT_TRUE(notice.Started(u"BASIC BP MAIN"));
    EXPECT_TRUE(notice.GoOn(std::chrono::seconds(2)));
    ExpectAccessible(*QApplication::activeModalWidget());
    notice.Ended();
}

/// Every menu in a language: access keys of its own for each entry, and nothing that is not translated.
void ExpectMenus(const QWidget& holder, bool brackets)
{
    std::map<QString, QString> keys;
    for (const QAction* action : holder.actions()) {
        if (action->isSeparator() || !action->isVisible()) continue;
        const QString caption = action->text().section(QLatin1Char('\t'), 0, 0);
        if (brackets) {
            EXPECT_FALSE(IsBare(caption) || IsBare(action->toolTip())) << caption.toStdString();
        }
        const QString key = AccessKeyOf(caption);
        if (key.isEmpty() || qobject_cast<const QToolBar*>(&holder)) continue;
        const auto [other, first] = keys.emplace(key, caption);
        EXPECT_TRUE(first) << caption.toStdString() << " and " << other->second.toStdString();
    }
}

TEST(LanguageTest, MenusBarsAndPanels)
{
    for (Speaks speaks : {Speaks::German, Speaks::Brackets}) {
        const Language language(speaks);
        struct Frame final : FrameFixture {
            void TestBody() override {}
            using FrameFixture::SetUp;
            using FrameFixture::TearDown;
        } t;
        t.SetUp();
        t.New(2);
        const bool brackets = speaks == Speaks::Brackets;
        ExpectMenus(*t.frame.menuBar(), brackets);
        for (const QMenu* menu : t.frame.findChildren<QMenu*>())
            if (!menu->menuAction()->objectName().isEmpty() || menu->parent() == &t.frame) ExpectMenus(*menu, brackets);
        for (const QToolBar* bar : t.frame.findChildren<QToolBar*>()) ExpectMenus(*bar, brackets);
        for (const QLabel* panel : t.frame.statusBar()->findChildren<QLabel*>())
            for (const QString& text : TextsOf(*panel)) EXPECT_FALSE(brackets && IsBare(text)) << text.toStdString();
        t.TearDown();
    }
}

struct FrameAccessTest : FrameFixture {
    /// Role and name of everything below, what is hidden left out.
    void Walk(QAccessibleInterface* at, std::multimap<QAccessible::Role, std::string>& found)
    {
        if (!at || at->state().invisible) return;
        found.emplace(at->role(), at->text(QAccessible::Name).toStdString());
        for (int i = 0; i < at->childCount(); ++i) Walk(at->child(i), found);
    }
    std::set<std::string> Names(QAccessible::Role role)
    {
        std::multimap<QAccessible::Role, std::string> found;
        Walk(QAccessible::queryAccessibleInterface(&frame), found);
        std::set<std::string> names;
        for (auto [at, end] = found.equal_range(role); at != end; ++at) names.insert(at->second);
        return names;
    }
};

TEST_F(FrameAccessTest, EveryMenuToolPanelAndTabHasItsName)
{
    frame.resize(1600, 900); // the tool bar has room for all
    New(2);
    for (QMenu* menu : frame.findChildren<QMenu*>()) {
        // Of the buttons for what a narrow bar has no room for, which the frame is wide enough to do without.
        if (menu->menuAction()->objectName().isEmpty() && menu->parent() == frame.menuBar()) continue;
        if (menu->isEmpty()) continue;
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(menu);
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << Described(*menu);
    }
    EXPECT_EQ(Names(QAccessible::PageTab), (std::set<std::string>{"NewItem1", "NewItem2"}));
    for (auto role : {QAccessible::Button, QAccessible::CheckBox, QAccessible::MenuItem, QAccessible::StaticText,
                      QAccessible::PageTab, QAccessible::PageTabList, QAccessible::ToolBar, QAccessible::StatusBar,
                      QAccessible::MenuBar, QAccessible::Window, QAccessible::EditableText, QAccessible::ScrollBar,
                      QAccessible::LayeredPane, QAccessible::PopupMenu})
        EXPECT_FALSE(Names(role).contains("")) << role;
}

TEST_F(FrameAccessTest, TheTextIsReadUnderTheNameOfItsDocument)
{
    frmDocument& form = New();
    Load(form, u"one\r\ntwo");
    QAccessibleInterface* text = QAccessible::queryAccessibleInterface(&TextOf(form));
    ASSERT_TRUE(text && text->textInterface());
    EXPECT_EQ(text->text(QAccessible::Name).toStdString(), Title(&form));
    EXPECT_EQ(text->role(), QAccessible::EditableText);
    EXPECT_EQ(text->textInterface()->text(0, 7).toStdString(), "one\ntwo");
    EXPECT_TRUE(text->state().focused && text->state().editable && text->state().multiLine);
}

} // namespace nib::test::widget_access_test
